// SPDX-License-Identifier: MIT
#include "demo/screenshots.h"

#include "app/mainwindow.h"
#include "demo/screenshotsteps.h"
#include "link/serialline.h"
#include "link/serialports.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLCDNumber>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTabWidget>
#include <QTextEdit>
#include <QTextStream>

namespace {

constexpr int kTickMs = 20;
constexpr int kPatienceMs = 15000;
constexpr QSize kWindow(1200, 760);

QWidget *widgetOf(const Step &step)
{
    const QString name = QString::fromLatin1(step.widget);
    if (name == QLatin1String("dialog"))
        return QApplication::activeModalWidget();
    const auto all = QApplication::allWidgets();
    for (QWidget *widget : all) {
        if (widget->objectName() == name)
            return widget;
    }
    return nullptr;
}

// What a widget says, in text and, for an indicator, in words for its colour.
QString stateOf(const QWidget *widget)
{
    QString text;
    if (auto *label = qobject_cast<const QLabel *>(widget))
        text = label->text();
    else if (auto *field = qobject_cast<const QLineEdit *>(widget))
        text = field->text();
    else if (auto *box = qobject_cast<const QTextEdit *>(widget))
        text = box->toPlainText();
    else if (auto *digits = qobject_cast<const QLCDNumber *>(widget))
        text = QString::number(digits->intValue());
    else if (auto *group = qobject_cast<const QGroupBox *>(widget))
        text = group->isChecked() ? QStringLiteral("on") : QStringLiteral("off");
    return text + QLatin1Char('\n') + widget->accessibleDescription();
}

void turnTo(QWidget *widget)
{
    for (QWidget *page = widget; page->parentWidget(); page = page->parentWidget()) {
        if (auto *tabs = qobject_cast<QTabWidget *>(page->parentWidget()->parentWidget()))
            tabs->setCurrentWidget(page);
    }
}

bool enter(QWidget *widget, const QString &text)
{
    if (auto *field = qobject_cast<QLineEdit *>(widget))
        field->setText(text);
    else if (auto *edit = qobject_cast<QPlainTextEdit *>(widget))
        edit->setPlainText(text);
    else if (auto *number = qobject_cast<QSpinBox *>(widget))
        number->setValue(text.toInt());
    else if (auto *box = qobject_cast<QComboBox *>(widget))
        box->setCurrentText(text);
    else
        return false;
    return true;
}

QSize sizeFrom(const QString &text)
{
    return {text.section(QLatin1Char('x'), 0, 0).toInt(), text.section(QLatin1Char('x'), 1).toInt()};
}

// As keys, ended by Return.
void type(QWidget *widget, const QString &text)
{
    for (const QChar letter : text) {
        QKeyEvent press(QEvent::KeyPress, letter.toUpper().unicode(), Qt::NoModifier, QString(letter));
        QApplication::sendEvent(widget, &press);
    }
    QKeyEvent end(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(widget, &end);
}

} // namespace

Screenshots::Screenshots(MainWindow &window, const QString &folder, const QStringList &ports)
    : QObject(&window),
      m_window(window),
      m_folder(folder),
      m_ports(ports)
{
    QDir().mkpath(folder);
    window.resize(kWindow);
    connect(&m_timer, &QTimer::timeout, this, &Screenshots::tick);
    m_timer.start(kTickMs);
    m_waiting.start();
}

void Screenshots::tick()
{
    const Step &step = steps[m_next];
    if (perform(step)) {
        m_waiting.restart();
        if (++m_next < std::size(steps))
            return;
    } else if (m_waiting.elapsed() < kPatienceMs) {
        return;
    } else {
        QTextStream(stderr) << "Step " << m_next + 1 << " (" << step.widget << ", \"" << step.text
                            << "\") cannot be taken." << Qt::endl;
    }
    m_timer.stop();
    QApplication::exit(m_next < std::size(steps) ? 1 : 0);
}

/// Returns whether the step was taken; one that was not is tried again. What may open a dialog or wait is started from
/// the event loop, so that the walk goes on meanwhile.
bool Screenshots::perform(const Step &step)
{
    if (step.act == Act::AskForPort) {
        QTimer::singleShot(0, this, &Screenshots::askForPort);
        return true;
    }
    if (step.act == Act::Call)
        return QMetaObject::invokeMethod(&m_window, step.widget, Qt::QueuedConnection);
    if (step.act == Act::Choose) {
        auto *action = m_window.findChild<QAction *>(QString::fromLatin1(step.widget));
        if (action)
            QTimer::singleShot(0, action, &QAction::trigger);
        return action;
    }
    QWidget *widget = widgetOf(step);
    if (!widget)
        return false;
    switch (step.act) {
    case Act::Turn:
        turnTo(widget);
        return true;
    case Act::Press:
        QTimer::singleShot(0, widget, [widget] { qobject_cast<QAbstractButton *>(widget)->click(); });
        return qobject_cast<QAbstractButton *>(widget);
    case Act::Enter:
        return enter(widget, QString::fromUtf8(step.text));
    case Act::Type:
        type(widget, QString::fromLatin1(step.text));
        return true;
    case Act::Await:
        return stateOf(widget).contains(QString::fromUtf8(step.text));
    case Act::Resize:
        widget->resize(sizeFrom(QString::fromLatin1(step.text)));
        return true;
    case Act::Leave:
        widget->close();
        return true;
    default:
        return takePicture(step);
    }
}

bool Screenshots::takePicture(const Step &step)
{
    QWidget *widget = widgetOf(step);
    const QString path = m_folder.filePath(QString::fromLatin1(step.text) + QStringLiteral(".png"));
    if (!widget->isVisible() || !widget->grab().save(path))
        return false;
    QTextStream(stdout) << path << Qt::endl;
    return true;
}

// As at a start with two boards plugged in.
void Screenshots::askForPort()
{
    gPortName.clear();
    setAvailablePortNames([ports = m_ports] { return ports + QStringList{QStringLiteral("ttyUSB0")}; });
    m_window.Serialport_open();
    setAvailablePortNames([ports = m_ports] { return ports; });
}
