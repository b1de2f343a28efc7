// SPDX-License-Identifier: MIT
#include "simulator/defects.h"

#include "protocol/fccu.h"

#include <algorithm>

namespace simulator {

namespace {

using protocol::ModuleId;
using namespace defect;

constexpr quint8 kAlarm = protocol::fccu::Alarm;

bool applies(const std::optional<quint8> &first, const QByteArray &payload)
{
    return !first || (!payload.isEmpty() && static_cast<quint8>(payload[0]) == *first);
}

// The place `at` of a payload, from its end where it is negative; nothing beyond it.
std::optional<int> placeIn(const QByteArray &payload, int at)
{
    const int place = at < 0 ? static_cast<int>(payload.size()) + at : at;
    return place >= 0 && place < payload.size() ? std::optional(place) : std::nullopt;
}

void spoil(QByteArray &payload, const Spoilt &spoilt)
{
    if (const auto place = placeIn(payload, spoilt.at))
        payload[*place] = static_cast<char>(spoilt.value.value_or(static_cast<quint8>(payload[*place])) ^ spoilt.flip);
}

void swap(QByteArray &payload, const Swapped &swapped)
{
    const auto first = placeIn(payload, swapped.at);
    const auto second = placeIn(payload, swapped.at + 1);
    if (first && second)
        std::swap(payload.data()[*first], payload.data()[*second]);
}

} // namespace

const std::vector<Defect> &allDefects()
{
    // clang-format off
    static const std::vector<Defect> defects = {
        {"clock-monitor-mute", "CMU0 notices nothing", Mute{28}},
        {"crossbar-checker-mute", "XBIC0 notices nothing", Mute{47}},
        {"protection-mute", "SMPU0 stops an access and says nothing", Mute{104}},
        {"ecc-mute", "correctable errors of the system RAM are not noticed", Mute{16}},
        {"watchdog-mute", "SWT0 does not run out", Mute{13}},
        {"interrupt-monitor-mute", "the first channel of K4 notices nothing", Mute{75}},
        {"voltage-detector-mute", "low voltage is not noticed", Mute{1}},
        {"crossbar-wrong-source", "XBIC1 is reported as XBIC0", Renamed{46, 47}},
        {"interrupt-wrong-core", "a late interrupt of K7a is reported as one of K4", Renamed{78, 75}},
        {"clock-monitor-late", "CMU3 needs half a second", Late{31, 500}},
        {"watchdog-late", "SWT0 runs out 300 ms too late", Late{13, 300}},
        {"crossbar-twice", "each fault of XBIC2 is reported twice", Twice{50}},
        {"alarm-without-record", "forbidden accesses of SMPU1 are not recorded", Unrecorded{105}},
        {"record-without-alarm", "XBIC3 records its faults and raises no alarm", Unreported{48}},
        {"alarm-without-fault", "an uncorrectable flash error changes the state, but names no fault",
         Dropped{ModuleId::Fccu, 2, 23}},
        {"fault-without-alarm", "faults are reported, the state ALARM is not", Dropped{ModuleId::Fccu, 1, kAlarm}},
        {"watchdog-no-reset", "no reset follows a watchdog's fault", NoReset{Reason::FccuLong}},
        {"reset-wrong-reason", "a functional reset by software is reported as an external one",
         OtherReset{Reason::SoftwareFunctional, static_cast<Reason>(5)}},
        {"escalation-functional", "an escalated reset is an ordinary functional one",
         OtherReset{Reason::FunctionalEscalation, Reason::SoftwareFunctional}},
        {"restart-notice-lost", "a restart is not announced", Dropped{ModuleId::Sys, 5}},
        {"radar-counter-stands", "the counter of radar frames stands", Standing{ModuleId::Spt, 1}},
        {"power-counter-stands", "the power chip's fault counter stands", Standing{ModuleId::Vg5k, 1, 3}},
        {"clock-value-stands", "the report on MC_CLK stands, whatever the clock does", Standing{ModuleId::Cmu, 1, 0x01}},
        {"random-number-stands", "the true random number is always the same", Standing{ModuleId::Cse, 4, 7}},
        {"self-test-stuck", "the self-test of Flash LVD always fails", Spoilt{ModuleId::Pmc, 4, 5, 1, 0}},
        {"logic-self-test-stuck", "logic partition 4 never passes", Spoilt{ModuleId::Bist, 1, {}, 2, {}, 0x10}},
        {"checksum-wrong", "a bit of each checksum is wrong", Spoilt{ModuleId::Crc, 3, {}, -5, {}, 0x01}},
        {"cipher-bytes-swapped", "the last two bytes of an ECB ciphertext are swapped", Swapped{ModuleId::Cse, 4, 0, -2}},
        {"verification-passes", "every message is found authentic", Spoilt{ModuleId::Cse, 4, 5, 7, 1}},
        {"record-wrong-address", "the addresses of forbidden accesses are wrong", Spoilt{ModuleId::Smpu, 2, {}, 1, {}, 0x10}},
        {"lock-lost", "a functional reset opens the protected register", Lost{"regp"}},
        {"lock-kept", "a destructive reset does not open the protected register", Kept{"regp"}},
        {"detectors-kept", "voltage detectors that are off stay so over a destructive reset", Kept{"pmc"}},
        {"record-kept", "the crossbar record outlives resets", Kept{"xbic"}},
        {"clock-monitor-always-on", "clock monitors cannot be switched off", Ignored{"cmu 14"}},
        {"watchdog-always-on", "watchdogs cannot be switched off", Ignored{"swt 4"}},
        {"clear-ignored", "faults of the memory protection cannot be cleared", Ignored{"smpu 5"}},
    };
    // clang-format on
    return defects;
}

bool Defects::add(const QString &name)
{
    const auto found =
        std::ranges::find_if(allDefects(), [&name](const Defect &known) { return known.isCalled(name); });
    if (found == allDefects().end())
        return false;
    m_active.push_back(found->kind);
    m_standing.emplace_back();
    return true;
}

template <class Kind> const Kind *Defects::find(auto matches) const
{
    for (const DefectKind &kind : m_active) {
        const auto *wanted = std::get_if<Kind>(&kind);
        if (wanted && matches(*wanted))
            return wanted;
    }
    return nullptr;
}

template <class Kind> const Kind *Defects::of(quint8 source) const
{
    return find<Kind>([source](const Kind &kind) { return kind.source == source; });
}

bool Defects::isMute(quint8 source) const
{
    return of<Mute>(source);
}

bool Defects::isRecorded(quint8 source) const
{
    return !of<Unrecorded>(source);
}

bool Defects::isReported(quint8 source) const
{
    return !of<Unreported>(source);
}

int Defects::reportsOf(quint8 source) const
{
    return of<Twice>(source) ? 2 : 1;
}

int Defects::delayMs(quint8 source) const
{
    const Late *late = of<Late>(source);
    return late ? late->ms : 0;
}

quint8 Defects::reportedAs(quint8 source) const
{
    const Renamed *renamed = of<Renamed>(source);
    return renamed ? renamed->as : source;
}

bool Defects::isIgnored(const QString &words) const
{
    return find<Ignored>([&words](const Ignored &ignored) { return words == QLatin1String(ignored.words); });
}

bool Defects::isKept(const QString &unit) const
{
    return find<Kept>([&unit](const Kept &kept) { return unit == QLatin1String(kept.unit); });
}

bool Defects::isLost(const QString &unit) const
{
    return find<Lost>([&unit](const Lost &lost) { return unit == QLatin1String(lost.unit); });
}

std::optional<Reason> Defects::resetFor(Reason reason) const
{
    if (find<NoReset>([reason](const NoReset &none) { return none.reason == reason; }))
        return {};
    const auto *other = find<OtherReset>([reason](const OtherReset &reset) { return reset.reason == reason; });
    return other ? other->as : reason;
}

std::optional<QByteArray> Defects::sent(ModuleId module, quint8 type, QByteArray payload)
{
    const auto concerns = [&](const auto *kind) {
        return kind && kind->module == module && kind->type == type && applies(kind->first, payload);
    };
    for (std::size_t i = 0; i < m_active.size(); ++i) {
        const DefectKind &kind = m_active[i];
        if (concerns(std::get_if<Dropped>(&kind)))
            return {};
        if (concerns(std::get_if<Standing>(&kind)))
            payload = m_standing[i] = m_standing[i].isNull() ? payload : m_standing[i];
        if (const auto *spoilt = std::get_if<Spoilt>(&kind); concerns(spoilt))
            spoil(payload, *spoilt);
        if (const auto *swapped = std::get_if<Swapped>(&kind); concerns(swapped))
            swap(payload, *swapped);
    }
    return payload;
}

} // namespace simulator
