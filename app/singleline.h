// SPDX-License-Identifier: MIT
// A text box that holds one line.
#pragma once

class QPlainTextEdit;

/// Removes line breaks from `edit`, typed, pasted or dropped: its text becomes part of one command line.
void keepToOneLine(QPlainTextEdit *edit);
