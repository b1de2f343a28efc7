#include "app/messagebox.h"

#include <QSet>

QMessageBox::StandardButton inform(QWidget *parent, const QString &title, const QString &text,
                                   QMessageBox::StandardButtons buttons, QMessageBox::StandardButton defaultButton)
{
    QMessageBox box(QMessageBox::Information, title, text, buttons, parent);
    box.setTextFormat(Qt::PlainText);
    if (defaultButton != QMessageBox::NoButton)
        box.setDefaultButton(defaultButton);
    box.exec();
    return box.standardButton(box.clickedButton());
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
