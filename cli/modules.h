// SPDX-License-Identifier: MIT
// Requests and injections per module.
#pragma once

#include "protocol/frame.h"
#include "protocol/moduleid.h"

#include <QString>
#include <QStringList>

#include <span>

struct Module {
    protocol::ModuleId id{};
    const char *requests = "";  // for its state, "get 3|get 4"; empty: it tells none
    int injection = 0;          // its number in inject commands; 0: it has none
    int cases = 0;              // that can be injected, counted from 1
    const char *record = "";    // request for its fault record; empty: it has none
    const char *arguments = ""; // of each case where none are given, "100|100 55"; empty: none
};

/// "cmu", as it is typed and printed.
QString nameOf(const Module &module);

std::span<const Module> modules();
/// By name, whatever the case, or by the number of its frames; null where there is none.
const Module *moduleOf(const QString &word);
/// By the number of its frames; null where there is none.
const Module *moduleOf(int id);
/// True for reports that the board repeats by itself.
bool comesUnasked(const frameData &frame);

/// The command that injects case `number`; without `arguments` those of the table.
QString injectCommand(const Module &module, int number, const QStringList &arguments);

/// Names of the modules for which `fits` holds.
QStringList moduleNames(bool (*fits)(const Module &) = nullptr);
