// SPDX-License-Identifier: MIT
// All commands of the board, in words for people and for tools that name or complete command lines.
#pragma once

#include "protocol/moduleid.h"

#include <QLatin1String>
#include <QString>

#include <span>

namespace protocol {

/// A command line is `words`, then the arguments, with one blank between any two.
struct CommandInfo {
    QLatin1String words;              // "cmu 13"
    QLatin1String arguments;          // "<monitor 0-12>"; empty where there are none
    ModuleId module = ModuleId::Text; // whose command it is
    QLatin1String help;               // what it does
    QLatin1String answer; // names of the reports that answer, with blanks between them; empty where none has to
};

/// What a command does to the course of a fault.
enum class Deed : quint8 { None, Inject, Clear, Reset };
Deed deedOf(const CommandInfo &command);

/// In the order of modules.
std::span<const CommandInfo> commandInfos();

/// The command that a line gives: the one with the most words of those that the line begins with. Null for none.
const CommandInfo *commandOf(const QString &line);

} // namespace protocol
