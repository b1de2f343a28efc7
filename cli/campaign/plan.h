// SPDX-License-Identifier: MIT
// A campaign as its file describes it: mechanisms, and the cases that show each of them at work.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>
#include <utility>
#include <vector>

namespace campaign {

/// A report with these values. A field that the report lacks is looked for in the last of its records.
struct Wanted {
    QString report; // name of its kind; empty: none is wanted
    std::vector<std::pair<QString, QVariant>> fields;

    explicit operator bool() const { return !report.isEmpty(); }
};

struct Expectation {
    std::optional<int> fault; // identifier of the fault source
    QString source;           // as the fault report names it
    QString state;            // that fault collection enters
    std::optional<int> reset; // number of the reason
    std::optional<int> resetSource;
    Wanted record; // the newest entry of the mechanism's fault record
    std::vector<Wanted> reports;
    Wanted changed; // two of these reports differ in the field:
    QString changedField;
};

/// What a case shows.
enum class Kind { Injection, Control, Reset, Check };

struct Case {
    QString id, title, text;
    std::size_t mechanism = 0; // place in Plan::mechanisms
    QStringList before, ask, after;
    QString inject;
    QString askRecord; // command that asks for the fault record; empty: nobody wants it
    Expectation expect;
    Wanted effect;                    // report that shows the injection at work, whether it is detected or not
    std::optional<double> deadlineUs; // for the detection, by the board's clock
    int reactionMs = 0;               // for the reaction, by ours
    int repeat = 1;
    bool control = false; // the monitor is off: the fault has to go unnoticed

    Kind kind() const
    {
        return control ? Kind::Control : expect.fault ? Kind::Injection : expect.reset ? Kind::Reset : Kind::Check;
    }
};

struct Mechanism {
    QString name, title;
};

struct Plan {
    QString title, text;
    QString file;          // its name without folders
    QByteArray sha256;     // of the file
    QStringList setup;     // commands before the first case
    QStringList recover;   // commands after a case that leaves the board in another state than NORMAL
    int patienceMs = 1500; // the longest wait for what is expected, beyond its budget
    std::vector<Mechanism> mechanisms;
    std::vector<Case> cases;
};

} // namespace campaign
