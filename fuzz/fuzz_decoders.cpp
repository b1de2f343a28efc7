// SPDX-License-Identifier: MIT
// Every payload decoder and the text made of its result. Byte 0: which decoder.
#include "fuzz/input.h"
#include "protocol/bist.h"
#include "protocol/cmu.h"
#include "protocol/crc.h"
#include "protocol/cse.h"
#include "protocol/fccu.h"
#include "protocol/frame.h"
#include "protocol/intcm.h"
#include "protocol/memu.h"
#include "protocol/payload.h"
#include "protocol/pmc.h"
#include "protocol/regp.h"
#include "protocol/reset.h"
#include "protocol/smpu.h"
#include "protocol/spt.h"
#include "protocol/swt.h"
#include "protocol/sys.h"
#include "protocol/vg5k.h"
#include "protocol/xbic.h"

#include <iterator>

namespace {

using namespace protocol;
using Decoder = void (*)(const QByteArray &payload);

// No list is longer than its count byte and the payload allow.
constexpr std::size_t kMostCounted = 255;
// Paragraphs of a record are short, whatever their numbers are.
constexpr int kLongestLine = 256;

void requireLines(const QStringList &lines)
{
    for (const QString &line : lines)
        require(line.size() < kLongestLine, "short lines");
}

template <class Records>
void requireRecords(const Records &records, const QByteArray &payload, const QStringList &lines)
{
    require(records.size() <= kMostCounted || records.size() <= static_cast<std::size_t>(payload.size()),
            "length of a list");
    requireLines(lines);
}

const Decoder decoders[] = {
    [](const QByteArray &p) {
        const bist::Results results = bist::decodeResults(p);
        require(results.lbistSet2.size() == bist::kLbistCount && results.mbistSet2.size() == bist::kMbistCount,
                "flags");
    },
    [](const QByteArray &p) { require(cmu::decodeMonitor(p).id < 16, "a nibble"); },
    [](const QByteArray &p) { require(!cmu::clockSourceName(cmu::decodeClock(p).source).isEmpty(), "a name"); },
    [](const QByteArray &p) {
        const cmu::FaultRecord record = cmu::decodeFaultRecord(p, static_cast<quint32>(p.size()));
        require(record.entries.size() + 1 == static_cast<std::size_t>(std::max<int>(p.size(), 1)), "an entry a byte");
        requireLines(cmu::describe(record));
        cmu::decodeFaultRecord(p, PayloadReader(p).u32be(0)); // an announced length that lies
    },
    [](const QByteArray &p) {
        const crc::Result result = crc::decodeResult(p);
        require(result.data.size() <= kMaxPayloadSize, "no more than a frame carries");
        require(crc::dataText(result).size() >= result.data.size() * 9, "nine characters a byte");
        require(crc::valueText(result.value, PayloadReader(p).u8(0)).startsWith(QLatin1String("0x")), "hexadecimal");
    },
    [](const QByteArray &p) { require(!cse::errorText(cse::decodeStatus(p)).isEmpty(), "a text"); },
    [](const QByteArray &p) { require(cse::decodeResult(p).bytes.size() <= p.size(), "a part of the payload"); },
    [](const QByteArray &p) { fccu::decodeState(p); },
    [](const QByteArray &p) {
        const fccu::FaultEvent event = fccu::decodeFault(p);
        if (event.id <= fccu::kLastListed)
            fccu::faultText(event.id);
    },
    [](const QByteArray &p) {
        const auto channels = intcm::decodeChannels(p);
        requireRecords(channels, p, intcm::describe(channels));
        for (const intcm::Channel &channel : channels)
            require(!intcm::modeName(channel.mode).isEmpty() && !intcm::coreName(channel.core).isEmpty(), "names");
    },
    [](const QByteArray &p) {
        const auto faults = memu::decodeFaults(p);
        requireRecords(faults, p, memu::describe(faults));
    },
    [](const QByteArray &p) { pmc::decodeDetectors(p); },
    [](const QByteArray &p) { pmc::decodeSelfTest(p); },
    [](const QByteArray &p) {
        const pmc::FaultRecord record = pmc::decodeFaultRecord(p);
        require(record.faults.size() == record.count, "a code an entry");
        requireLines(pmc::describe(record));
        pmc::faultText(record.shown.value_or(0));
    },
    [](const QByteArray &p) { regp::decodeStatus(p); },
    [](const QByteArray &p) {
        const reset::Reasons reasons = reset::decodeReasons(p);
        require(reasons.reasons.size() == reset::kReasonCount && reasons.sources.size() == reset::kSourceFlagCount,
                "flags");
        for (int flag = 0; flag < reset::kReasonCount; ++flag)
            require(!reasons.reasons.testBit(flag) || !reset::reasonText(flag).isEmpty(), "a text a reason");
        for (int flag = 0; flag < reset::kSourceFlagCount; ++flag)
            require(!fccu::fccuFaultSource(reset::faultOfFlag(flag)).isNull(), "a text a source");
        reasons.isDestructive();
    },
    [](const QByteArray &p) { reset::decodeEscalation(p); },
    [](const QByteArray &p) {
        for (const quint8 rights : smpu::decodeRegion(p).rights)
            require(!smpu::rightsText(rights).isEmpty(), "a text");
    },
    [](const QByteArray &p) {
        const auto faults = smpu::decodeFaults(p);
        requireRecords(faults, p, smpu::describe(faults));
    },
    [](const QByteArray &p) { spt::decodeFrameCount(p); },
    [](const QByteArray &p) {
        const spt::FaultRecord record = spt::decodeFaultRecord(p);
        require(record.faults.size() <= static_cast<std::size_t>(p.size()) / 4, "four bytes a code");
        requireLines(spt::describe(record));
    },
    [](const QByteArray &p) { require(!swt::modeName(swt::decodeStatus(p).mode).isEmpty(), "a name"); },
    [](const QByteArray &p) { require(!sys::modeName(sys::decodeOperatingMode(p)).isEmpty(), "a name"); },
    [](const QByteArray &p) { sys::versionText(sys::decodeFirmwareVersion(p)); },
    [](const QByteArray &p) { sys::decodeRestartNotice(p); },
    [](const QByteArray &p) {
        const vg5k::Report report = vg5k::decodeReport(p);
        require(report.hasValue == (p.size() > 1), "a value where there is one");
    },
    [](const QByteArray &p) { require(xbic::decodeEnables(p) <= xbic::kCheckerMask || !p.isEmpty(), "enables"); },
    [](const QByteArray &p) {
        const auto faults = xbic::decodeFaults(p);
        requireRecords(faults, p, xbic::describe(faults));
    },
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    // The fuzzer's own bytes: a read beyond them is seen, no terminating NUL hides it.
    const QByteArray payload =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data + 1), static_cast<int>(size - 1));
    decoders[data[0] % std::size(decoders)](payload);
    return 0;
}
