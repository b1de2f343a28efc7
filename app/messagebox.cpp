// SPDX-License-Identifier: MIT
#include "app/messagebox.h"

#include "app/display.h"

#include <cstddef>
#include <set>
#include <vector>

namespace {

constexpr std::size_t kMaxOpenBoxes = 4;

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
    static std::set<QString> shown;
    static std::vector<QMessageBox *> open; // each inside the wait of the one before
    static std::set<QString> counted;       // in the last box
    const QString words = title + QLatin1Char('\n') + text;
    if (shown.count(words) > 0)
        return;
    if (open.size() >= kMaxOpenBoxes) {
        counted.insert(words);
        open.back()->setInformativeText(QStringLiteral("More messages meanwhile: %1").arg(counted.size()));
        return;
    }
    shown.insert(words);
    QMessageBox box(QMessageBox::Information, title, text, button, boxParent(parent));
    open.push_back(&box);
    answerTo(box, QMessageBox::NoButton);
    open.pop_back();
    counted.clear();
    // Reports that came meanwhile are still to be walked through: they count as answered with this box.
    display::afterArrival([words] { shown.erase(words); });
}
