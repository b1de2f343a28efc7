// SPDX-License-Identifier: MIT
// A text box that holds one line.
#pragma once

class QPlainTextEdit;

/// Takes line breaks out of `edit`, typed, pasted or dropped: what it holds is part of one command line.
void keepToOneLine(QPlainTextEdit *edit);
