// SPDX-License-Identifier: MIT
#include "app/singleline.h"

#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTextDocument>

void keepToOneLine(QPlainTextEdit *edit)
{
    QObject::connect(edit, &QPlainTextEdit::textChanged, edit, [edit] {
        static const QRegularExpression breaks(QStringLiteral("[\\n\\r\\x{2028}\\x{2029}]"));
        const QString text = edit->toPlainText();
        if (!text.contains(breaks))
            return;
        QTextCursor cursor = edit->textCursor();
        const int behind = static_cast<int>(text.mid(cursor.position()).remove(breaks).size());
        const QString line = QString(text).remove(breaks);
        edit->setPlainText(line);
        cursor = edit->textCursor();
        cursor.setPosition(static_cast<int>(line.size()) - behind);
        edit->setTextCursor(cursor);
    });
}
