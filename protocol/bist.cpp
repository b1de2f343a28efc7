// SPDX-License-Identifier: MIT
#include "protocol/bist.h"

namespace protocol::bist {

Results decodeResults(const QByteArray &payload)
{
    return decode<Results>(payload);
}

} // namespace protocol::bist
