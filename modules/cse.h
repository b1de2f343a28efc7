// SPDX-License-Identifier: MIT
// Cryptographic services engine: commands built from the inputs, engine state, results.
#pragma once

#include "protocol/cse.h"

#include <QPointer>
#include <QSet>
#include <QTimer>

class QWidget;
namespace Ui {
class MainWindow;
}

class CsePage
{
public:
    /// Boxes open over `window`, which also owns the timers.
    CsePage(const Ui::MainWindow &form, QWidget &window);

    void encrypt(QLatin1String command);
    /// True when the text had the length that the engine wants.
    bool decrypt(QLatin1String command);
    void decryptWithReminder();
    void generate();
    void verify();
    void extendSeed();

    void show(const protocol::cse::Result &result);
    /// Busy, or an error.
    void show(const protocol::cse::Status &status);
    void showIdle();

private:
    bool hasLength(const QString &text, bool multiple);
    void showBusy();
    void showError(quint8 code);

    const Ui::MainWindow &m_form;
    QWidget &m_window;
    QSet<quint8> m_errorsShown;    // codes whose blinking or box is under way
    QSet<quint8> m_errorsAnswered; // of these the ones whose box is closed
    QPointer<QTimer> m_idleTimer;  // the latest one; earlier ones run on
};
