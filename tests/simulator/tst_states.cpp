// SPDX-License-Identifier: MIT
// Whatever the window can show, the virtual board can bring about: a list of all states, by the tables of the protocol,
// against what the board reports when its commands are gone through. Time passes by the fake clock.
#include "protocol/bist.h"
#include "protocol/cmu.h"
#include "protocol/crc.h"
#include "protocol/cse.h"
#include "protocol/faulttable.h"
#include "protocol/fccu.h"
#include "protocol/frame.h"
#include "protocol/intcm.h"
#include "protocol/memu.h"
#include "protocol/pmc.h"
#include "protocol/regp.h"
#include "protocol/reset.h"
#include "protocol/smpu.h"
#include "protocol/spt.h"
#include "protocol/swt.h"
#include "protocol/sys.h"
#include "protocol/vg5k.h"
#include "protocol/xbic.h"
#include "simulator/board.h"

#include <QSet>
#include <QSignalSpy>
#include <QTest>

#include <array>

using namespace simulator;
using namespace protocol;

namespace {

using States = QSet<QString>;

constexpr std::array kRegions = {0, 1, 4, 7, 15};
constexpr std::array kDetectorBits = {1, 2, 3, 4, 5, 7, 8}; // of the report, those that are shown
constexpr std::array kSelfTests = {1, 2, 4, 5, 6, 7, 8, 9};

QString state(const char *what, int number, const QString &value)
{
    return QStringLiteral("%1 %2 %3").arg(QLatin1String(what)).arg(number).arg(value);
}

QString onOff(bool on)
{
    return on ? QStringLiteral("on") : QStringLiteral("off");
}

void addFlags(States &states, const char *what, const QBitArray &flags, int count)
{
    for (int i = 0; i < count; ++i)
        states += state(what, i, onOff(flags.testBit(i)));
}

// Clock monitors: a value outside its limits is a box, and nothing else is painted.
void addMonitor(States &states, const cmu::CmuRecord &m)
{
    if (m.value > m.upper || m.value < m.lower) {
        states += state("clock", m.id, m.value > m.upper ? "too high" : "too low");
        return;
    }
    states += state("clock", m.id, onOff(m.enabled));
    if (m.enabled && m.id == 0)
        states += "crystal lost " + onOff(m.xoscLost);
    if (m.enabled && m.id == 8)
        states += "spi lost " + onOff(m.spiLost);
}

void addClocks(States &states, const cmu::ClockStatus &clocks)
{
    const std::array healthy = {clocks.sdpll, clocks.pll1, clocks.pll0, clocks.xosc, clocks.irc};
    for (std::size_t i = 0; i < healthy.size(); ++i)
        states += state("generator", int(i), onOff(healthy[i]));
    states += "source " + cmu::clockSourceName(clocks.source);
}

void addCmu(States &states, quint8 type, const QByteArray &payload)
{
    if (type == cmu::TextReport)
        states += "clock text";
    else if (type == cmu::MonitorReport)
        addMonitor(states, cmu::decodeMonitor(payload));
    else if (type == cmu::ClockReport)
        addClocks(states, cmu::decodeClock(payload));
    else
        for (const auto &entry : cmu::decodeFaultRecord(payload, quint32(payload.size())).entries)
            states += state("clock record", entry.kind, {});
}

void addPmc(States &states, quint8 type, const QByteArray &payload)
{
    if (type == pmc::DetectorReport) {
        const pmc::DetectorBits bits = pmc::decodeDetectors(payload);
        for (const int bit : kDetectorBits)
            states += state("detector", bit, onOff(bits[std::size_t(bit)]));
    } else if (type == pmc::SelfTestReport) {
        const pmc::SelfTest test = pmc::decodeSelfTest(payload);
        states += state("self-test", test.code, onOff(test.passed));
    } else {
        for (const pmc::FaultCode &fault : pmc::decodeFaultRecord(payload).faults)
            states += "voltage record " + pmc::faultText(fault.code);
    }
}

void addPowerChip(States &states, const vg5k::Report &report)
{
    for (int bit = 0; report.item == vg5k::Regulators && bit < 8; ++bit)
        states += state("regulator", bit, onOff(report.value >> bit & 1));
    if (report.item == vg5k::FailSafeState)
        states += state("fail-safe", report.value, {});
    if (report.item == vg5k::DebugMode)
        states += "debug " + onOff(report.value & 1);
    if (report.item == vg5k::FaultCounter)
        states += state("counter", report.value, {});
}

void addSmpu(States &states, quint8 type, const QByteArray &payload)
{
    if (type == smpu::RegionReport) {
        const smpu::Region region = smpu::decodeRegion(payload);
        states += state("unit", region.selector == 7 ? 0 : 1, onOff(region.unitOn));
        states += state("valid", region.selector, onOff(region.valid));
        states += state("inhibit", region.selector, onOff(region.cacheInhibit));
        for (int core = 0; core < smpu::kCoreCount; ++core)
            states += state("rights", 16 * core + region.selector, smpu::rightsText(region.rights[std::size_t(core)]));
    } else {
        for (const smpu::Fault &fault : smpu::decodeFaults(payload))
            states += state("access", fault.master, fault.write ? "write" : "read");
    }
}

void addIntcm(States &states, quint8 type, const QByteArray &payload)
{
    for (const intcm::Channel &c : intcm::decodeChannels(payload)) {
        if (type == intcm::FaultRecordReport) {
            states += "late " + intcm::coreName(c.core);
            continue;
        }
        states += state("channel", 3 * c.core + c.index, onOff(c.latency != 0));
        states += state("core mode", c.core, intcm::modeName(c.mode));
    }
}

void addReset(States &states, quint8 type, const QByteArray &payload)
{
    if (type == reset::EscalationReport) {
        const reset::Escalation escalation = reset::decodeEscalation(payload);
        states += state("escalation", 0, onOff(escalation.functional));
        states += state("escalation", 1, onOff(escalation.destructive));
        return;
    }
    const reset::Reasons reasons = reset::decodeReasons(payload);
    for (int flag = 0; flag < reset::kReasonCount; ++flag) {
        if (reasons.reasons.testBit(flag))
            states += "reason " + reset::reasonText(flag);
    }
    for (int flag = 0; flag < reset::kSourceFlagCount; ++flag) {
        if (reasons.sources.testBit(flag))
            states += state("reset source", flag, {});
    }
}

void addEngine(States &states, quint8 type, const QByteArray &payload)
{
    if (type == cse::StatusReport) {
        states += "engine " + cse::errorText(cse::decodeStatus(payload));
        return;
    }
    const cse::Result result = cse::decodeResult(payload);
    states += state("operation", result.operation, {});
    if (result.operation == cse::VerifyCmac)
        states += "verified " + onOff(result.passed);
}

void addFrame(States &states, ModuleId module, quint8 type, const QByteArray &payload)
{
    switch (module) {
    case ModuleId::Text:
        states += "text";
        return;
    case ModuleId::Sys:
        if (type == sys::OperatingModeReport)
            states += "mode " + sys::modeName(sys::decodeOperatingMode(payload));
        else
            states += state("system", type, {});
        return;
    case ModuleId::Cmu:
        return addCmu(states, type, payload);
    case ModuleId::Xbic:
        for (int i = 0; type == xbic::EnableReport && i < xbic::kCheckerCount; ++i)
            states += state("checker", i, onOff(xbic::decodeEnables(payload) >> i & 1));
        if (type == xbic::FaultRecordReport) {
            for (const xbic::Fault &fault : xbic::decodeFaults(payload))
                states += state("crossbar record", fault.index, {});
        }
        return;
    case ModuleId::Smpu:
        return addSmpu(states, type, payload);
    case ModuleId::RegProt: {
        const regp::Status status = regp::decodeStatus(payload);
        states += QStringLiteral("soft %1 hard %2").arg(onOff(status.softLocked), onOff(status.hardLocked));
        return;
    }
    case ModuleId::Crc:
        states += state("checksum", int(crc::decodeResult(payload).size), {});
        return;
    case ModuleId::Memu:
        for (const memu::Fault &fault : memu::decodeFaults(payload))
            states += "memory record " + memu::typeText(fault.type);
        return;
    case ModuleId::Intcm:
        return addIntcm(states, type, payload);
    case ModuleId::Bist:
        addFlags(states, "logic", bist::decodeResults(payload).lbistSet2, bist::kLbistCount);
        addFlags(states, "memory", bist::decodeResults(payload).mbistSet2, bist::kMbistShown);
        return;
    case ModuleId::Pmc:
        return addPmc(states, type, payload);
    case ModuleId::Swt: {
        const swt::Status status = swt::decodeStatus(payload);
        states += state("watchdog", status.selector, onOff(status.on));
        states += state("service", status.selector, QString::number(status.mode));
        return;
    }
    case ModuleId::Fccu:
        states += type == fccu::StateReport ? state("fccu", fccu::decodeState(payload), {})
                                            : state("fault", fccu::decodeFault(payload).id, {});
        return;
    case ModuleId::Reset:
        return addReset(states, type, payload);
    case ModuleId::Vg5k:
        return addPowerChip(states, vg5k::decodeReport(payload));
    case ModuleId::Cse:
        return addEngine(states, type, payload);
    case ModuleId::Spt:
        if (type == spt::FrameCountReport)
            states += spt::decodeFrameCount(payload) == 0 ? "no radar frames" : "radar frames";
        for (const spt::Fault &fault : spt::decodeFaultRecord(payload).faults)
            states += type == spt::FaultRecordReport ? state("radar record", int(fault.code), {}) : QString();
        return;
    }
}

QStringList listed(const char *words)
{
    return QString::fromLatin1(words).split('|');
}

template <class Numbers, class Value>
void require(States &states, const char *what, const Numbers &numbers, Value value)
{
    for (const int number : numbers)
        states += state(what, number, value(number));
}

QList<int> upTo(int count)
{
    QList<int> numbers;
    for (int i = 0; i < count; ++i)
        numbers += i;
    return numbers;
}

States allStates()
{
    const QStringList single =
        listed("text|system 4 |system 5 |clock text|crystal lost on|crystal lost off|spi lost on|spi lost off|"
               "debug on|debug off|verified on|verified off|no radar frames|radar frames|held|counter 0 |counter 255 |"
               "access 1 write|access 2 read|access 0 write|clock 0 too low|clock 0 too high|clock 3 too high|"
               "soft off hard off|soft on hard off|soft off hard on|soft on hard on|radar record 1 |radar record 2 ");
    States all(single.begin(), single.end());
    const auto none = [](int) { return QString(); };
    for (const bool on : {false, true}) {
        const auto value = [on](int) { return onOff(on); };
        require(all, "clock", upTo(cmu::kMonitorCount), value);
        require(all, "generator", upTo(5), value);
        require(all, "checker", upTo(xbic::kCheckerCount), value);
        require(all, "unit", upTo(2), value);
        require(all, "valid", kRegions, value);
        require(all, "inhibit", kRegions, value);
        require(all, "channel", upTo(intcm::kMonitorCount), value);
        require(all, "logic", upTo(bist::kLbistCount), value);
        require(all, "memory", upTo(bist::kMbistShown), value);
        require(all, "detector", kDetectorBits, value);
        require(all, "self-test", kSelfTests, value);
        require(all, "regulator", upTo(8), value);
        require(all, "watchdog", upTo(swt::kWatchdogCount), value);
        require(all, "escalation", upTo(2), value);
    }
    for (int i = 0; i <= 12; ++i) // one beyond the table
        all += "mode " + sys::modeName(quint8(i));
    for (int i = 0; i < 8; ++i)
        all += "source " + cmu::clockSourceName(quint8(i));
    for (int i = 0; i < 4; ++i) {
        all += "voltage record " + pmc::faultText(quint8(i));
        require(all, "service", upTo(swt::kWatchdogCount), [i](int) { return QString::number(i); });
        require(all, "core mode", upTo(intcm::kCoreCount), [i](int) { return intcm::modeName(quint8(i)); });
        for (int core = 0; core < smpu::kCoreCount; ++core)
            for (const int region : kRegions)
                all += state("rights", 16 * core + region, smpu::rightsText(quint8(i)));
    }
    for (int i = 0; i < intcm::kCoreCount; ++i)
        all += "late " + intcm::coreName(quint8(i));
    for (int i = 0; i <= 6; ++i) // one beyond the table
        all += "memory record " + memu::typeText(quint8(i));
    for (int i = 0; i <= 22; ++i) // one beyond the table
        all += "engine " + cse::errorText(quint8(i));
    for (int i = 0; i < reset::kReasonCount; ++i)
        all += "reason " + reset::reasonText(i);
    require(all, "reset source", upTo(reset::kSourceFlagCount), none);
    require(all, "fault", upTo(256), none);
    require(all, "fccu", upTo(4), none);
    require(all, "clock record", upTo(4), none); // one beyond the table
    require(all, "crossbar record", upTo(xbic::kCheckerCount), none);
    require(all, "fail-safe", upTo(6), none); // one beyond the table
    require(all, "operation", upTo(8), none);
    require(all, "checksum", std::array{9, 64, 1024}, none);
    return all;
}

// Command lines, "%1" counted from `first` to `last`.
QStringList lines(const char *pattern, int first, int last)
{
    QStringList result;
    for (int i = first; i <= last; ++i)
        result += QString::fromLatin1(pattern).arg(i);
    return result;
}

QStringList allCommands()
{
    QStringList commands =
        listed("get 1|get 3|get 4|inject 5 1|get 4|cmu 17|inject 5 2|get 4|cmu 17|inject 5 4|get 4|cmu 17|inject 5 5|"
               "get 4|cmu 17|inject 5 3|cmu 17|sick clock xosc|cmu 17|sick clock sdpll|sick clock pll0|"
               "sick clock pll1|sick clock irc|sick frame 2 0 41|sick frame 2 2 0133|sick frame 7 2 010600000000|"
               "cmu 15|resetEsca 1 1|resetEsca 1 1|resetEsca 2 1|pmc 4 10|pmc 5|pmc 1|inject 4 1|inject 4 2|"
               "inject 4 3|inject 4 4|get 10|sick regulator all|sick debug|sick count 255|sick none|smpu 2|smpu 1|"
               "inject 9 1 0|inject 9 2 0|inject 9 3 0 0|inject 9 4 0 0|inject 9 5 0 0|inject 9 6 0 0|sick lock 0 1|"
               "sick lock 1 1|sick lock 1 0|sick lock 0 0|get 2|swt 4 4|swt 5|get 7|inject 10 1|inject 10 2");
    commands += lines("cmu 14 %1", 0, 12) + lines("sick source %1", 0, 7) + lines("xbic 2 %1", 0, 4)
        + lines("xbic 1 %1", 0, 4) + lines("inject 7 %1", 1, 5) + lines("inject 6 %1", 1, 6)
        + lines("inject 8 %1", 1, 3) + lines("sick mode %1", 0, 12) + lines("sick fault %1", 0, 255)
        + lines("sick fccu %1", 0, 3) + lines("sick failsafe %1", 0, 5) + lines("crc 1 0 %1", 0, 2);
    for (int i = 0; i < 4; ++i) {
        commands += lines(
            qPrintable(QStringLiteral("sick service %2 %1").replace("%1", QString::number(i)).replace("%2", "%1")), 1,
            3);
        for (const int region : kRegions)
            commands +=
                lines(qPrintable(QStringLiteral("sick rights %1 ").arg(region) + "%1 " + QString::number(i)), 0, 2)
                + lines(qPrintable(QStringLiteral("sick cache %1 ").arg(region) + "%1"), 0, 1);
    }
    for (int core = 0; core < 3; ++core) {
        for (const char *mode : {"IACK", "EOI", "SW"})
            commands += lines(qPrintable(QStringLiteral("intcm %1 %2 ").arg(mode).arg(core) + "%1 20000 301"), 0, 2);
        commands += lines(qPrintable(QStringLiteral("intcm 4 %1 ").arg(core) + "%1"), 0, 2);
    }
    return commands;
}

QStringList engineCommands()
{
    QStringList commands =
        listed("cse 1|cse 6 2|cse 6 1|cse 7 %1|cse 2 1 %1|cse 2 2 %1|cse 3 1 %1|cse 3 2 %1|cse 4 00|cse 5 00 %1|"
               "cse 5 bb1d6929e95937287fa37d129b756746")
            .replaceInStrings("%1", QString(32, '0'));
    for (int error = 1; error <= 22; ++error)
        commands += {QStringLiteral("sick cse %1").arg(error), "cse 1"};
    return commands;
}

} // namespace

