// Anything can run inside a wait: a seeded monkey presses buttons, turns pages and sends frames while handlers wait.
#include "tests/support/boxanswerer.h"
#include "tests/support/workbench.h"

#include "link/serialline.h"
#include "protocol/frame.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <random>

class TestMonkey : public QObject
{
    Q_OBJECT

private:
    int below(int count) { return int(m_random() % unsigned(count)); }

    void pressSomething()
    {
        const auto buttons = m_bench->window().centralWidget()->findChildren<QAbstractButton *>();
        QAbstractButton *button = buttons.at(below(int(buttons.size())));
        if (button->isEnabled() && button->objectName().contains('_'))
            button->click();
    }

    void turnSomewhere()
    {
        const auto tabs = m_bench->window().findChildren<QTabWidget *>();
        QTabWidget *widget = tabs.at(below(int(tabs.size())));
        widget->setCurrentIndex(below(widget->count()));
    }

    void sendSomething()
    {
        QByteArray payload;
        for (int n = below(40); n > 0; --n)
            payload.append(char(m_random()));
        QByteArray frame = protocol::encodeFrame(static_cast<protocol::ModuleId>(below(19)), quint8(below(6)), payload);
        if (below(4) == 0)
            frame[below(int(frame.size()))] = char(m_random());
        m_bench->virtualBoard().line().send(frame);
    }

    void act()
    {
        if (m_left-- <= 0)
            return;
        QTimer::singleShot(50, this, &TestMonkey::act); // the next one comes whatever this one waits for
        switch (below(8)) {
        case 0: turnSomewhere(); break;
        case 1: m_bench->window().Serialport_close(); break;
        case 2: m_bench->window().Serialport_open(); break;
        case 3: case 4: sendSomething(); break;
        default: pressSomething(); break;
        }
        ++m_done;
    }

private slots:
    void buttonsAndFramesInsideWaits()
    {
        m_bench = std::make_unique<Workbench>();
        BoxAnswerer answers;
        act();
        // Handlers return innermost first; the last one that waits is the first that was pressed.
        QTRY_VERIFY_WITH_TIMEOUT(m_left < 0 && m_done == kActions, 90000);
        if (m_bench->board().isHeld())
            m_bench->board().powerCycle();
        m_bench->window().Serialport_open();
        m_bench->find<QLineEdit>("lineEdit_sysworkmode")->clear();
        QTRY_VERIFY(gSerialPort->isOpen());
        QTRY_VERIFY_WITH_TIMEOUT([this] {
            m_bench->window().Get_Status();
            return m_bench->text("lineEdit_sysworkmode") == "RUN0";
        }(), 20000);
    }

    // The window goes while a handler of its own waits: the handler ends first.
    void closingInTheMiddleOfAnAnimation()
    {
        BoxAnswerer answers;
        m_bench->turnTo(m_bench->find<QWidget>("pushButton_cmu_fault1"));
        QTimer::singleShot(200, &m_bench->window(), &QWidget::close);
        m_bench->find<QAbstractButton>("pushButton_cmu_fault1")->click();
        QVERIFY(!m_bench->window().isVisible());
        m_bench.reset();
    }

private:
    static constexpr int kActions = 160;
    std::mt19937 m_random{20261121};
    std::unique_ptr<Workbench> m_bench;
    int m_left = kActions;
    int m_done = 0;
};

QTEST_MAIN(TestMonkey)
#include "tst_monkey.moc"
