// SPDX-License-Identifier: MIT
// The folder that a campaign's reports and its recording go to.
#pragma once

#include "cli/campaign/outcome.h"

namespace campaign {

inline constexpr const char *kRecordingFile = "recording.pcapng";

/// Makes the folder. Returns why it cannot be had, for people; empty on success.
QString makeFolder(const QString &path);

/// Writes report.json, junit.xml, report.html and, where weasyprint is installed, report.pdf; says on standard error
/// where it is not. Returns why that failed, for people; empty on success.
QString writeReports(const QString &folder, const Plan &plan, const Outcome &outcome);

} // namespace campaign
