// SPDX-License-Identifier: MIT
// Keeps the documents on the wire equal to the tables that decode it: between "generated: NAME" and "end of NAME"
// a file holds a table's contents. Without --write it only compares.
#include "protocol/commands.h"
#include "protocol/report.h"

#include <QCoreApplication>
#include <QFile>
#include <QMap>
#include <QTextStream>

#include <cstdio>
#include <functional>

using namespace protocol;

namespace {

// Codes with words: those that differ from what all codes beyond the last one say.
struct Codes {
    QMap<int, QString> words;
    QString others;
};

int codeCount(const Place &place)
{
    if (place.coding == Coding::FlagsFirst || place.coding == Coding::FlagsNumber)
        return place.bits == 0 ? place.size * 8 : place.bits;
    return place.bits == 0 ? 256 : 1 << place.bits;
}

Codes codesOf(const FieldInfo &field)
{
    Codes codes;
    if (!field.notes.words)
        return codes;
    const auto word = [&field](int code) {
        const QString text = field.notes.words(static_cast<quint8>(code));
        return text == QString::number(code) ? QString() : text;
    };
    const int count = codeCount(field.place);
    codes.others = count == 256 ? word(255) : QString();
    for (int code = 0; code < count; ++code) {
        if (word(code) != codes.others)
            codes.words.insert(code, word(code));
    }
    return codes;
}

// ---- for people

QString bytesText(const Place &place)
{
    const QString behind = place.behindData ? QStringLiteral("N+") : QString();
    if (place.coding == Coding::Data)
        return QStringLiteral("4 to N+3");
    if (place.coding == Coding::Tail)
        return QStringLiteral("the last N");
    if (place.coding == Coding::Words || place.coding == Coding::Computed)
        return {};
    if (place.coding == Coding::Latin1 || place.coding == Coding::Utf8)
        return QStringLiteral("all");
    if (place.coding == Coding::Counted || place.coding == Coding::Whole)
        return QStringLiteral("from %1 on, %2 each").arg(place.at).arg(place.size);
    const QString first = behind + QString::number(place.at);
    return place.size == 1 ? first : QStringLiteral("%1 to %2%3").arg(first, behind).arg(place.at + place.size - 1);
}

QString bitsText(const Place &place)
{
    if (place.bits == 0)
        return {};
    const int high = place.low + place.bits - 1;
    return place.bits == 1 ? QString::number(high) : QStringLiteral("%1 to %2").arg(high).arg(place.low);
}

QString codingText(const Place &place)
{
    switch (place.coding) {
    case Coding::Big:
        return place.bits == 1 ? QStringLiteral("flag")
            : place.size > 1   ? QStringLiteral("number, high byte first")
                               : QStringLiteral("number");
    case Coding::Little:
        return QStringLiteral("number, low byte first");
    case Coding::Halves:
        return QStringLiteral("two 16-bit halves, low half first, each high byte first");
    case Coding::Signed:
        return QStringLiteral("signed number; -1 where missing");
    case Coding::Float:
        return QStringLiteral("float, high byte first");
    case Coding::FlagsFirst:
        return QStringLiteral("flags; 0 is the top bit of the first byte");
    case Coding::FlagsNumber:
        return QStringLiteral("flags; 0 is the lowest bit of the last byte");
    case Coding::One:
        return QStringLiteral("true when exactly 1");
    case Coding::Restart:
        return QStringLiteral("true when the first byte is 7F or the second FE");
    case Coding::Optional:
        return QStringLiteral("number; none in a payload of a single 0");
    case Coding::Present:
        return QStringLiteral("true when the byte is there");
    case Coding::Latin1:
        return QStringLiteral("Latin-1 text up to the first NUL");
    case Coding::Utf8:
        return QStringLiteral("UTF-8 text up to the first NUL");
    case Coding::Data:
        return QStringLiteral("N bytes, N being the first field, at most 65535");
    case Coding::Tail:
        return QStringLiteral("N bytes, N being bytes %1 and %2").arg(place.at).arg(place.at + 1);
    case Coding::Words:
        return QStringLiteral("worked out from the first field");
    case Coding::Computed:
        return QStringLiteral("worked out from the other fields");
    case Coding::Counted:
        return QStringLiteral("records, as many as byte 0 says");
    case Coding::Whole:
        return QStringLiteral("records, as many as are there whole");
    }
    return {};
}

// More codes than this have a table of their own.
constexpr int kMaxListed = 32;

QString meaningText(const FieldInfo &field)
{
    QStringList parts = {QString::fromLatin1(field.notes.meaning)};
    if (field.notes.onlyWhen >= 0)
        parts.append(QStringLiteral("only where the first field is %1").arg(field.notes.onlyWhen));
    if (field.notes.divisor > 0)
        parts.append(
            QStringLiteral("%1 per %2").arg(field.notes.divisor).arg(QString::fromLatin1(field.notes.perDivisor)));
    const Codes codes = codesOf(field);
    if (codes.words.size() > kMaxListed) {
        parts.append(QStringLiteral("see the fault sources"));
    } else if (!codes.words.isEmpty()) {
        QStringList values;
        for (auto code = codes.words.begin(); code != codes.words.end(); ++code)
            values.append(QStringLiteral("%1 \"%2\"").arg(code.key()).arg(code.value()));
        if (!codes.others.isEmpty())
            values.append(QStringLiteral("others \"%1\"").arg(codes.others));
        parts.append(values.join(QStringLiteral(", ")));
    }
    parts.removeAll(QString());
    return parts.join(QStringLiteral("; "));
}

QString fieldsTable(const QVector<FieldInfo> &fields, const QString &path = {})
{
    QString text;
    for (const FieldInfo &field : fields) {
        text += QStringLiteral("| %1 | %2 | `%3` | %4 | %5 | %6 |\n")
                    .arg(bytesText(field.place), bitsText(field.place), path + field.name, codingText(field.place),
                         QString::fromLatin1(field.notes.unit), meaningText(field));
        text += fieldsTable(field.elements, path + field.name + QLatin1Char('.'));
    }
    return text;
}

QString reports()
{
    QString text;
    int module = -1;
    for (const ReportInfo &info : reportInfos()) {
        if (static_cast<int>(info.module) != module) {
            module = static_cast<int>(info.module);
            text += QStringLiteral("\n### %1: module %2\n").arg(moduleTitle(static_cast<quint8>(module))).arg(module);
        }
        const QString type =
            info.module == ModuleId::Text ? QStringLiteral("any type") : QStringLiteral("type %1").arg(info.type);
        text += QStringLiteral("\n**`%1`**, %2: %3\n\n| Bytes | Bits | Field | Coding | Unit | Meaning |\n"
                               "|---|---|---|---|---|---|\n%4")
                    .arg(info.name, type, info.title, fieldsTable(info.fields()));
    }
    return text + QLatin1Char('\n');
}

QString commands()
{
    QString text = QStringLiteral("\n| Command | Arguments | Module | Effect | Answered by |\n|---|---|---|---|---|\n");
    for (const CommandInfo &command : commandInfos()) {
        QString arguments = command.arguments;
        text += QStringLiteral("| `%1` | %2 | %3 | %4 | %5 |\n")
                    .arg(command.words,
                         arguments.replace(QLatin1Char('|'), QStringLiteral(" or "))
                             .replace(QLatin1Char('<'), QStringLiteral("&lt;"))
                             .replace(QLatin1Char('>'), QStringLiteral("&gt;")),
                         moduleName(static_cast<quint8>(command.module)), command.help, command.answer);
    }
    return text + QLatin1Char('\n');
}

QString faults()
{
    QString text = QStringLiteral("\n| ID | Source | Description |\n|---|---|---|\n");
    for (int id = 0; id < fccu::kSourceCount; ++id)
        text += QStringLiteral("| %1 | %2 | %3 |\n")
                    .arg(id)
                    .arg(fccu::fccuFaultSource(id).trimmed(), fccu::fccuFaultDescription(id));
    return text + QLatin1Char('\n');
}

// ---- for the dissector

QString quoted(const QString &text)
{
    QString escaped = text;
    return QLatin1Char('"')
        + escaped.replace(QLatin1Char('\\'), QStringLiteral("\\\\")).replace(QLatin1Char('"'), QStringLiteral("\\\""))
        + QLatin1Char('"');
}

QString codingName(Coding coding)
{
    static const QMap<Coding, QString> names = {{Coding::Big, "big"},         {Coding::Little, "little"},
                                                {Coding::Halves, "halves"},   {Coding::Signed, "signed"},
                                                {Coding::Float, "float"},     {Coding::FlagsFirst, "flags_first"},
                                                {Coding::One, "one"},         {Coding::FlagsNumber, "flags_number"},
                                                {Coding::Restart, "restart"}, {Coding::Optional, "optional"},
                                                {Coding::Present, "present"}, {Coding::Latin1, "latin1"},
                                                {Coding::Utf8, "utf8"},       {Coding::Data, "data"},
                                                {Coding::Tail, "tail"},       {Coding::Words, "words"},
                                                {Coding::Counted, "counted"}, {Coding::Computed, "computed"},
                                                {Coding::Whole, "whole"}};
    return names.value(coding);
}

QString luaWords(const FieldInfo &field)
{
    const Codes codes = codesOf(field);
    QStringList entries;
    for (auto code = codes.words.begin(); code != codes.words.end(); ++code)
        entries.append(QStringLiteral("[%1]=%2").arg(code.key()).arg(quoted(code.value())));
    if (!codes.others.isEmpty())
        entries.append(QStringLiteral("others=") + quoted(codes.others));
    return entries.join(QStringLiteral(", "));
}

QString luaFields(const QVector<FieldInfo> &fields, const QString &indent)
{
    QString text;
    for (const FieldInfo &field : fields) {
        const Place &place = field.place;
        const Notes &notes = field.notes;
        QStringList parts = {QStringLiteral("name=") + quoted(field.name),
                             QStringLiteral("coding=") + quoted(codingName(place.coding)),
                             QStringLiteral("at=%1, size=%2").arg(place.at).arg(place.size)};
        const auto add = [&parts](bool wanted, const QString &part) {
            if (wanted)
                parts.append(part);
        };
        add(place.bits > 0, QStringLiteral("low=%1, bits=%2").arg(place.low).arg(place.bits));
        add(place.behindData, QStringLiteral("behind=true"));
        add(*notes.unit, QStringLiteral("unit=") + quoted(notes.unit));
        add(notes.divisor > 0, QStringLiteral("divisor=%1, per=%2").arg(notes.divisor).arg(quoted(notes.perDivisor)));
        add(notes.hexadecimal, QStringLiteral("hex=true"));
        add(field.isFlag, QStringLiteral("flag=true"));
        add(notes.scale > 0, QStringLiteral("scale=%1").arg(notes.scale));
        add(notes.onlyWhen >= 0, QStringLiteral("when=%1").arg(notes.onlyWhen));
        add(*notes.meaning, QStringLiteral("meaning=") + quoted(notes.meaning));
        add(notes.words, QStringLiteral("words={%1}").arg(luaWords(field)));
        add(!field.elements.isEmpty(),
            QStringLiteral("fields={\n") + luaFields(field.elements, indent + QStringLiteral("  ")) + indent
                + QLatin1Char('}'));
        text += indent + QStringLiteral("{%1},\n").arg(parts.join(QStringLiteral(", ")));
    }
    return text;
}

QString luaTables()
{
    QString text = QStringLiteral("local modules = {\n");
    for (quint8 module = 0; module < kModuleCount; ++module)
        text += QStringLiteral("  [%1]={name=%2, title=%3},\n")
                    .arg(module)
                    .arg(quoted(moduleName(module)), quoted(moduleTitle(module)));
    text += QStringLiteral("}\nlocal reports = {\n");
    for (const ReportInfo &info : reportInfos())
        text += QStringLiteral("  {module=%1, type=%2, name=%3, title=%4, fields={\n%5  }},\n")
                    .arg(static_cast<int>(info.module))
                    .arg(info.type)
                    .arg(quoted(info.name), quoted(info.title), luaFields(info.fields(), QStringLiteral("    ")));
    text += QStringLiteral("}\nlocal commands = {\n");
    for (const CommandInfo &command : commandInfos())
        text += QStringLiteral("  {words=%1, module=%2, help=%3},\n")
                    .arg(quoted(command.words))
                    .arg(static_cast<int>(command.module))
                    .arg(quoted(command.help));
    return text + QStringLiteral("}\n");
}

// ----

const QMap<QString, std::function<QString()>> sections = {
    {QStringLiteral("reports"), reports},
    {QStringLiteral("commands"), commands},
    {QStringLiteral("faults"), faults},
    {QStringLiteral("dissector tables"), luaTables},
};

// The file's text with its generated sections as the tables say; `count` grows by the sections met.
QString renewed(const QString &text, int &count)
{
    QString result = text;
    for (auto section = sections.begin(); section != sections.end(); ++section) {
        const int begin = result.indexOf(QStringLiteral("generated: ") + section.key());
        const int end = result.indexOf(QStringLiteral("end of ") + section.key());
        if (begin < 0 || end < begin)
            continue;
        const int from = result.indexOf(QLatin1Char('\n'), begin) + 1;
        const int to = result.lastIndexOf(QLatin1Char('\n'), end) + 1;
        result.replace(from, to - from, section.value()());
        ++count;
    }
    return result;
}

int fail(const QString &text)
{
    QTextStream(stderr) << text << '\n';
    return 1;
}

// The first line that differs, for a person to look at.
QString difference(const QString &is, const QString &expected)
{
    const QStringList a = is.split(QLatin1Char('\n')), b = expected.split(QLatin1Char('\n'));
    int line = 0;
    while (line < a.size() && line < b.size() && a[line] == b[line])
        ++line;
    return QStringLiteral("line %1\n  is:     %2\n  tables: %3").arg(line + 1).arg(a.value(line), b.value(line));
}

int keep(const QString &name, bool write)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return fail(name + QStringLiteral(": ") + file.errorString());
    const QString is = QString::fromUtf8(file.readAll());
    file.close();
    int count = 0;
    const QString expected = renewed(is, count);
    if (count == 0)
        return fail(name + QStringLiteral(": no generated section"));
    if (is == expected)
        return 0;
    if (!write)
        return fail(name + QStringLiteral(": ") + difference(is, expected));
    if (!file.open(QIODevice::WriteOnly) || file.write(expected.toUtf8()) < 0)
        return fail(name + QStringLiteral(": ") + file.errorString());
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QStringList files = QCoreApplication::arguments().mid(1);
    const bool write = files.removeAll(QStringLiteral("--write")) > 0;
    if (files.isEmpty())
        return fail(QStringLiteral("usage: protocol-tables [--write] FILE..."));
    int failures = 0;
    for (const QString &file : files)
        failures += keep(file, write);
    return failures > 0;
}
