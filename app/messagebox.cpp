// SPDX-License-Identifier: MIT
#include "app/messagebox.h"

#include "app/display.h"

#include <set>

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

QWidget *boxParent(QWidget *parent)
{
    return parent && parent->isVisible() ? parent : nullptr;
}

QMessageBox::StandardButton inform(QWidget *parent, const QString &title, const QString &text,
                                   QMessageBox::StandardButtons buttons, QMessageBox::StandardButton defaultButton,
                                   const QString &remedy)
{
    QMessageBox box(QMessageBox::Information, title, text, buttons, boxParent(parent));
    box.setInformativeText(remedy);
    return answerTo(box, defaultButton);
}

bool ask(QWidget *parent, const QString &title, const QString &text)
{
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No, boxParent(parent));
    return answerTo(box, QMessageBox::No) == QMessageBox::Yes;
}

void informOnce(QWidget *parent, const QString &title, const QString &text, QMessageBox::StandardButton button)
{
    static std::set<QString> open;
    const auto [words, isNew] = open.insert(title + QLatin1Char('\n') + text);
    if (!isNew)
        return;
    inform(parent, title, text, button);
    // Reports that came meanwhile are still to be walked through: they count as answered with this box.
    display::later(&*words, [words = words] { open.erase(words); });
}
