// SPDX-License-Identifier: MIT
// Writes a fuzz target's seeds, one file per input: fuzz-seeds TARGET FOLDER. Targets without seeds get an empty folder.
#include "protocol/frame.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <map>

using namespace protocol;

namespace {

using Seeds = std::map<QString, QByteArray>;

// Byte 0 of the targets that cut their input: in one piece, or by these lengths.
constexpr char kWhole = 0;
constexpr char kCut = 7;

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

QByteArray byte(int value)
{
    return QByteArray(1, static_cast<char>(value));
}

// A report of each kind: as boards send it, and with values that none sends.
struct Report {
    const char *name;
    int decoder; // in the table of fuzz_decoders.cpp; -1: none
    ModuleId module;
    int type;
    const char *usual;
    const char *unusual;
};

// clang-format off
const Report reports[] = {
    {"text",                  -1, ModuleId::Text,    0, "6162", "6364"},
    {"mode",                  22, ModuleId::Sys,     1, "04", "0f"},
    {"version",               23, ModuleId::Sys,     4, "4020000007e40c1f", "7fc00000ffffffff"},
    {"notice",                24, ModuleId::Sys,     5, "7ffe", "00fe"},
    {"clock_text",            -1, ModuleId::Cmu,     0, "c3a9", "3c623e"},
    {"clock_monitor",          1, ModuleId::Cmu,     1, "01505a46", "f7ff00ff"},
    {"clock_record",           3, ModuleId::Cmu,     2, "03001182", "ff"},
    {"clocks",                 2, ModuleId::Cmu,     4, "faf42400", "00f42410"},
    {"crossbars",             26, ModuleId::Xbic,    1, "1f", "00"},
    {"crossbar_record",       27, ModuleId::Xbic,    2, "010001023c78563412", "0500"},
    {"region",                17, ModuleId::Smpu,    1, "7fa800004000ffff4000", "700000015000fffe5000"},
    {"region_record",         18, ModuleId::Smpu,    2, "13785634120000000000", "1378"},
    {"register",              14, ModuleId::RegProt, 1, "010001000078563412efbeadde", "00"},
    {"checksum",               4, ModuleId::Crc,     3, "000000093132333435363738390000004b3fc00000", "ffffffff31"},
    {"memory_record",         10, ModuleId::Memu,    2, "0204200001000100000000", "ff04"},
    {"interrupts",             9, ModuleId::Intcm,   1, "02000001012d004e200003e8010100012d0000000003e8", "09"},
    {"interrupt_record",       9, ModuleId::Intcm,   2, "01000001012d004e200003e8", "ff00"},
    {"self_tests",             0, ModuleId::Bist,    1, "00ff80000000000000000000000001ffffffffffffffffffffffff", "00"},
    {"detectors",             11, ModuleId::Pmc,     1, "01df", "00"},
    {"voltage_record",        13, ModuleId::Pmc,     2, "03000102", "ff09"},
    {"detector_self_test",    12, ModuleId::Pmc,     4, "0001", "0a"},
    {"watchdog",              21, ModuleId::Swt,     1, "5800007d000000fa00", "c00000fa0000007d00"},
    {"fault_state",            7, ModuleId::Fccu,    1, "01", "03"},
    {"fault",                  8, ModuleId::Fccu,    2, "1c3f800000", "807f800000"},
    {"fault_multiple",         8, ModuleId::Fccu,    2, "fe40000000", "ff"},
    {"reset_reasons",         15, ModuleId::Reset,   1, "00004000", "00180000ffffffffffffffffffffffffffffffff"},
    {"escalation",            16, ModuleId::Reset,   4, "0f00", "00ff"},
    {"power_chip",            25, ModuleId::Vg5k,    1, "00ff", "0104"},
    {"power_chip_counter",    25, ModuleId::Vg5k,    1, "0312", "8000"},
    {"engine_status",          5, ModuleId::Cse,     1, "00", "05"},
    {"engine_status_unknown",  5, ModuleId::Cse,     1, "16", "ff"},
    {"engine_result",          6, ModuleId::Cse,     4, "0041c80000000200abcd", "0542c80000000001"},
    {"engine_text",            6, ModuleId::Cse,     4, "0241c80000000200c341", "08"},
    {"radar_frames",          19, ModuleId::Spt,     1, "00000100", ""},
    {"radar_record",          20, ModuleId::Spt,     2, "020000000100000002", "010000"},
};
// clang-format on
constexpr int kDecoders = 28;

Seeds decoderSeeds()
{
    Seeds seeds = {{"empty", QByteArray()}, {"checksum_size_lies", byte(4) + hex("00ffffff31")}};
    for (const Report &report : reports) {
        if (report.decoder < 0)
            continue;
        seeds[QString::fromLatin1(report.name)] = byte(report.decoder) + hex(report.usual);
        seeds[report.name + QStringLiteral("_unusual")] = byte(report.decoder) + hex(report.unusual);
    }
    for (int decoder = 0; decoder < kDecoders; ++decoder)
        seeds[QStringLiteral("ones_%1").arg(decoder)] = byte(decoder) + QByteArray(40, '\xFF');
    return seeds;
}

// Steps of fuzz_window.cpp. The gap is an index into its table.
enum Gap { kAtOnce = 0, kTenMs = 2, kBlinking = 3, kAnimation = 4, kLong = 5, kLonger = 6, kRefresh = 7 };
constexpr int kTurnPage = 19;
constexpr int kClose = 20;
constexpr int kOpen = 21;

QByteArray step(Gap gap, int what)
{
    return byte(gap << 5 | what);
}

QByteArray frameStep(Gap gap, ModuleId module, int type, const QByteArray &payload)
{
    return step(gap, static_cast<int>(module)) + byte(type) + byte(payload.size()) + payload;
}

QByteArray frameStep(Gap gap, const Report &report)
{
    return frameStep(gap, report.module, report.type, hex(report.usual));
}

QByteArray allReports(Gap gap)
{
    QByteArray steps;
    for (const Report &report : reports)
        steps += frameStep(gap, report);
    return steps;
}

QByteArray restart(Gap gap)
{
    return frameStep(gap, ModuleId::Sys, 5, hex("7ffe"));
}

Seeds windowSeeds()
{
    Seeds seeds = {
        {"all_in_one_arrival", allReports(kAtOnce)},
        {"closed_during_a_refresh",
         restart(kRefresh) + step(kLong, kClose) + frameStep(kLong, ModuleId::Sys, 1, hex("04")) + step(kLong, kOpen)},
        {"long_text", frameStep(kAtOnce, ModuleId::Text, 0, QByteArray("<b>markup</b>\r\n").repeated(17))},
        {"long_checksum", step(kAtOnce, 6) + hex("03ff00000400") + QByteArray(1032, '\0')},
        {"unknown_modules", hex("11010361626332ff00") + frameStep(kTenMs, ModuleId::Xbic, 99, hex("ff"))},
    };
    for (const Report &report : reports) {
        seeds[QString::fromLatin1(report.name)] = frameStep(kTenMs, report)
            + frameStep(kAtOnce, report.module, report.type, hex(report.unusual)) + frameStep(kLonger, report);
    }
    for (int page = 0; page < 24; ++page)
        seeds["pages_turned"] += step(kAnimation, kTurnPage) + byte(page);
    seeds["pages_turned"] += allReports(kTenMs);
    for (int i = 0; i < 16; ++i) {
        seeds["faults_many"] += frameStep(kAtOnce, ModuleId::Fccu, 2, byte(0x78 + i) + hex("3f800000"));
        seeds["boxes_inside_boxes"] += frameStep(kTenMs, ModuleId::Cmu, 1, byte(i << 4 | 1) + hex("630901"));
        seeds["restarts_inside_restarts"] += restart(kBlinking) + frameStep(kAnimation, ModuleId::Bist, 1, byte(0));
    }
    return seeds;
}

QByteArray frame(const QByteArray &payload = "\x7F", ModuleId module = ModuleId::Cmu)
{
    return encodeFrame(module, 1, payload, 0x1234);
}

// A good frame but for its length, or its trailer.
QByteArray announcing(int length, const QByteArray &payload = "\x7F", ModuleId module = ModuleId::Cmu)
{
    return frame(payload, module).replace(6, 2, byte(length >> 8) + byte(length));
}

QByteArray ending(const char *end)
{
    const QByteArray good = frame();
    return good.left(good.size() - 4) + hex(end);
}

Seeds cutSeeds(const Seeds &streams)
{
    Seeds seeds;
    for (const auto &[name, stream] : streams) {
        seeds[name] = kWhole + stream;
        seeds[name + QStringLiteral("_cut")] = kCut + stream;
    }
    return seeds;
}

Seeds extractionSeeds()
{
    return cutSeeds({
        {"empty", QByteArray()},
        {"one_frame", frame()},
        {"two_frames", frame() + frame(hex("00000100"), ModuleId::Spt)},
        {"twelve_bytes", QByteArray(12, '\0')},
        {"empty_frame_at_the_end", frame("")},
        {"empty_frame_and_a_byte", frame("") + '\0'},
        {"long_payload", frame(QByteArray(1024, 'x'), ModuleId::Crc)},
        {"cut_in_the_header", frame().left(6)},
        {"cut_in_the_payload", frame(QByteArray(20, '\0')).left(15)},
        {"first_end_byte_wrong", ending("0000d5b2") + frame()},
        {"second_end_byte_wrong", ending("0000d4b3") + frame()},
        {"end_is_a_start", ending("0000d4a5") + byte(0xC3) + frame()},
        {"ends_in_the_payload", frame(hex("d4b2d4b20000d4b2")) + frame()},
        {"frame_in_the_payload", frame(frame() + hex("a5c3")) + frame()},
        {"good_behind_incomplete", hex("a5c3000002010100") + frame() + frame()},
        {"length_too_long", announcing(65535) + frame() + frame() + frame()},
        {"length_too_short", announcing(1, hex("7f7f")) + frame()},
        {"noise_between", hex("0102a5") + frame() + hex("d4b2a5c3") + frame()},
        {"sync_doubled", byte(0xA5) + frame()},
        {"sync_tripled", hex("a5a5") + frame()},
        {"sync_in_the_trailer", ending("a5c3d4b2") + frame()},
        {"starts_every_third_byte", hex("a5c300").repeated(34)},
        {"starts_overlapping", hex("a5c3").repeated(40)},
    });
}

QByteArray text(const QByteArray &message)
{
    return frame(message, ModuleId::Text);
}

// Sequences that move, erase and colour, and what looks like one.
const char *const sequences[] = {
    "A",      "3B",      "99999C",   "-5D",         "K",     "J",    "1J", "2J",    "m", "1;36m", "22;39;49m",
    "31;42m", "97;107m", "38;5;31m", "48;2;1;2;3m", "38;5m", "?25h", "6n", "12;4H", "",  ";",
};

Seeds consoleSeeds()
{
    QByteArray all;
    for (const char *sequence : sequences)
        all += text("one\ntwo\nthree") + text(QByteArray("\r\x1B[") + sequence) + text("rest\bX\r\n");
    QByteArray latin1;
    for (int c = 1; c < 256; ++c)
        latin1 += byte(c);
    Seeds seeds = cutSeeds({
        {"plain", text("hello\r\n") + text("> ")},
        {"sequences", all},
        {"empty_texts", text("") + text("")},
        {"latin1", text(latin1)},
        {"other_modules", frame() + text("seen") + frame(hex("00000000"), ModuleId::Spt) + text("seen too")},
        {"text_in_another_module", frame(text("inside"))},
        {"backspace_and_return", text("ab\b \b") + text("10 %\r20") + text("\r") + text("\n")},
        {"overwritten", text("abcdef") + text("\r\x1B[3D") + text("XYZW\b\b\nnew")},
        {"end_wrong", text("abc").replace("\xB2", "") + text("next")},
        {"length_too_long", announcing(65535, "A", ModuleId::Text) + text("at once")},
    });
    for (std::size_t i = 0; i < std::size(sequences); ++i) {
        seeds[QStringLiteral("sequence_%1").arg(i)] = kWhole + text("one\ntwo") + text("\r\x1B[2D")
            + text(QByteArray("\r\x1B[") + sequences[i] + "x") + text("y\nz");
    }
    return seeds;
}

// Byte 0 of fuzz_board.cpp says how its keys are cut and how much time passes between the pieces.
constexpr char commands[] =
    "get 0|get 1|get 2|get 3|get 4|get 5|get 6|get 7|get 8|get 9|get 10|get 11|cmu 3 170 150|cmu 13 4|cmu 14 4|cmu 15|"
    "cmu 16|cmu 17|xbic 1 3|xbic 2 3|xbic 3|xbic 4|xbic 5|smpu 1|smpu 2|smpu 3|smpu 4|smpu 5|pmc 1|pmc 2 7|pmc 3 10|"
    "pmc 4 10|pmc 5|pmc 6|pmc 7|intcm EOI 1 2 20000 301|intcm 1|intcm 2|intcm 3|intcm 4 1 2|swt 1 1 100|swt 2 2 200|"
    "swt 3 4|swt 4 4|swt 5|crc 3 1 1|crc 1 0 2|memu 1|memu 2|memu 3|spt 1|spt 2|regP 1|regP 2 FFFF|regP 3 1|regP 4 1|"
    "regP 5 1234|resetEsca 1 1|resetEsca 1 2|resetEsca 1 3 5|resetEsca 2 3 0|status|help|";
constexpr char injections[] =
    "inject 3 1|inject 3 2|inject 4 1|inject 4 2|inject 4 3|inject 4 4|inject 5 1|inject 5 2|inject 5 3|inject 5 4|"
    "inject 5 5|inject 6 1|inject 6 2|inject 6 3|inject 6 4|inject 6 5|inject 6 6|inject 7 1|inject 7 2|inject 7 3|"
    "inject 7 4|inject 7 5|inject 8 1|inject 8 2|inject 8 3|inject 9 1 100|inject 9 2 100|inject 9 3 100 55|"
    "inject 9 4 100 55|inject 9 5 100 55|inject 9 6 100 55|inject 9 7|inject 10 1|inject 10 2|get 1|memu 1|xbic 4|"
    "smpu 4|cmu 16|";
constexpr char engine[] =
    "cse 2 1 00112233445566778899AABBCCDDEEFF|cse 2 2 6BC1BEE22E409F96E93D7E117393172A|"
    "cse 3 1 69C4E0D86A7B0430D8CDB78070B4C55A|cse 3 2 7649ABAC8119B246CEE98E9B12E9197D|"
    "cse 4 6BC1BEE22E409F96E93D7E117393172A|cse 4|"
    "cse 5 6BC1BEE22E409F96E93D7E117393172A 070A16B46B4D4144F79BDD9DD04A287C|"
    "cse 5 BB1D6929E95937287FA37D129B756746|cse 6 2|cse 6 1|cse 7 00112233445566778899AABBCCDDEEFF|cse 2 1 0|cse 7 1|"
    "cse 9|";
constexpr char beyond[] =
    "cmu 3 4294967296 -1|cmu 13 99|xbic 1 5|swt 1 4 0|swt 2 1 65536|crc 0 0 0|crc 4 1 3|memu 9|inject 9 1 FFFFFFFFF|"
    "inject 9 3 3FFF 123456789|resetEsca 3 3 16|intcm XX 9 9 99999999 99999|regP 5 FFFFFFFFFF|pmc 3 3|inject|get|"
    "get 99 99|help me| |status now|";

QByteArray lines(int cut, QByteArray words)
{
    return byte(cut) + words.replace('|', "\r\n");
}

Seeds boardSeeds()
{
    QByteArray history;
    for (int i = 0; i < 25; ++i)
        history += "get " + QByteArray::number(i) + '\r';
    Seeds seeds = {
        {"nothing", QByteArray()},
        {"all_commands", lines(0, commands)},
        {"all_commands_typed", lines(5, commands)},
        {"injections", lines(0, injections)},
        {"injections_in_time", lines(9, QByteArray(injections).left(60))},
        {"engine", lines(0, QByteArray("cse 1|") + engine)},
        {"numbers_beyond", lines(0, beyond)},
        {"restart_functional", lines(3, "inject 1|get 1|help|inject 1|")},
        {"restart_destructive", lines(3, "inject 2|get 1|help|inject 2|")},
        {"watchdog_runs_out", lines(17, "swt 1 1 1|inject 3 1|get 2|status|get 1|")},
        {"escalation",
         lines(11,
               "resetEsca 1 3 1|resetEsca 1 1|inject 1|get 1|inject 1|inject 1|inject 1|inject 1|"
               "resetEsca 2 3 1|resetEsca 2 1|inject 2|inject 2|get 1|")},
        {"history", byte(2) + history + QByteArray("\x1B[A").repeated(31) + QByteArray("\x1B[B").repeated(32) + "\r"},
        {"keys",
         byte(2) + "get 9\x7F\b\b\x1B[D\x1B[D\x1B[C1\x1B[A\x1B[A\x1B[B\rhelp\n\x1B[A\r\x1B[Z\x1BQ\x1B[\x1B[A\r\n"},
        {"line_ends", byte(2) + "get 1\rget 1\nget 1\r\nget 1\n\r\r\r\n\n"},
    };
    for (int c = 0; c < 256; ++c)
        seeds["bytes"] += byte(c);
    const auto commandsOfEngine = QByteArray(engine).split('|');
    for (int i = 0; i < commandsOfEngine.size(); ++i)
        seeds[QStringLiteral("engine_%1").arg(i)] = lines(13, "cse 1|" + commandsOfEngine[i] + '|');
    return seeds;
}

Seeds seedsOf(const QString &target)
{
    if (target == QLatin1String("board"))
        return boardSeeds();
    if (target == QLatin1String("console"))
        return consoleSeeds();
    if (target == QLatin1String("decoders"))
        return decoderSeeds();
    if (target == QLatin1String("extraction"))
        return extractionSeeds();
    if (target == QLatin1String("window"))
        return windowSeeds();
    return {};
}

} // namespace

int main(int count, char **arguments)
{
    if (count != 3) {
        std::fprintf(stderr, "usage: fuzz-seeds TARGET FOLDER\n");
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(arguments[2]));
    if (!folder.mkpath(QStringLiteral(".")))
        return 1;
    for (const auto &[name, bytes] : seedsOf(QString::fromLocal8Bit(arguments[1]))) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return 1;
    }
    return 0;
}
