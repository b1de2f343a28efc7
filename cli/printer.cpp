// SPDX-License-Identifier: MIT
#include "cli/printer.h"

#include "cli/settings.h"
#include "cli/times.h"
#include "protocol/report.h"

#include <algorithm>

namespace {

using protocol::Field;

constexpr char kEscape[] = "\x1B[";
constexpr int kModuleWidth = 6;
constexpr int kReportWidth = 15;
constexpr int kUsualLength = 256; // most reports' fields fit

QByteArray padded(QLatin1String text, int width)
{
    return QByteArray::fromRawData(text.data(), text.size()).leftJustified(width, ' ');
}

// The characters of Unicode's category Cc.
bool isControl(QChar character)
{
    const ushort code = character.unicode();
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

void appendValue(QByteArray &to, const QVariant &value)
{
    switch (static_cast<QMetaType::Type>(value.type())) {
    case QMetaType::Bool:
        to.append(value.toBool() ? "true" : "false");
        break;
    case QMetaType::UInt:
        appendNumber(to, value.toUInt());
        break;
    case QMetaType::Int:
        appendNumber(to, value.toInt());
        break;
    case QMetaType::Float:
        to.append(jsonNumber(value.toFloat()));
        break;
    case QMetaType::QByteArray:
        to.append('"').append(value.toByteArray().toHex()).append('"');
        break;
    case QMetaType::QVariantList: {
        char before = '[';
        for (const QVariant &element : value.toList()) {
            appendNumber(to.append(before), element.toUInt());
            before = ',';
        }
        to.append(before == '[' ? "[]" : "]");
        break;
    }
    default:
        appendJson(to, value.toString());
    }
}

void appendObject(QByteArray &to, const QVector<Field> &fields);

void appendRecords(QByteArray &to, const QVector<QVector<Field>> &records)
{
    to.append('[');
    for (const QVector<Field> &record : records) {
        if (&record != &records.first())
            to.append(',');
        appendObject(to, record);
    }
    to.append(']');
}

// {"id":3,"id_text":"..."}: where a value has words, they stand beside it.
void appendObject(QByteArray &to, const QVector<Field> &fields)
{
    to.append('{');
    for (const Field &field : fields) {
        if (&field != &fields.first())
            to.append(',');
        to.append('"').append(field.name.data(), field.name.size()).append("\":");
        if (field.isRecords)
            appendRecords(to, field.records);
        else
            appendValue(to, field.value);
        if (field.text.isEmpty())
            continue;
        to.append(",\"").append(field.name.data(), field.name.size()).append("_text\":");
        appendJson(to, field.text);
    }
    to.append('}');
}

// {"v":1,"kind":...,"time":"..."
JsonLine timed(const char *kind, qint64 time)
{
    JsonLine line(kind);
    QByteArray &json = line.member("time").append('"');
    appendIsoTime(json, time);
    json.append('"');
    return line;
}

bool isFault(const frameData &frame)
{
    return frame.moduleId == static_cast<quint8>(protocol::ModuleId::Fccu)
        && frame.dataType == protocol::fccu::FaultReport;
}

// "\x1B"
QString escaped(QChar control)
{
    const char digits[] = "0123456789ABCDEF";
    const uchar code = control.cell();
    return QLatin1String("\\x") + QLatin1Char(digits[code >> 4]) + QLatin1Char(digits[code & 15]);
}

} // namespace

QString shownText(const QString &text)
{
    if (std::none_of(text.begin(), text.end(), isControl))
        return text.trimmed();
    QString shown;
    for (const QChar character : text) {
        if (!isControl(character))
            shown.append(character);
        else if (character == QLatin1Char('\n') || character == QLatin1Char('\r') || character == QLatin1Char('\t'))
            shown.append(QLatin1Char(' '));
        else
            shown.append(escaped(character));
    }
    return shown.trimmed();
}

QString pairsText(const QVector<Field> &fields)
{
    QString pairs;
    pairs.reserve(kUsualLength);
    for (const Field &field : fields) {
        if (field.isRecords)
            continue;
        if (!pairs.isEmpty())
            pairs.append(QLatin1String(", "));
        pairs.append(field.name).append(QLatin1Char(' ')).append(shownText(valueText(field)));
    }
    return pairs;
}

QByteArray fieldsJson(const QVector<Field> &fields)
{
    QByteArray json;
    json.reserve(kUsualLength);
    appendObject(json, fields);
    return json;
}

Printer::Printer(const Settings &settings, Times times)
    : m_json(settings.json),
      m_times(times == Times::Shown),
      m_colour(!settings.json && wantsColour())
{
}

QByteArray Printer::inked(const QByteArray &text, Ink ink) const
{
    static constexpr const char *colours[] = {"0m", "36m", "1;31m", "1m", "33m"};
    return m_colour && ink != Ink::Plain ? kEscape + QByteArray(colours[static_cast<int>(ink)]) + text + kEscape + "0m"
                                         : text;
}

// "17:40:04.123456 < "
QByteArray Printer::head(qint64 time, char direction) const
{
    return m_times ? clockTime(time) + ' ' + direction + ' ' : QByteArray();
}

void Printer::frame(const frameData &frame, qint64 time)
{
    if (m_json)
        jsonFrame(frame, time);
    else
        plainFrame(frame, time);
}

void Printer::jsonFrame(const frameData &frame, qint64 time)
{
    const auto report = protocol::decode(frame.moduleId, frame.dataType, frame.data);
    if (!report) {
        m_output.line(timed("frame", time)
                          .add("module", frame.moduleId)
                          .add("type", frame.dataType)
                          .add("payload", QString::fromLatin1(frame.data.toHex()))
                          .take());
        return;
    }
    JsonLine line = timed("report", time);
    line.add("module", protocol::moduleName(frame.moduleId)).add("report", protocol::infoOf(*report).name);
    appendObject(line.member("fields"), protocol::fields(*report));
    m_output.line(line.take());
}

void Printer::plainFrame(const frameData &frame, qint64 time)
{
    const auto report = protocol::decode(frame.moduleId, frame.dataType, frame.data);
    if (!report) {
        m_output.line(head(time, '<')
                      + QStringLiteral("unknown module %1, type %2, %3 bytes: ")
                            .arg(frame.moduleId)
                            .arg(frame.dataType)
                            .arg(frame.data.size())
                            .toUtf8()
                      + frame.data.toHex(' '));
        return;
    }
    const QVector<Field> fields = protocol::fields(*report);
    const Ink ink = isFault(frame) ? Ink::Fault : Ink::Module;
    QByteArray line = head(time, '<');
    line.append(inked(padded(protocol::moduleName(frame.moduleId), kModuleWidth), ink)).append(' ');
    line.append(padded(protocol::infoOf(*report).name, kReportWidth)).append(' ').append(pairsText(fields).toUtf8());
    m_output.line(line);
    for (const Field &field : fields) {
        for (const QVector<Field> &record : field.records)
            m_output.line(QByteArray(kModuleWidth + (m_times ? 18 : 0), ' ') + " - " + pairsText(record).toUtf8());
    }
}

void Printer::sent(const QByteArray &bytes, qint64 time)
{
    const QString command = QString::fromLatin1(bytes);
    if (m_json)
        m_output.line(timed("sent", time).add("command", command.trimmed()).take());
    else
        m_output.line(head(time, '>') + inked(shownText(command).toUtf8(), Ink::Command));
}

void Printer::note(const session::Note &note, qint64 time)
{
    if (m_json)
        m_output.line(timed("note", time).add("note", session::kindText(note.kind)).add("text", note.text).take());
    else
        m_output.line(head(time, '-') + inked(shownText(session::commentOf(note)).toUtf8(), Ink::Note));
}

void Printer::finding(JsonLine &json, const QString &words)
{
    if (m_json)
        m_output.line(json.take());
    else if (!words.isEmpty())
        m_output.line(words.toUtf8());
}

bool Printer::flush()
{
    m_output.flush();
    return m_output.isGood();
}
