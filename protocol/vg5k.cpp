// SPDX-License-Identifier: MIT
#include "protocol/vg5k.h"

#include <array>

namespace protocol::vg5k {

namespace {

template <std::size_t N> QString nameIn(const std::array<const char *, N> &names, quint8 code, const char *other = "")
{
    return QString::fromLatin1(code < N ? names[code] : other);
}

} // namespace

Report decodeReport(const QByteArray &payload)
{
    return decode<Report>(payload);
}

QString itemName(quint8 item)
{
    return nameIn<4>({"regulators", "fail-safe state", "debug mode", "fault counter"}, item);
}

QString regulatorName(quint8 bit)
{
    return nameIn<8>({"VLDO1", "VLDO2", "VBuck3", "VBuck2", "VBuck1", "VBoost", "VPRE", "SPI/I2C"}, bit);
}

QString failSafeName(quint8 state)
{
    return nameIn<5>({"INIT_FS", "WAIT_ABIST2", "ABIST2", "ASSERT_FS0B", "NORMAL_FS"}, state, "Unknown");
}

} // namespace protocol::vg5k
