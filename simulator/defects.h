// SPDX-License-Identifier: MIT
// Defects that a board can be given, so that those who test safety mechanisms can see their own tests fail.
#pragma once

#include "protocol/moduleid.h"
#include "protocol/reset.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <variant>
#include <vector>

namespace simulator {

using protocol::reset::Reason;

namespace defect {

/// The mechanism of this fault source notices nothing.
struct Mute {
    quint8 source;
};
/// Another source is reported.
struct Renamed {
    quint8 source;
    quint8 as;
};
/// Detected and reported so much later.
struct Late {
    quint8 source;
    int ms;
};
/// Reported twice.
struct Twice {
    quint8 source;
};
/// Reported, but missing in the module's record.
struct Unrecorded {
    quint8 source;
};
/// In the module's record, but never reported.
struct Unreported {
    quint8 source;
};
/// Reports that are never sent; with `first` only those that begin with this byte.
struct Dropped {
    protocol::ModuleId module = {};
    quint8 type = 0;
    std::optional<quint8> first = {};
};
/// A byte of a report gets a fixed value, or is changed by `flip`; `at` counts from the end where it is negative.
struct Spoilt {
    protocol::ModuleId module = {};
    quint8 type = 0;
    std::optional<quint8> first;
    int at = 0;
    std::optional<quint8> value = {};
    quint8 flip = 0;
};
/// The first report stands: it is repeated in place of all that follow.
struct Standing {
    protocol::ModuleId module = {};
    quint8 type = 0;
    std::optional<quint8> first = {};
};
/// Two neighbouring bytes of a report are exchanged, `at` and the one behind it.
struct Swapped {
    protocol::ModuleId module = {};
    quint8 type = 0;
    quint8 first = 0;
    int at = 0;
};
/// No reset follows for this reason.
struct NoReset {
    Reason reason;
};
/// The reset is done, and reported, as one for another reason.
struct OtherReset {
    Reason reason;
    Reason as;
};
/// A unit that keeps its state over every reset.
struct Kept {
    const char *unit;
};
/// A unit that a functional reset resets as a destructive one does.
struct Lost {
    const char *unit;
};
/// Commands that begin with these words do nothing.
struct Ignored {
    const char *words;
};

} // namespace defect

using DefectKind = std::variant<defect::Mute, defect::Renamed, defect::Late, defect::Twice, defect::Unrecorded,
                                defect::Unreported, defect::Dropped, defect::Spoilt, defect::Standing, defect::Swapped,
                                defect::NoReset, defect::OtherReset, defect::Kept, defect::Lost, defect::Ignored>;

struct Defect {
    const char *name = nullptr;
    const char *effect = nullptr; // in words for people
    DefectKind kind;

    bool isCalled(const QString &wanted) const { return wanted == QLatin1String(name); }
};

/// All that can be had.
const std::vector<Defect> &allDefects();

/// Those that a board has. Asked by the board at the few places where they show.
class Defects
{
public:
    /// False where there is no defect of this name.
    bool add(const QString &name);

    bool isMute(quint8 source) const;
    bool isRecorded(quint8 source) const;
    bool isReported(quint8 source) const;
    int reportsOf(quint8 source) const; // 1, or more
    int delayMs(quint8 source) const;
    quint8 reportedAs(quint8 source) const;

    bool isIgnored(const QString &words) const;
    bool isKept(const QString &unit) const;
    bool isLost(const QString &unit) const;
    /// The reason for which the board is reset; none where it is not.
    std::optional<Reason> resetFor(Reason reason) const;

    /// The payload as it is sent; nothing where it is not.
    std::optional<QByteArray> sent(protocol::ModuleId module, quint8 type, QByteArray payload);

private:
    template <class Kind> const Kind *find(auto matches) const;
    template <class Kind> const Kind *of(quint8 source) const;

    std::vector<DefectKind> m_active;
    std::vector<QByteArray> m_standing; // by place in m_active: the report that stands
};

} // namespace simulator
