// SPDX-License-Identifier: MIT
// Power management controller: voltage detectors, their self-tests, and faults on the rails.
#include "protocol/pmc.h"

#include "protocol/payload.h"
#include "simulator/arguments.h"
#include "simulator/board.h"
#include "simulator/unit.h"
#include "simulator/units.h"

namespace simulator {

namespace {

using protocol::ModuleId;
using protocol::PayloadWriter;
namespace pmc = protocol::pmc;

struct Detector {
    pmc::Detector code;
    int bit; // of the status report's second byte
};

// The PLL's detector shares the core's bit: the two are switched together.
constexpr Detector detectors[] = {{pmc::CoreLvd, 0}, {pmc::PllLvd, 0},   {pmc::CoreHvd, 1}, {pmc::AdcLvd, 2},
                                  {pmc::AdcHvd, 3},  {pmc::FlashLvd, 4}, {pmc::IoLvd, 6},   {pmc::PmcLvd, 7}};
constexpr unsigned kAllOn = 0xDF;
constexpr unsigned kTemperatureSensor = 1; // first byte
constexpr int kSelfTestMs = 60;

// Fault identifiers of the fault collection unit, by fault code.
constexpr quint8 faultIds[] = {0, 2, 1, 3};
constexpr quint8 kSelfTestFault = 3;

class PowerManagement : public Unit
{
public:
    explicit PowerManagement(Board &board) : m_board(board)
    {
        board.addCommands({
            {"get 6", "voltage detectors", [this] { sendStatus(); }},
            {"pmc 1", "all detector self-tests", [this] { testAll(); }},
            {"pmc 2", "<detector>", "one detector self-test", [this](const auto &a) { testOne(a[0]); }},
            {"pmc 3", "<detector>", "switch a detector on (10: all)", [this](const auto &a) { turn(a[0], true); }},
            {"pmc 4", "<detector>", "switch a detector off (10: all)", [this](const auto &a) { turn(a[0], false); }},
            {"pmc 5", "detectors to their defaults", [this] { restore(); }},
            {"pmc 6", "voltage fault record", [this] { sendRecord(); }},
            {"pmc 7", "clear voltage faults", [this] { clearFaults(); }},
            {"inject 4 1", "temperature out of range", [this] { detect(0); }},
            {"inject 4 2", "core voltage too high", [this] { detectWith(1, 1); }},
            {"inject 4 3", "core voltage too low", [this] { detectWith(0, 2); }},
            {"inject 4 4", "LVD self-test fails", [this] { failSelfTest(); }},
        });
    }

    QString name() const override { return QStringLiteral("pmc"); }
    void reset(ResetKind kind) override
    {
        m_record.clear();
        if (kind != ResetKind::Functional)
            m_on = kAllOn;
    }
    void announce() override
    {
        sendStatus();
        sendRecord();
    }
    QString status() const override
    {
        return QStringLiteral("detectors 0x%1, %2 faults recorded")
            .arg(m_on, 2, 16, QLatin1Char('0'))
            .arg(m_record.size());
    }

private:
    bool isOn(int bit) const { return m_on >> bit & 1; }

    void sendStatus()
    {
        m_board.send(ModuleId::Pmc, pmc::DetectorReport, PayloadWriter().u8(kTemperatureSensor).u8(m_on).take());
    }

    void restore()
    {
        m_on = kAllOn;
        sendStatus();
    }

    void sendSelfTest(pmc::Detector code, bool passed)
    {
        m_board.send(ModuleId::Pmc, pmc::SelfTestReport, PayloadWriter().u8(code).u8(passed).take());
    }

    // A detector that is off cannot pass.
    void test(const Detector &detector, int afterMs)
    {
        m_board.after(afterMs, [this, detector] { sendSelfTest(detector.code, isOn(detector.bit)); });
    }

    void testAll()
    {
        int when = kSelfTestMs;
        for (const Detector &detector : detectors) {
            test(detector, when);
            when += kSelfTestMs;
        }
    }

    const Detector *find(const QString &text)
    {
        for (const Detector &detector : detectors) {
            if (text == QString::number(detector.code))
                return &detector;
        }
        m_board.say(QStringLiteral("no such detector: %1").arg(text));
        return nullptr;
    }

    void testOne(const QString &text)
    {
        if (const Detector *detector = find(text))
            test(*detector, kSelfTestMs);
    }

    void turn(const QString &text, bool on)
    {
        unsigned bits = kAllOn;
        if (text != QString::number(pmc::AllDetectors)) {
            const Detector *detector = find(text);
            if (!detector)
                return;
            bits = 1U << detector->bit;
        }
        m_on = on ? m_on | bits : m_on & ~bits;
        sendStatus();
    }

    void detect(quint8 code, double elapsedUs = 0)
    {
        m_board.detect(faultIds[code], elapsedUs, [this, code] { record(code); });
    }

    void record(quint8 code)
    {
        if (static_cast<std::size_t>(m_record.size()) < kMaxRecord)
            m_record.append(static_cast<char>(code));
        sendRecord();
    }

    void detectWith(int bit, quint8 code)
    {
        if (isOn(bit))
            detect(code);
        else
            m_board.say(QStringLiteral("the core's detector is off: the fault goes unnoticed"));
    }

    void failSelfTest()
    {
        m_board.after(kSelfTestMs, [this] {
            sendSelfTest(pmc::CoreLvd, false);
            detect(kSelfTestFault, kSelfTestMs * 1000.0);
        });
    }

    void sendRecord()
    {
        m_board.send(ModuleId::Pmc, pmc::FaultRecordReport,
                     PayloadWriter().u8(static_cast<unsigned>(m_record.size())).bytes(m_record).take());
    }

    void clearFaults()
    {
        m_record.clear();
        for (const quint8 id : faultIds)
            m_board.clearFault(id);
        sendStatus();
        sendRecord();
    }

    Board &m_board;
    unsigned m_on = kAllOn;
    QByteArray m_record; // a fault code a byte
};

} // namespace

std::unique_ptr<Unit> makePowerManagement(Board &board)
{
    return std::make_unique<PowerManagement>(board);
}

} // namespace simulator
