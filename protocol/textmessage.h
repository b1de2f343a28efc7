// SPDX-License-Identifier: MIT
// Free text from the board.
#pragma once

#include "protocol/layout.h"

#include <QString>
#include <QStringList>

namespace protocol {

struct TextMessage {
    QString text; // up to the first NUL of the payload

    bool operator==(const TextMessage &) const = default;
};

inline QStringList describe(const TextMessage &message)
{
    return {message.text};
}

inline constexpr auto kTextMessageFields = rowsOf<TextMessage>({
    {"text", coded(Coding::Latin1), into<&TextMessage::text>, {.meaning = "a line for people"}},
});
constexpr const auto &layoutOf(const TextMessage *)
{
    return kTextMessageFields;
}

} // namespace protocol
