#include "app/messagebox.h"

#include "app/display.h"

#include <QSet>

namespace {

QMessageBox::StandardButton answerTo(QMessageBox &box, QMessageBox::StandardButton defaultButton)
{
    const display::Pause pause;
    box.setTextFormat(Qt::PlainText);
    if (defaultButton != QMessageBox::NoButton)
        box.setDefaultButton(defaultButton);
    box.exec();
    return box.standardButton(box.clickedButton());
}

} // namespace

QMessageBox::StandardButton inform(QWidget *parent, const QString &title, const QString &text,
                                   QMessageBox::StandardButtons buttons, QMessageBox::StandardButton defaultButton)
{
    QMessageBox box(QMessageBox::Information, title, text, buttons, parent);
    return answerTo(box, defaultButton);
}

bool ask(QWidget *parent, const QString &title, const QString &text)
{
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No, parent);
    return answerTo(box, QMessageBox::No) == QMessageBox::Yes;
}

void informOnce(QWidget *parent, const QString &title, const QString &text, QMessageBox::StandardButton button)
{
    static QSet<QString> open;
    const QString words = title + QLatin1Char('\n') + text;
    if (open.contains(words))
        return;
    open.insert(words);
    inform(parent, title, text, button);
    open.remove(words);
}
