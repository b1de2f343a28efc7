// SPDX-License-Identifier: MIT
#include "app/linepanel.h"

#include "app/linelamp.h"
#include "app/linerecorder.h"
#include "app/zoom.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int kRefreshMs = 500;
constexpr int kWidth = 460;
constexpr int kListHeight = 132;
constexpr int kModuleColumns = 4;
constexpr int kLampSize = 16;

QString number(quint64 value)
{
    return QLocale(QLocale::English).toString(value);
}

// "1 frame", "2 frames".
QString counted(quint64 value, const char *what)
{
    return number(value) + QLatin1Char(' ') + QLatin1String(what) + QLatin1String(value == 1 ? "" : "s");
}

QLabel *heading(const QString &text)
{
    auto *label = new QLabel(text);
    label->setStyleSheet(QStringLiteral("color: rgb(24,60,112); font: bold;"));
    return label;
}

QLabel *plain(const QString &accessibleName)
{
    auto *label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setAccessibleName(accessibleName);
    return label;
}

// Also sets the description: screen readers say it behind the label's accessible name.
void say(QLabel *label, const QString &text)
{
    if (label->text() == text)
        return;
    label->setText(text);
    label->setAccessibleDescription(text);
}

QString portLine(const PortInfo &port)
{
    const QString description = portDescription(port);
    return description.isEmpty() ? port.name : port.name + QStringLiteral("   ") + description;
}

QIcon noIcon()
{
    QPixmap nothing(zoomed(kLampSize), zoomed(kLampSize));
    nothing.fill(Qt::transparent);
    return {nothing};
}

QIcon lampIcon(LineMonitor::State state)
{
    QPixmap picture(2 * zoomed(kLampSize), 2 * zoomed(kLampSize));
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintLamp(painter, QRectF(picture.rect()).adjusted(2, 2, -2, -2), state);
    QIcon icon(picture);
    icon.addPixmap(picture, QIcon::Selected);
    return icon;
}

} // namespace

LinePanel::LinePanel(const LineMonitor &monitor, QWidget *parent) : QFrame(parent, Qt::Popup), m_monitor(monitor)
{
    setObjectName(QStringLiteral("linePanel"));
    setAccessibleName(QStringLiteral("Line to the board"));
    setFixedWidth(kWidth);
    m_state = plain(QStringLiteral("State of the line"));
    QFont large = font();
    large.setPointSize(11);
    large.setBold(true);
    m_state->setFont(large);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 12, 14, 14);
    layout->setSpacing(8);
    layout->addWidget(m_state);
    layout->addWidget(makePorts());
    layout->addWidget(heading(QStringLiteral("Since the program started")));
    layout->addWidget(makeCounts());
    layout->addWidget(heading(QStringLiteral("Frames by module")));
    layout->addWidget(makeModules());
    connect(&m_monitor, &LineMonitor::changed, this, [this] {
        if (isVisible())
            listPorts();
    });
}

QWidget *LinePanel::makePorts()
{
    auto *box = new QWidget;
    auto *layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    m_list = new QListWidget;
    m_list->setObjectName(QStringLiteral("linePorts"));
    m_list->setAccessibleName(QStringLiteral("Serial ports"));
    m_list->setFixedHeight(kListHeight);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setStyleSheet(QStringLiteral(
        "QListWidget { border: 1px solid rgb(168,180,198); border-radius: 4px; background: white; padding: 2px; }"
        "QListWidget::item { padding: 0.7ex 1px; }"
        "QListWidget::item:selected { background: rgb(26,102,204); color: white; border-radius: 3px; }"));
    m_use = new QPushButton(QStringLiteral("Use this port"));
    m_use->setObjectName(QStringLiteral("lineUsePort"));
    layout->addWidget(heading(QStringLiteral("Ports")));
    layout->addWidget(m_list);
    layout->addWidget(m_use, 0, Qt::AlignRight);
    connect(m_list, &QListWidget::itemActivated, this, &LinePanel::choose);
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) { m_use->setEnabled(row >= 0); });
    connect(m_use, &QPushButton::clicked, this, &LinePanel::choose);
    return box;
}

QWidget *LinePanel::makeCounts()
{
    struct Row {
        const char *name;
        QLabel **value;
    };
    const Row rows[] = {
        {"Received", &m_received}, {"Sent", &m_sent}, {"Damaged", &m_damaged}, {"Last answer", &m_answer}};
    auto *box = new QWidget;
    auto *layout = new QGridLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setColumnMinimumWidth(0, 90);
    layout->setColumnStretch(1, 1);
    int line = 0;
    for (const Row &row : rows) {
        const QString name = QString::fromLatin1(row.name);
        *row.value = plain(name);
        layout->addWidget(new QLabel(name), line, 0);
        layout->addWidget(*row.value, line++, 1);
    }
    return box;
}

QWidget *LinePanel::makeModules()
{
    auto *box = new QWidget;
    auto *layout = new QGridLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(16);
    layout->setVerticalSpacing(3);
    for (int module = 0; module < protocol::kModuleCount; ++module) {
        auto *cell = new QHBoxLayout;
        m_modules[static_cast<std::size_t>(module)] = plain(QStringLiteral("Frames of ") + moduleName(module));
        cell->addWidget(new QLabel(moduleName(module)));
        cell->addStretch();
        cell->addWidget(m_modules[static_cast<std::size_t>(module)]);
        layout->addLayout(cell, module / kModuleColumns, module % kModuleColumns);
        layout->setColumnStretch(module % kModuleColumns, 1);
    }
    return box;
}

