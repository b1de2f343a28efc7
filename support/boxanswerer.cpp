// SPDX-License-Identifier: MIT
#include "support/boxanswerer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <QTimer>

#include <utility>

BoxAnswerer::BoxAnswerer(QMessageBox::StandardButton button) : m_button(button)
{
    look();
}

void BoxAnswerer::look()
{
    // A timer of its own each time: one timer does not fire inside its own handler, boxes open inside boxes do.
    QTimer::singleShot(5, this, &BoxAnswerer::look);
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (!box || !box->isVisible() || box->property("busy").toBool())
        return;
    if (!box->property("met").toBool()) {
        box->setProperty("met", true);
        QStringList words = {box->windowTitle(), box->text()};
        if (!box->informativeText().isEmpty())
            words.append(box->informativeText());
        m_seen.append(words.join(QLatin1Char('|')));
        if (const auto work = std::exchange(m_onBox, {})) {
            box->setProperty("busy", true); // others may open meanwhile and are answered
            work();
            box->setProperty("busy", false);
        }
    }
    if (!m_byCaption) {
        QAbstractButton *button = box->button(m_button);
        QTest::mouseClick(button ? button : box->buttons().constFirst(), Qt::LeftButton);
        return;
    }
    const auto buttons = box->buttons();
    for (QAbstractButton *button : buttons) {
        if (button->text() == m_caption) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
    if (m_caption.isEmpty())
        QTest::keyClick(box, Qt::Key_Escape);
}
