// SPDX-License-Identifier: MIT
#include "protocol/reset.h"

#include <array>
#include <string_view>

namespace protocol::reset {

namespace {

// By flag. The mixture of quotation marks and the double blanks are the texts' own.
constexpr std::array reasonTexts = std::to_array<std::u16string_view>({
    u"temperature sensor ‘functional’ reset",
    u"software ‘functional’ reset event",
    u"JTAG ’functional’ reset event",
    u"FCCU short ’functional’ reset",
    u"FCCU long ’functional’ reset",
    u"external reset",
    u"temperature sensor 'destructive' reset",
    u"STCU offline selftest and STCU Critical Fault 'destructive' reset",
    u"SSCM Secure reset",
    u"software ‘destructive’ reset",
    u"power-on reset",
    u"PMC LVD voltage 'destructive' reset",
    u"PLL LVD voltage 'destructive' reset",
    u"MIPI LVD voltage 'destructive' reset",
    u"I/O LVD voltage 'destructive' reset",
    u"Flash LVD voltage 'destructive' reset",
    u"core LVD voltage 'destructive' reset",
    u"ADC LVD voltage 'destructive' reset",
    u"core HVD voltage 'destructive' reset",
    u"ADC HVD voltage 'destructive' reset",
    u"FCCU failure to react  'destructive' reset",
    u"‘functional’ reset escalation  'destructive' reset",
    u"AFE LVD voltage 'destructive' reset",
    u"ERROR/UNKNOW",
});
static_assert(reasonTexts.size() == kReasonCount);

QStringList sourcesOf(const Reasons &report)
{
    QStringList lines;
    for (int flag = 0; flag < kSourceFlagCount; ++flag) {
        if (!report.sources.testBit(flag))
            continue;
        const int fault = faultOfFlag(flag);
        lines.append(QStringLiteral("Reset Source: ") + fccu::fccuFaultSource(fault));
        lines.append(QStringLiteral("Fault Description: ") + fccu::fccuFaultDescription(fault)
                     + QStringLiteral("\r\n"));
    }
    return lines;
}

} // namespace

bool Reasons::isDestructive() const
{
    for (int flag = kFirstDestructive; flag < kReasonCount; ++flag) {
        if (reasons.testBit(flag))
            return true;
    }
    return false;
}

Reasons decodeReasons(const QByteArray &payload)
{
    return decode<Reasons>(payload);
}

Escalation decodeEscalation(const QByteArray &payload)
{
    return decode<Escalation>(payload);
}

QString reasonText(int flag)
{
    const std::u16string_view text = reasonTexts.at(static_cast<std::size_t>(flag));
    return QString::fromUtf16(text.data(), static_cast<int>(text.size()));
}

QString reasonName(quint8 flag)
{
    return flag < kReasonCount ? reasonText(flag) : QString();
}

QStringList describe(const Reasons &report)
{
    QStringList lines;
    for (int flag = 0; flag < kReasonCount; ++flag) {
        if (!report.reasons.testBit(flag))
            continue;
        lines.append(reasonText(flag));
        lines.append(QString(56, QLatin1Char('-')));
        if (hasSources(static_cast<Reason>(flag)))
            lines.append(sourcesOf(report));
    }
    return lines;
}

QString escalationCommand(Kind kind, Operation operation)
{
    return QStringLiteral("resetEsca %1 %2").arg(static_cast<int>(kind)).arg(static_cast<int>(operation));
}

QString thresholdCommand(Kind kind, int threshold)
{
    return QStringLiteral("resetEsca %1 3 %2").arg(static_cast<int>(kind)).arg(threshold);
}

} // namespace protocol::reset
