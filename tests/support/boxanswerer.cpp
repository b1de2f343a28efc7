#include "tests/support/boxanswerer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

BoxAnswerer::BoxAnswerer(QMessageBox::StandardButton button) : m_button(button)
{
    connect(&m_timer, &QTimer::timeout, this, &BoxAnswerer::look);
    m_timer.start(5);
}

void BoxAnswerer::look()
{
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (!box || !box->isVisible() || m_busy)
        return;
    if (!box->property("met").toBool()) {
        box->setProperty("met", true);
        QStringList words = {box->windowTitle(), box->text()};
        if (!box->informativeText().isEmpty())
            words.append(box->informativeText());
        m_seen.append(words.join(QLatin1Char('|')));
        if (m_onBox) {
            m_busy = true;
            m_onBox();
            m_busy = false;
        }
    }
    if (!m_byCaption) {
        if (QAbstractButton *button = box->button(m_button))
            QTest::mouseClick(button, Qt::LeftButton);
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
