// SPDX-License-Identifier: MIT
#include "console/consoleform.h"

#include "app/messagebox.h"
#include "link/serialline.h"
#include "link/serialports.h"
#include "ui_consoleform.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QThread>

#include <algorithm>

namespace {

constexpr char kScrollBarStyle[] = "QScrollBar:vertical {border: 1px solid black; background: white; width: 16px;}";
constexpr int kWriteMs = 30000;
constexpr unsigned long kEscapeGapMs = 2;

struct CursorKey {
    int key;
    const char *letter;
};
constexpr CursorKey cursorKeys[] = {{Qt::Key_Up, "A"}, {Qt::Key_Down, "B"}, {Qt::Key_Right, "C"}, {Qt::Key_Left, "D"}};

bool isTyped(int key)
{
    return (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9);
}

bool isEditing(int key)
{
    return key == Qt::Key_Delete || key == Qt::Key_Space || key == Qt::Key_Tab || key == Qt::Key_Backspace;
}

} // namespace

consoleForm::consoleForm(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui::consoleForm>())
{
    ui->setupUi(this);
    ui->textEdit->verticalScrollBar()->setStyleSheet(QString::fromLatin1(kScrollBarStyle));
    ui->textEdit->installEventFilter(this);
    m_view = std::make_unique<TerminalView>(*ui->textEdit);
    // A lost device reports errors endlessly: the first one closes the port, the window stays open.
    connect(&m_port, &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError error) {
        if (isLineLost(error))
            abandonLine(m_port);
    });
    connect(qApp, &QCoreApplication::aboutToQuit, this, &consoleForm::handBack);
    serialPort_control();
}

consoleForm::~consoleForm()
{
    handBack();
}

void consoleForm::serialPort_control()
{
    if (availablePortNames().isEmpty())
        return;
    if (!openLine(m_port, gPortName)) {
        inform(this, QStringLiteral("Warning"), QStringLiteral("Serialport can not open, please check."),
               QMessageBox::Yes);
        return;
    }
    connect(&m_port, &QSerialPort::readyRead, this, &consoleForm::stringDatain, Qt::UniqueConnection);
}

void consoleForm::stringDatain()
{
    const QStringList texts = m_frames.take(readLine(m_port));
    if (!texts.isEmpty())
        consolePrint(texts, texts.size());
}

void consoleForm::writeData(QString text)
{
    if (m_port.isOpen())
        writeLine(m_port, text.toLatin1());
}

void consoleForm::writeDataBlock(QString instring)
{
    if (!m_port.isOpen())
        return;
    writeLine(m_port, instring.toLatin1());
    m_port.waitForBytesWritten(kWriteMs);
}

void consoleForm::consolePrint(QList<QString> read, int vector)
{
    m_view->print(read.mid(0, std::max(vector, 0)));
}

void consoleForm::sendEscape(const QString &letter)
{
    for (const QString &part : {QStringLiteral("\x1B"), QStringLiteral("["), letter}) {
        writeDataBlock(part);
        if (part != letter)
            QThread::msleep(kEscapeGapMs);
    }
}

/// Sends the key's characters; returns false if the key is not one for the board.
bool consoleForm::sendKey(int key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    for (const CursorKey &row : cursorKeys) {
        if (row.key == key) {
            sendEscape(QString::fromLatin1(row.letter));
            return true;
        }
    }
    if (key == Qt::Key_Return)
        writeData(QStringLiteral("\r\n"));
    else if (isEditing(key) || (isTyped(key) && modifiers == Qt::NoModifier))
        writeData(text);
    else
        return false;
    return true;
}

bool consoleForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != ui->textEdit || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *press = static_cast<QKeyEvent *>(event);
    if (press->matches(QKeySequence::Paste)) {
        writeData(QApplication::clipboard()->text());
        return true;
    }
    if (press->matches(QKeySequence::Copy)) {
        if (ui->textEdit->textCursor().hasSelection())
            ui->textEdit->copy();
        return true;
    }
    return sendKey(press->key(), press->modifiers(), press->text()) || QWidget::eventFilter(watched, event);
}

void consoleForm::closeEvent(QCloseEvent *event)
{
    handBack();
    event->accept();
}

// Reopens the main window's port with its earlier settings.
void consoleForm::handBack()
{
    if (m_handedBack)
        return;
    m_handedBack = true;
    closeLine(m_port);
    openLine(*gSerialPort, gPortName);
    emit finish();
}
