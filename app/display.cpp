// SPDX-License-Identifier: MIT
#include "app/display.h"

#include "app/accessibility.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QHash>
#include <QLCDNumber>
#include <QLabel>
#include <QLineEdit>
#include <QPair>
#include <QPointer>
#include <QSpinBox>
#include <QTextEdit>
#include <QTimer>

#include <utility>
#include <vector>

namespace display {

namespace {

constexpr qint64 kShowEveryMs = 16; // a screen shows no more

struct Work {
    QPointer<QWidget> widget;
    std::function<void()> run;
};

// The works of an arrival, found by widget and aspect, done in the order of the
// first request for each.
class Queue
{
public:
    void put(QWidget *widget, Aspect aspect, std::function<void()> run)
    {
        const Key key(widget, static_cast<int>(aspect));
        const auto place = m_places.constFind(key);
        if (place != m_places.constEnd()) {
            Work &work = m_works[*place];
            work = {widget, std::move(run)}; // the widget, too: another one may have
                                             // got the address of one that is gone
            return;
        }
        m_places.insert(key, m_works.size());
        m_works.push_back({widget, std::move(run)});
    }

    bool isEmpty() const { return m_works.empty(); }

    void run() const
    {
        for (const Work &work : m_works) {
            if (work.widget)
                work.run();
        }
    }

private:
    using Key = QPair<const QWidget *, int>;

    QHash<Key, std::size_t> m_places;
    std::vector<Work> m_works;
};

int batches = 0;
Queue waiting;
QElapsedTimer sinceShown;
QPointer<QTimer> nextShow;
std::vector<std::function<void()>> behind; // the arrival

void show()
{
    if (waiting.isEmpty())
        return;
    sinceShown.start();
    std::exchange(waiting, {}).run();
}

// At once where the last time is long enough ago, else when it is.
void showInTime()
{
    const qint64 elapsed = sinceShown.isValid() ? sinceShown.elapsed() : kShowEveryMs;
    if (elapsed >= kShowEveryMs) {
        show();
        return;
    }
    if (!nextShow) {
        nextShow = new QTimer(QCoreApplication::instance());
        nextShow->setSingleShot(true);
        nextShow->setTimerType(Qt::PreciseTimer);
        QObject::connect(nextShow, &QTimer::timeout, nextShow, show);
    }
    if (!nextShow->isActive())
        nextShow->start(static_cast<int>(kShowEveryMs - elapsed));
}

template <class Widget> void setChecked(Widget *widget, bool on)
{
    later(widget, Aspect::State, [widget, on] { widget->setChecked(on); });
}

} // namespace

Batch::Batch()
{
    ++batches;
}

Batch::~Batch()
{
    --batches;
    showInTime();
    const auto works = std::exchange(behind, {});
    for (const auto &work : works)
        work();
}

Pause::Pause() : m_batches(std::exchange(batches, 0))
{
    show();
}

Pause::~Pause()
{
    batches = m_batches;
}

void later(QWidget *widget, Aspect aspect, std::function<void()> work)
{
    if (batches > 0) {
        waiting.put(widget, aspect, std::move(work));
        return;
    }
    show(); // earlier work first
    work();
}

void afterArrival(std::function<void()> work)
{
    if (batches > 0)
        behind.push_back(std::move(work));
    else
        work();
}

void text(QLabel *label, const QString &text)
{
    later(label, Aspect::Content, [label, text] {
        if (label->text() == text)
            return;
        label->setText(text);
        accessibility::valueChanged(label);
    });
}

void text(QLineEdit *field, const QString &text)
{
    later(field, Aspect::Content, [field, text] {
        if (field->text() != text)
            field->setText(text);
    });
}

void text(QTextEdit *box, const QString &text)
{
    later(box, Aspect::Content, [box, text] { box->setPlainText(text); });
}

void checked(QAbstractButton *button, bool on)
{
    setChecked(button, on);
}

void checked(QGroupBox *group, bool on)
{
    setChecked(group, on);
}

void value(QSpinBox *box, int value)
{
    later(box, Aspect::Content, [box, value] { box->setValue(value); });
}

void value(QLCDNumber *counter, int value)
{
    later(counter, Aspect::Content, [counter, value] {
        counter->display(value);
        accessibility::valueChanged(counter);
    });
}

} // namespace display
