// SPDX-License-Identifier: MIT
// The colours that a terminal's "m" sequence selects.
#pragma once

#include <QString>

class QTextCharFormat;

/// Applies the parameters of an "m" sequence: numbers joined by ";", none is 0. Known are 0 (reset), 1 and 22 (bold on and
/// off), 30-37 and 90-97 (text, bright text), 40-47 and 100-107 (background, bright), 39 and 49 (the box's own),
/// 38 and 48 followed by 5;N (one of 256 colours) or 2;R;G;B. All others are skipped.
void selectColours(QTextCharFormat &format, const QString &parameters);