class TestStates : public QObject
{
    Q_OBJECT

private:
    Board m_board;
    States m_seen;

    void run(const QStringList &commands, int waitMs = 0)
    {
        for (const QString &command : commands) {
            m_board.execute(command);
            if (waitMs > 0)
                QTest::qWait(waitMs);
        }
    }

private slots:
    void initTestCase()
    {
        connect(&m_board, &Board::output, this, [this](const QByteArray &frame) {
            addFrame(m_seen, ModuleId(frame[4]), quint8(frame[5]), frame.mid(8, frame.size() - 12));
        });
        connect(&m_board, &Board::heldInReset, this, [this] { m_seen += "held"; });
    }

    void everyStateCanBeReached()
    {
        run({"resetEsca 1 3 0", "resetEsca 2 3 0"}); // else the many resets escalate
        run(allCommands());
        QTest::qWait(2000);
        run({"pmc 4 10", "pmc 1"}, 1000);
        run(engineCommands(), 50);
        for (int i = 0; i < reset::kReasonCount; ++i) {
            run({QStringLiteral("sick lbist %1").arg(i % 8 + 1), QStringLiteral("sick reset %1").arg(i)}, 300);
            run({"resetEsca 1 3 0", "resetEsca 2 3 0"});
        }
        run(lines("sick mbist %1", 1, 92) + QStringList("sick reset 9"), 20);
        QTest::qWait(2000);
        run({"resetEsca 1 3 0"});
        run(lines("sick reset 4 %1", 0, reset::kSourceFlagCount - 1), 300);
        run({"sick hold"});

        QStringList missing = (allStates() - m_seen).values();
        missing.sort();
        QVERIFY2(missing.isEmpty(), qPrintable(missing.join('\n')));
    }
};

QTEST_GUILESS_MAIN(TestStates)
#include "tst_states.moc"
