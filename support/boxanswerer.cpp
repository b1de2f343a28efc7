// SPDX-License-Identifier: MIT
#include "support/boxanswerer.h"

#include "presenter/driver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <utility>

namespace {

constexpr int kLookMs = 5;
int answerers = 0;

QString wordsOf(const QMessageBox &box)
{
    QStringList words = {box.windowTitle(), box.text()};
    if (!box.informativeText().isEmpty())
        words.append(box.informativeText());
    return words.join(QLatin1Char('|'));
}

void failAt(QMessageBox &box)
{
    const QString words = QStringLiteral("unexpected box: ") + wordsOf(box);
    QTest::qFail(qPrintable(words), __FILE__, __LINE__);
    box.done(QMessageBox::NoButton);
}

} // namespace

BoxAnswerer::BoxAnswerer(QMessageBox::StandardButton button) : m_button(button)
{
    ++answerers;
    QTimer::singleShot(kLookMs, this, &BoxAnswerer::look);
}

BoxAnswerer::~BoxAnswerer()
{
    --answerers;
}

bool BoxAnswerer::isPresent()
{
    return answerers > 0;
}

void BoxAnswerer::clear()
{
    m_seen.clear();
    m_defaults.clear();
}

void BoxAnswerer::look()
{
    // A timer of its own each time: one timer does not fire inside its own handler, boxes open inside boxes do.
    QTimer::singleShot(kLookMs, this, &BoxAnswerer::look);
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (box && box->isVisible())
        meet(*box);
}

void BoxAnswerer::meet(QMessageBox &box)
{
    if (box.property("busy").toBool())
        return;
    const QPointer<QMessageBox> guarded(&box);
    if (!box.property("met").toBool())
        remember(box);
    if (guarded && !m_leaveOpen)
        answer(box);
}

void BoxAnswerer::remember(QMessageBox &box)
{
    box.setProperty("met", true);
    m_seen.append(wordsOf(box));
    m_defaults.append(box.defaultButton() ? box.defaultButton()->text() : QString());
    if (const auto work = std::exchange(m_onBox, {})) {
        box.setProperty("busy", true); // others may open meanwhile and are answered
        const QPointer<QMessageBox> open(&box);
        work();
        if (open)
            open->setProperty("busy", false);
    }
}

void BoxAnswerer::answer(QMessageBox &box)
{
    if (!m_byCaption) {
        QAbstractButton *button = box.button(m_button);
        return driver::press(button ? button : box.buttons().constFirst());
    }
    if (m_caption.isEmpty())
        return driver::pressKey(&box, Qt::Key_Escape);
    const auto buttons = box.buttons();
    for (QAbstractButton *button : buttons) {
        if (button->text() == m_caption)
            return driver::press(button);
    }
    failAt(box);
}

BoxGuard::BoxGuard()
{
    qApp->installEventFilter(this);
}

bool BoxGuard::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::Show || BoxAnswerer::isPresent())
        return false;
    if (auto *box = qobject_cast<QMessageBox *>(object))
        QTimer::singleShot(0, box, [box] { failAt(*box); });
    return false;
}