void LinePanel::setRecorder(LineRecorder &recorder)
{
    m_recorder = &recorder;
    layout()->addWidget(heading(QStringLiteral("Recorder")));
    layout()->addWidget(makeRecorder());
}

QWidget *LinePanel::makeRecorder()
{
    struct Button {
        const char *name;
        const char *text;
        const char *toolTip;
        void (LineRecorder::*pressed)();
    };
    const Button buttons[] = {
        {"lineMark", "Set a mark", "Ctrl+M: keeps a word with this moment", &LineRecorder::askAndMark},
        {"lineSave", "Save recording", "Ctrl+S: writes what is in memory into a file", &LineRecorder::askAndSave}};
    auto *box = new QWidget;
    auto *layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    m_held = plain(QStringLiteral("Recorded"));
    layout->addWidget(m_held, 1);
    for (const Button &row : buttons) {
        auto *button = new QPushButton(QString::fromLatin1(row.text));
        button->setObjectName(QLatin1String(row.name));
        button->setToolTip(QString::fromLatin1(row.toolTip));
        layout->addWidget(button);
        connect(button, &QPushButton::clicked, this, &QWidget::close);
        connect(button, &QPushButton::clicked, m_recorder, row.pressed);
    }
    return box;
}

void LinePanel::open(const QPoint &corner)
{
    m_ports.clear();
    m_state->setContentsMargins(zoomed(kLampSize + 8), 0, 0, 0); // the lamp is painted there
    m_list->clear();
    m_list->setIconSize(QSize(zoomed(kLampSize), zoomed(kLampSize)));
    listPorts();
    showCounts();
    adjustSize();
    const QScreen *screen = QGuiApplication::screenAt(corner);
    const QRect room = (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    QRect place(corner - QPoint(width(), height()), size());
    place.moveLeft(qMax(room.left(), qMin(place.left(), room.right() - width())));
    place.moveTop(qMax(room.top(), place.top()));
    move(place.topLeft());
    show();
    m_list->setFocus();
    m_timer = startTimer(kRefreshMs);
}

// The same ports keep their rows: a choice that is being made stays.
void LinePanel::listPorts()
{
    const QList<PortInfo> ports = availablePorts();
    if (ports != m_ports || m_list->count() == 0) {
        const QString chosen = m_ports.value(m_list->currentRow()).name;
        m_ports = ports;
        m_list->clear();
        int current = -1;
        for (const PortInfo &port : ports) {
            if (port.name == (chosen.isEmpty() ? m_monitor.port() : chosen))
                current = m_list->count();
            m_list->addItem(portLine(port));
        }
        if (ports.isEmpty()) {
            m_list->addItem(QStringLiteral("No serial port was found: plug the board in"));
            m_list->item(0)->setFlags(Qt::NoItemFlags);
        }
        m_list->setCurrentRow(current);
        m_use->setEnabled(current >= 0);
    }
    for (int row = 0; row < m_ports.size(); ++row)
        m_list->item(row)->setIcon(m_ports[row].name == m_monitor.port() ? lampIcon(m_monitor.state()) : noIcon());
}

void LinePanel::showCounts()
{
    const LineCounts &counts = m_monitor.counts();
    say(m_state,
        m_monitor.word().left(1).toUpper() + m_monitor.word().mid(1) + QStringLiteral(", since ")
            + m_monitor.since().toString(QStringLiteral("HH:mm:ss")));
    say(m_received, counted(counts.bytesIn, "byte") + QStringLiteral(" in ") + counted(counts.frames, "frame"));
    say(m_sent, counted(counts.bytesOut, "byte") + QStringLiteral(" in ") + counted(counts.commands, "command"));
    say(m_damaged, counted(m_monitor.damagedBytes(), "byte"));
    say(m_answer,
        m_monitor.lastAnswer().isValid()
            ? m_monitor.lastAnswer().toString(QStringLiteral("HH:mm:ss, ")) + moduleName(m_monitor.lastModule())
            : QStringLiteral("none yet"));
    if (m_recorder)
        say(m_held,
            QLocale(QLocale::English).formattedDataSize(m_recorder->heldBytes()) + QStringLiteral(" in memory"));
    for (std::size_t module = 0; module < m_modules.size(); ++module) {
        say(m_modules[module], number(counts.byModule[module]));
        m_modules[module]->setEnabled(counts.byModule[module] > 0);
    }
    update();
}

void LinePanel::choose()
{
    const QString name = m_ports.value(m_list->currentRow()).name;
    if (name.isEmpty())
        return;
    close();
    emit portChosen(name);
}

void LinePanel::timerEvent(QTimerEvent *)
{
    listPorts();
    showCounts();
}

void LinePanel::hideEvent(QHideEvent *event)
{
    killTimer(std::exchange(m_timer, 0));
    QFrame::hideEvent(event);
}

void LinePanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(250, 252, 254));
    painter.fillRect(0, 0, width(), 3, QColor(26, 102, 204));
    painter.setPen(QColor(168, 180, 198));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    const QRect title = m_state->geometry();
    const int lamp = zoomed(kLampSize);
    paintLamp(painter, QRectF(title.left(), title.center().y() - lamp / 2.0 + 1, lamp, lamp), m_monitor.state());
}
