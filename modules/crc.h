// SPDX-License-Identifier: MIT
// Checksum unit: a request, and the log of results.
#pragma once

#include "app/textview.h"
#include "protocol/crc.h"

namespace Ui {
class MainWindow;
}

class CrcPage
{
public:
    explicit CrcPage(const Ui::MainWindow &form);

    /// Asks for the checksum that the selectors say.
    void calculate();
    /// The condition logged and the width of the result follow the selectors as they stand now, not as they stood then.
    void show(const protocol::crc::Result &result);

private:
    const Ui::MainWindow &m_form;
    textview::Log m_log;
};
