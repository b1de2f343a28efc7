// SPDX-License-Identifier: MIT
// The 128 fault sources of the fault collection unit.
#pragma once

#include <QString>

namespace protocol::fccu {

inline constexpr int kSourceCount = 128;

struct FaultText {
    QString source;
    QString description;

    bool operator==(const FaultText &) const = default;
};

/// Module that a fault comes from and what it means; `id` from 0 to 127.
QString fccuFaultSource(int id);
QString fccuFaultDescription(int id);

/// Both for an identifier that passes the range check of the fault reports: 0 to 128.
FaultText faultText(quint8 id);

} // namespace protocol::fccu
