// SPDX-License-Identifier: MIT
#include "session/pcapng.h"

#include "session/clock.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <utility>

namespace session {

namespace {

constexpr quint32 kSectionHeader = 0x0A0D0D0A;
constexpr quint32 kByteOrder = 0x1A2B3C4D;
constexpr quint32 kByteOrderSwapped = 0x4D3C2B1A;
constexpr quint32 kInterface = 1;
constexpr quint32 kPacket = 6;

constexpr quint16 kEndOfOptions = 0;
constexpr quint16 kComment = 1;
constexpr quint16 kSectionProgram = 4;
constexpr quint16 kInterfaceName = 2;
constexpr quint16 kInterfaceSpeed = 8;
constexpr quint16 kInterfaceResolution = 9;
constexpr quint16 kInterfaceOffset = 14;
constexpr quint16 kPacketFlags = 2;

constexpr quint16 kUpperPduExport = 252;
constexpr quint8 kNanoseconds = 9;
constexpr std::size_t kSmallestBlock = 12;
constexpr std::size_t kLargestOption = 65535;
constexpr std::size_t kLargestBlock = std::size_t{16} * 1024 * 1024;
constexpr std::size_t kReadAtOnce = std::size_t{256} * 1024;
constexpr int kMostPorts = 256;
constexpr int kMostComments = 1000;

// The interface, both halves of the time, the captured and the original length.
constexpr std::size_t kPacketHeader = 20;

// Tags of the exported PDU.
constexpr quint16 kTagDissector = 12;
constexpr quint16 kTagDirection = 35;
constexpr char kDissector[] = "safetyworkbench"; // with its NUL a multiple of four
static_assert(sizeof kDissector % 4 == 0);

constexpr std::size_t padded(std::size_t length)
{
    return (length + 3) & ~std::size_t(3);
}

template <class Number> void put(QByteArray &to, Number number)
{
    to.append(reinterpret_cast<const char *>(&number), sizeof number);
}

void putPadded(QByteArray &to, std::string_view bytes)
{
    to.append(bytes.data(), static_cast<int>(bytes.size()));
    to.append(static_cast<int>(padded(bytes.size()) - bytes.size()), '\0');
}

void putOption(QByteArray &to, quint16 code, std::string_view value)
{
    put(to, code);
    put(to, static_cast<quint16>(value.size()));
    putPadded(to, value);
}

template <class Number> void putNumberOption(QByteArray &to, quint16 code, Number number)
{
    putOption(to, code, std::string_view(reinterpret_cast<const char *>(&number), sizeof number));
}

// Cut before a character's first byte, never within one.
std::string_view cutText(const QByteArray &utf8)
{
    std::size_t length = std::min<std::size_t>(static_cast<std::size_t>(utf8.size()), kLargestOption);
    while (length < static_cast<std::size_t>(utf8.size()) && (utf8.at(static_cast<int>(length)) & 0xC0) == 0x80)
        --length;
    return {utf8.constData(), length};
}

void putText(QByteArray &to, quint16 code, const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    putOption(to, code, cutText(utf8));
}

// Appends a block whose content `write` appends.
template <class Write> void putBlock(QByteArray &to, quint32 type, Write write)
{
    const auto start = to.size();
    put(to, type);
    put(to, quint32(0));
    write();
    const auto length = static_cast<quint32>(to.size() - start) + 4;
    put(to, length);
    std::memcpy(to.data() + start + 4, &length, sizeof length);
}

void putInterface(QByteArray &to, const QString &port)
{
    putBlock(to, kInterface, [&] {
        put(to, kUpperPduExport);
        put(to, quint16(0));
        put(to, quint32(0)); // no limit to a packet's length
        putText(to, kInterfaceName, port);
        putNumberOption(to, kInterfaceSpeed, kLineSpeed);
        putNumberOption(to, kInterfaceResolution, kNanoseconds);
        put(to, quint32(kEndOfOptions));
    });
}

void putTag(QByteArray &to, quint16 tag, std::string_view value)
{
    put(to, qToBigEndian(tag));
    put(to, qToBigEndian(static_cast<quint16>(value.size())));
    to.append(value.data(), static_cast<int>(value.size()));
}

QByteArray tagsOf(Direction direction)
{
    QByteArray tags;
    putTag(tags, kTagDissector, std::string_view(kDissector, sizeof kDissector));
    if (direction != Direction::None) {
        const quint32 number = qToBigEndian(static_cast<quint32>(direction));
        putTag(tags, kTagDirection, std::string_view(reinterpret_cast<const char *>(&number), sizeof number));
    }
    putTag(tags, 0, {});
    return tags;
}

const QByteArray &tags(Direction direction)
{
    static const QByteArray known[] = {tagsOf(Direction::Sent), tagsOf(Direction::Received), tagsOf(Direction::None)};
    return known[static_cast<int>(direction)];
}

// In a packet's flags 1 means inbound, 2 outbound, 0 unknown.
constexpr quint32 flagsOf(Direction direction)
{
    return direction == Direction::Received ? 1 : direction == Direction::Sent ? 2 : 0;
}

constexpr Direction directionOf(quint32 flags)
{
    return (flags & 3) == 1 ? Direction::Received : (flags & 3) == 2 ? Direction::Sent : Direction::None;
}

quint16 u16be(std::string_view bytes, std::size_t at)
{
    return qFromBigEndian<quint16>(bytes.data() + at);
}

struct Exported {
    std::string_view bytes;
    Direction direction = Direction::None;
    bool ours = false;
};

// The tags before a packet's bytes; not ours where they are cut or name another dissector.
Exported withoutTags(std::string_view packet)
{
    Exported found;
    bool named = false;
    while (packet.size() >= 4) {
        const quint16 tag = u16be(packet, 0);
        const std::size_t length = u16be(packet, 2);
        packet.remove_prefix(4);
        if (length > packet.size())
            break;
        if (tag == 0) {
            found.bytes = packet.substr(length);
            found.ours = named;
            break;
        }
        if (tag == kTagDissector)
            named = packet.substr(0, length).substr(0, sizeof kDissector - 1) == kDissector;
        else if (tag == kTagDirection && length == 4)
            found.direction = packet[3] == 0 ? Direction::Sent : Direction::Received;
        packet.remove_prefix(length);
    }
    return found;
}

// Units of a file's time stamps per second; 0 where they cannot be counted in 64 bits.
quint64 unitsPerSecond(quint8 resolution)
{
    const unsigned power = resolution & 0x7Fu;
    if (resolution & 0x80u)
        return power < 64 ? quint64(1) << power : 0;
    quint64 units = power < 20 ? 1 : 0;
    for (unsigned i = 0; i < power && units > 0; ++i)
        units *= 10;
    return units;
}

qint64 nanoseconds(quint64 stamp, quint8 resolution, qint64 offset)
{
    const quint64 units = unitsPerSecond(resolution);
    if (units == 0)
        return 0;
    const quint64 seconds = stamp / units + static_cast<quint64>(offset);
    const auto rest =
        static_cast<quint64>(static_cast<long double>(stamp % units) * kPerSecond / static_cast<long double>(units));
    return static_cast<qint64>(seconds * kPerSecond + rest);
}

} // namespace

Packet PacketView::copied() const
{
    Packet packet{time, direction, QByteArray(bytes.data(), static_cast<int>(bytes.size())), {}, port};
    for (const std::string_view comment : comments)
        packet.comments.append(QString::fromUtf8(comment.data(), static_cast<int>(comment.size())));
    return packet;
}

QByteArray encodeStart(const QString &program, const QStringList &ports, const QStringList &comments)
{
    QByteArray start;
    putBlock(start, kSectionHeader, [&] {
        put(start, kByteOrder);
        put(start, quint16(1)); // version 1.0
        put(start, quint16(0));
        put(start, qint64(-1)); // of unknown length
        for (const QString &comment : comments)
            putText(start, kComment, comment);
        putText(start, kSectionProgram, program);
        put(start, quint32(kEndOfOptions));
    });
    for (const QString &port : ports)
        putInterface(start, port);
    return start;
}

void appendPacket(QByteArray &to, const Packet &packet)
{
    putBlock(to, kPacket, [&] {
        const QByteArray &header = tags(packet.direction);
        const auto length = static_cast<quint32>(header.size() + packet.bytes.size());
        const auto time = static_cast<quint64>(packet.time);
        for (const quint32 number :
             {packet.port, static_cast<quint32>(time >> 32), static_cast<quint32>(time), length, length})
            put(to, number);
        to.append(header);
        putPadded(to, std::string_view(packet.bytes.constData(), static_cast<std::size_t>(packet.bytes.size())));
        putNumberOption(to, kPacketFlags, flagsOf(packet.direction));
        for (const QString &comment : packet.comments)
            putText(to, kComment, comment);
        put(to, quint32(kEndOfOptions));
    });
}

quint16 Reader::u16(std::string_view bytes, std::size_t at) const
{
    quint16 number;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    return m_swapped ? qbswap(number) : number;
}

quint32 Reader::u32(std::string_view bytes, std::size_t at) const
{
    quint32 number;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    return m_swapped ? qbswap(number) : number;
}

// Calls take(code, value) for each whole option.
template <class Take> void Reader::forEachOption(std::string_view options, Take take) const
{
    while (options.size() >= 4) {
        const quint16 code = u16(options, 0);
        const std::size_t length = u16(options, 2);
        options.remove_prefix(4);
        if (code == kEndOfOptions || length > options.size())
            return;
        take(code, options.substr(0, length));
        options.remove_prefix(std::min(padded(length), options.size()));
    }
}

std::nullopt_t Reader::stop(const char *what)
{
    m_trouble = QStringLiteral("%1 at byte %2").arg(QLatin1String(what)).arg(m_position);
    return std::nullopt;
}

// Reads until `wanted` bytes are there or no more come; returns how many are there.
std::size_t Reader::fill(std::size_t wanted)
{
    if (m_to - m_from >= wanted)
        return m_to - m_from;
    std::copy(m_buffer.begin() + static_cast<std::ptrdiff_t>(m_from),
              m_buffer.begin() + static_cast<std::ptrdiff_t>(m_to), m_buffer.begin());
    m_to -= std::exchange(m_from, 0);
    m_buffer.resize(std::max({m_buffer.size(), wanted, kReadAtOnce}));
    while (m_to < wanted) {
        const qint64 count = m_device.read(m_buffer.data() + m_to, static_cast<qint64>(m_buffer.size() - m_to));
        if (count <= 0)
            break;
        m_to += static_cast<std::size_t>(count);
    }
    return m_to;
}

// A section header tells the byte order of all that follows, its own length included.
bool Reader::beginSection(std::string_view header)
{
    quint32 order;
    std::memcpy(&order, header.data() + 8, sizeof order);
    if (order != kByteOrder && order != kByteOrderSwapped)
        return false;
    m_swapped = order == kByteOrderSwapped;
    m_inSection = true;
    m_interfaces.clear();
    return true;
}

// `header`: type, length, and of a section header the byte order.
bool Reader::beginBlock(std::string_view header)
{
    const bool isSection = u32(header, 0) == kSectionHeader;
    return isSection ? beginSection(header) : m_inSection;
}

// The next block's type; `body` is the part between its two lengths.
std::optional<quint32> Reader::nextBlock(std::string_view &body)
{
    const std::size_t there = fill(kSmallestBlock);
    if (there == 0 && m_inSection)
        return std::nullopt;
    if (there < kSmallestBlock)
        return stop(m_inSection ? "cut short" : "not a recording: no header");
    if (!beginBlock({m_buffer.data() + m_from, kSmallestBlock}))
        return stop(m_inSection ? "damaged" : "not a recording: no pcapng header");
    const std::size_t length = u32({m_buffer.data() + m_from, 8}, 4);
    if (length < kSmallestBlock || length % 4 != 0 || length > kLargestBlock)
        return stop("damaged");
    if (fill(length) < length)
        return stop("cut short");
    const std::string_view block(m_buffer.data() + m_from, length);
    if (u32(block, length - 4) != length)
        return stop("damaged");
    body = block.substr(8, length - kSmallestBlock);
    m_from += length;
    m_position += static_cast<qint64>(length);
    return u32(block, 0);
}

void Reader::readSection(std::string_view body)
{
    constexpr std::size_t fixed = 16;
    forEachOption(body.substr(std::min(fixed, body.size())), [this](quint16 code, std::string_view value) {
        if (code == kComment && m_comments.size() < kMostComments)
            m_comments.append(QString::fromUtf8(value.data(), static_cast<int>(value.size())));
    });
}

void Reader::readInterface(std::string_view body)
{
    Interface interface;
    QString name;
    if (body.size() >= 8) {
        interface.ours = u16(body, 0) == kUpperPduExport;
        forEachOption(body.substr(8), [&](quint16 code, std::string_view value) {
            if (code == kInterfaceName)
                name = QString::fromUtf8(value.data(), static_cast<int>(value.size()));
            else if (code == kInterfaceResolution && value.size() == 1)
                interface.resolution = static_cast<quint8>(value.front());
            else if (code == kInterfaceOffset && value.size() == 8)
                interface.offset = static_cast<qint64>(u32(value, m_swapped ? 4 : 0))
                    | static_cast<qint64>(quint64(u32(value, m_swapped ? 0 : 4)) << 32);
        });
    }
    // The same port in a joined recording is one port.
    auto port = m_ports.indexOf(name);
    if (interface.ours && port < 0 && m_ports.size() < kMostPorts) {
        port = m_ports.size();
        m_ports.append(name);
    }
    interface.ours = interface.ours && port >= 0;
    interface.port = static_cast<quint32>(std::max<decltype(port)>(port, 0));
    m_interfaces.push_back(interface);
}

bool Reader::readPacket(std::string_view body, PacketView &packet)
{
    if (body.size() < kPacketHeader)
        return false;
    const quint32 index = u32(body, 0);
    const std::size_t length = u32(body, 12);
    if (index >= m_interfaces.size() || length > body.size() - kPacketHeader)
        return false;
    const Interface &interface = m_interfaces[index];
    const Exported exported = withoutTags(body.substr(kPacketHeader, length));
    if (!interface.ours || !exported.ours)
        return false;
    const quint64 stamp = quint64(u32(body, 4)) << 32 | u32(body, 8);
    packet.time = interface.resolution == kNanoseconds && interface.offset == 0
        ? static_cast<qint64>(stamp)
        : nanoseconds(stamp, interface.resolution, interface.offset);
    packet.direction = exported.direction;
    packet.bytes = exported.bytes;
    packet.port = interface.port;
    packet.comments.clear();
    forEachOption(body.substr(kPacketHeader + std::min(padded(length), body.size() - kPacketHeader)),
                  [&](quint16 code, std::string_view value) {
                      if (code == kComment)
                          packet.comments.push_back(value);
                      else if (code == kPacketFlags && value.size() == 4 && packet.direction == Direction::None)
                          packet.direction = directionOf(u32(value, 0));
                  });
    return true;
}

bool Reader::next(PacketView &packet)
{
    std::string_view body;
    while (const auto type = nextBlock(body)) {
        if (*type == kPacket) {
            if (readPacket(body, packet))
                return true;
            ++m_foreign;
        } else if (*type == kInterface) {
            readInterface(body);
        } else if (*type == kSectionHeader) {
            readSection(body);
        }
    }
    return false;
}

} // namespace session
