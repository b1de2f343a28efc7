// SPDX-License-Identifier: MIT
#include "protocol/fccu.h"

#include "protocol/payload.h"

namespace protocol::fccu {

quint8 decodeState(const QByteArray &payload)
{
    return PayloadReader(payload).u8(0);
}

FaultEvent decodeFault(const QByteArray &payload)
{
    const PayloadReader read(payload);
    return {read.u8(0), read.f32be(1)};
}

QString titleOf(quint8 id)
{
    return QStringLiteral("Fault ID %1").arg(id);
}

FaultText recordedText(quint8 id)
{
    if (id <= kLastListed)
        return faultText(id);
    if (id == kMultipleSources)
        return {QStringLiteral("Multi source"), QStringLiteral("Multiple error reset")};
    return {QStringLiteral("Invalid Source ID"), QStringLiteral("Invalid")};
}

// Only the fixed texts have a blank behind the second colon, and a carriage return at the end.
QStringList describe(const FaultEvent &event)
{
    if (event.id <= kLastListed) {
        const FaultText text = faultText(event.id);
        return {titleOf(event.id), QStringLiteral(u"Source Module： ") + text.source,
                QStringLiteral(u"Fault Description：") + text.description, QStringLiteral("\n")};
    }
    const bool multiple = event.id == kMultipleSources;
    return {titleOf(event.id),
            multiple ? QStringLiteral(u"Source Module： Multi source")
                     : QStringLiteral(u"Source Module： Invalid source ID"),
            multiple ? QStringLiteral(u"Fault Description： Multiple error reset")
                     : QStringLiteral(u"Fault Description： Invalid"),
            QStringLiteral("\r\n")};
}

} // namespace protocol::fccu
