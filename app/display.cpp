// SPDX-License-Identifier: MIT
#include "app/display.h"

#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QTextEdit>

#include <utility>

namespace display {

namespace {

int batches = 0;
QHash<const void *, std::function<void()>> waiting;

void flush()
{
    const auto works = std::exchange(waiting, {});
    for (const auto &work : works)
        work();
}

} // namespace

Batch::Batch()
{
    ++batches;
}

Batch::~Batch()
{
    --batches;
    flush();
}

Pause::Pause() : m_batches(std::exchange(batches, 0))
{
    flush();
}

Pause::~Pause()
{
    batches = m_batches;
}

void later(const void *key, const std::function<void()> &work)
{
    if (batches > 0)
        waiting.insert(key, work);
    else
        work();
}

void text(QLabel *label, const QString &text)
{
    later(label, [label, text] {
        if (label->text() != text)
            label->setText(text);
    });
}

void text(QLineEdit *field, const QString &text)
{
    later(field, [field, text] {
        if (field->text() != text)
            field->setText(text);
    });
}

void text(QTextEdit *box, const QString &text)
{
    later(box, [box, text] { box->setPlainText(text); });
}

} // namespace display
