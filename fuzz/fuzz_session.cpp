// SPDX-License-Identifier: MIT
// A recording of any bytes: read to its end or its damage, the same when cut, written again and read again. Bytes 0 and 1:
// where it is cut.
#include "fuzz/input.h"
#include "session/notes.h"
#include "session/pcapng.h"

#include <QBuffer>

namespace {

struct Contents {
    QList<session::Packet> packets;
    QStringList ports;
    bool whole = false;
};

Contents read(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    session::Reader reader(buffer);
    Contents contents;
    int held = 0;
    for (session::PacketView packet; reader.next(packet);) {
        contents.packets.append(packet.copied());
        held += contents.packets.last().bytes.size();
    }
    contents.ports = reader.ports();
    contents.whole = reader.trouble().isEmpty();
    require(held <= bytes.size(), "no bytes that are not in the file");
    return contents;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput input(data, size);
    const int cut = input.byte() << 8 | input.byte();
    const QByteArray bytes = input.bytes();
    const Contents all = read(bytes);
    const Contents some = read(bytes.left(cut));
    require(some.packets == all.packets.mid(0, some.packets.size()), "a cut takes nothing but the end");

    QByteArray again = session::encodeStart(QStringLiteral("fuzz"), all.ports);
    for (const session::Packet &packet : all.packets) {
        require(packet.port < static_cast<quint32>(all.ports.size()), "a port of the recording");
        session::appendPacket(again, packet);
        for (const QString &comment : packet.comments)
            session::noteOf(comment);
    }
    const Contents copy = read(again);
    require(copy.whole && copy.ports == all.ports, "what is written is whole");
    require(copy.packets.size() == all.packets.size(), "nothing is lost");
    for (int i = 0; i < copy.packets.size(); ++i) {
        require(copy.packets[i].bytes == all.packets[i].bytes && copy.packets[i].time == all.packets[i].time
                    && copy.packets[i].direction == all.packets[i].direction,
                "the same packet");
    }
    return 0;
}
