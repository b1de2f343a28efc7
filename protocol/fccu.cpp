// SPDX-License-Identifier: MIT
#include "protocol/fccu.h"

#include <array>

namespace protocol::fccu {

quint8 decodeState(const QByteArray &payload)
{
    return decode<UnitState>(payload).state;
}

FaultEvent decodeFault(const QByteArray &payload)
{
    return decode<FaultEvent>(payload);
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

QString FaultEvent::source() const
{
    return sourceOf(id);
}

QString FaultEvent::description() const
{
    return descriptionOf(id);
}

QString sourceOf(quint8 id)
{
    return recordedText(id).source;
}

QString descriptionOf(quint8 id)
{
    return recordedText(id).description;
}

QString stateName(quint8 state)
{
    constexpr std::array names = {"CONFIG", "NORMAL", "ALARM", "FAULT"};
    return state < names.size() ? QString::fromLatin1(names[state]) : QString();
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
