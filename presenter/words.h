// SPDX-License-Identifier: MIT
// What an audience is told: short sentences without abbreviations that nobody in the room knows.
#pragma once

#include "protocol/moduleid.h"

#include <QString>
#include <QStringList>

namespace presenter {

/// What an injection or a reset does, by its command line; the command's own description where there is no better one.
QString deedInWords(const QString &line);
/// "Crossbar checker"
QString monitorOf(protocol::ModuleId module);
/// Why it matters that this module's faults are caught.
QString meaningOf(protocol::ModuleId module);
/// "0.02 µs", "154.2 µs", "100 ms"
QString timeInWords(double us);

/// All sentences above, for those who check that they fit.
QStringList allSentences();

} // namespace presenter
