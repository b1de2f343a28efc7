// SPDX-License-Identifier: MIT
// The time line in files. Each function returns why it failed, for people; empty on success.
#pragma once

#include "timeline/scale.h"

#include <QSize>
#include <QString>

namespace timeline {

class Chronicle;

/// All faults with their times, and what happened between them: comma-separated, UTF-8, a heading, times in UTC.
QString saveLog(const QString &path, const Chronicle &chronicle);
/// As SVG or PNG, by the path's ending. A PNG has twice the pixels.
QString savePicture(const QString &path, const Chronicle &chronicle, const Span &span, const QSize &size,
                    int selected = -1);

} // namespace timeline
