// SPDX-License-Identifier: MIT
// The console: a plain terminal onto the board's line, on a port object of its own.
#pragma once

#include "console/terminalview.h"
#include "console/textframes.h"

#include <QList>
#include <QSerialPort>
#include <QWidget>

#include <memory>

namespace Ui {
class consoleForm;
}

class consoleForm : public QWidget
{
    Q_OBJECT

public:
    explicit consoleForm(QWidget *parent = nullptr);
    /// Hands the line back unless closing the window has already done so.
    ~consoleForm() override;

signals:
    void finish();

public slots:
    void serialPort_control();
    void stringDatain();
    void writeData(QString text);
    void writeDataBlock(QString instring);
    void consolePrint(QList<QString> read, int vector);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    bool sendKey(int key, Qt::KeyboardModifiers modifiers, const QString &text);
    void sendEscape(const QString &letter);
    void handBack();

    std::unique_ptr<Ui::consoleForm> ui;
    QSerialPort m_port;
    TextFrames m_frames;
    std::unique_ptr<TerminalView> m_view;
    bool m_handedBack = false;
};
