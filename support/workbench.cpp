// SPDX-License-Identifier: MIT
#include "support/workbench.h"

#include "link/serialline.h"
#include "link/serialports.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTest>

#include <algorithm>

namespace {

QString textOf(const QWidget *widget)
{
    if (auto *label = qobject_cast<const QLabel *>(widget))
        return label->text();
    if (auto *field = qobject_cast<const QLineEdit *>(widget))
        return field->text();
    if (auto *box = qobject_cast<const QTextEdit *>(widget))
        return box->toPlainText();
    if (auto *box = qobject_cast<const QPlainTextEdit *>(widget))
        return box->toPlainText();
    auto *button = qobject_cast<const QAbstractButton *>(widget);
    if (!button || !button->isCheckable())
        return {};
    return button->text() + (button->isChecked() ? QStringLiteral(" [on]") : QStringLiteral(" [off]"));
}

} // namespace

void Bench::build(const QString &tty)
{
    setAvailablePortNames([tty] { return QStringList{tty}; });
    m_window = std::make_unique<MainWindow>();
    m_window->resize(1440, 900);
    m_window->show();
    if (!gSerialPort->isOpen())
        qFatal("the line did not open");
}

void Bench::turnTo(QWidget *widget)
{
    for (QWidget *page = widget; page && page->parentWidget(); page = page->parentWidget()) {
        auto *tabs = qobject_cast<QTabWidget *>(page->parentWidget()->parentWidget());
        if (tabs && tabs->indexOf(page) >= 0 && tabs->currentWidget() != page) {
            tabs->setCurrentWidget(page);
            QApplication::processEvents(); // lays the page out
        }
    }
}

void Bench::click(const char *name)
{
    auto *button = find<QAbstractButton>(name);
    turnTo(button);
    QTest::mouseClick(button, Qt::LeftButton, {},
                      qobject_cast<QAbstractButton *>(button) ? QPoint(8, button->height() / 2) : QPoint());
}

QString Bench::text(const char *name)
{
    return textOf(find<QWidget>(name));
}

QString Bench::dump(const char *name)
{
    QStringList lines;
    const auto widgets = find<QWidget>(name)->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const QString text = textOf(widget);
        if (widget->objectName().startsWith(QLatin1String("qt_")) || (text.isEmpty() && widget->styleSheet().isEmpty()))
            continue;
        QString line = widget->objectName() + QStringLiteral(" = ") + text;
        if (!widget->styleSheet().isEmpty())
            line += QStringLiteral(" {") + widget->styleSheet() + QLatin1Char('}');
        lines.append(line);
    }
    std::sort(lines.begin(), lines.end());
    return lines.join(QLatin1Char('\n'));
}

RawBench::RawBench()
{
    build(m_line.tty());
}

QString RawBench::sent()
{
    QByteArray bytes = m_line.received();
    m_line.clear();
    return QString::fromLatin1(bytes).replace(QLatin1String("\r\n"), QLatin1String("|"));
}

Workbench::Workbench(const simulator::VirtualBoard::Options &options, Wire wire)
    : m_board(std::make_unique<simulator::VirtualBoard>(options))
{
    connect(&board(), &simulator::Board::executed, this, [this](const QString &line) { commands.append(line); });
    if (wire == Wire::Cutting)
        m_proxy = std::make_unique<CuttingProxy>(m_board->tty());
    build(m_proxy ? m_proxy->tty() : m_board->tty());
}
