// SPDX-License-Identifier: MIT
#include "console/textframes.h"

#include "protocol/frame.h"
#include "protocol/payload.h"

using namespace protocol;

namespace {

// Passed over of a frame that is no text: its sync pair, tag and module identifier.
constexpr int kSkipped = 5;

} // namespace

QStringList TextFrames::take(const QByteArray &read)
{
    const QByteArray data = m_carry + read;
    m_carry.clear();
    if (data.size() < kSmallestParsed) {
        m_carry = data;
        return {};
    }
    QStringList texts;
    const PayloadReader bytes(data);
    for (int at = data.indexOf(kSync0); at >= 0; at = data.indexOf(kSync0, at)) {
        if (at + 1 < data.size() && data[at + 1] != kSync1) {
            ++at;
            continue;
        }
        if (at + kHeaderSize > data.size()) {
            m_carry = data.mid(at);
            break;
        }
        if (bytes.u8(at + 4) != static_cast<quint8>(ModuleId::Text)) {
            at += kSkipped;
            continue;
        }
        const int length = bytes.u16be(at + 6);
        if (at + length + kFrameOverhead > data.size()) {
            m_carry = data.mid(at);
            break;
        }
        if (data[at + length + 10] == kEnd0 && data[at + length + 11] == kEnd1) {
            texts.append(QString::fromLatin1(data.constData() + at + kHeaderSize, length));
            at += length + kFrameOverhead;
        } else {
            ++at;
        }
    }
    return texts;
}
