// SPDX-License-Identifier: MIT
// Two views of a recording: tshark with the dissector and the tool's JSON tell every report the same fields as the report
// type, and tshark the same bytes as were recorded, however the line cuts them.
#include "protocol/frame.h"
#include "protocol/report.h"
#include "session/pcapng.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>
#include <random>
#include <unistd.h>

using namespace protocol;

namespace {

struct Shown {
    QString name;
    QString value;
};

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

// Payloads that are worth a look for every kind, and random ones.
QVector<QByteArray> payloads()
{
    QVector<QByteArray> all = {{},
                               hex("00"),
                               hex("2F 4148F5C3"),
                               hex("A5C3 0000 0201 0004 A5C3 D4B2"),
                               hex("03 01 02"),
                               QByteArray(40, '\xFF'),
                               QByteArray(31, '\0'),
                               hex("00000002 31 35 000029B1 3FC00000"),
                               hex("04 41C90A3D 0003 ABCDEF"),
                               hex("05 3F800000 0000 02")};
    std::mt19937 random(20261121);
    for (int i = 0; i < 12; ++i) {
        QByteArray payload;
        for (auto n = 1 + random() % 60; n > 0; --n)
            payload.append(static_cast<char>(random()));
        all.append(payload);
    }
    return all;
}

// tshark shows control characters in its own way.
QVector<QByteArray> payloadsFor(const ReportInfo &info)
{
    switch (info.fields().first().place.coding) {
    case Coding::Latin1:
        return {"plain text", QByteArray("cut\0off", 7), "caf\xE9", {}};
    case Coding::Utf8:
        return {"plain text", QByteArray("cut\0off", 7), "caf\xC3\xA9", {}};
    default:
        return payloads();
    }
}

// Of a float tshark shows fewer digits than there are; the other values are equal to the letter.
QString plain(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::QByteArray:
        return QString::fromLatin1(value.toByteArray().toHex());
    case QMetaType::Float:
        return QString::number(value.toDouble(), 'g', 6);
    default:
        return value.toString();
    }
}

// Bytes come with colons, addresses in hexadecimal.
QString simplified(QString shown)
{
    bool isNumber = false;
    if (const uint address = shown.toUInt(&isNumber, 16); shown.startsWith(QLatin1String("0x")) && isNumber)
        return QString::number(address);
    const double number = shown.toDouble(&isNumber);
    if (isNumber)
        return QString::number(number, 'g', 6);
    return shown.endsWith(QLatin1String("nan")) ? QStringLiteral("nan") : shown.remove(QLatin1Char(':'));
}

void addFields(QVector<Shown> &shown, const QString &path, const QVector<Field> &fields)
{
    for (const Field &field : fields) {
        const QString name = path + QLatin1Char('.') + field.name;
        if (field.isRecords) {
            for (const QVector<Field> &record : field.records)
                addFields(shown, name, record);
        } else if (field.value.type() == QVariant::List) {
            for (const QVariant &element : field.value.toList())
                shown.append({name, element.toString()});
        } else {
            shown.append({name, plain(field.value)});
        }
    }
}

QString plain(const QJsonValue &value)
{
    if (value.isNull())
        return QStringLiteral("nan"); // JSON has none
    if (value.isBool())
        return QString::number(value.toBool());
    const double number = value.toDouble();
    if (number != std::floor(number)) // printed with as many digits as single precision needs
        return QString::number(static_cast<double>(static_cast<float>(number)), 'g', 6);
    return value.toVariant().toString();
}

// JSON's objects have no order; words stand beside the values that have any.
void addFields(QVector<Shown> &shown, const QString &path, const QJsonObject &fields)
{
    for (auto field = fields.begin(); field != fields.end(); ++field) {
        const QString name = path + QLatin1Char('.') + field.key();
        if (field.key().endsWith(QLatin1String("_text")) && fields.contains(field.key().chopped(5)))
            continue;
        if (!field->isArray())
            shown.append({name, plain(*field)});
        const QJsonArray elements = field->toArray();
        for (const QJsonValue &element : elements) {
            if (element.isObject())
                addFields(shown, name, element.toObject());
            else
                shown.append({name, plain(element)});
        }
    }
}

QSet<QString> filters()
{
    QSet<QString> names;
    for (const ReportInfo &info : reportInfos()) {
        for (const FieldInfo &field : info.fields()) {
            const QString name = QStringLiteral("safetyworkbench.%1.%2").arg(info.name, field.name);
            names.insert(name);
            for (const FieldInfo &element : field.elements)
                names.insert(name + QLatin1Char('.') + element.name);
            if (!field.elements.isEmpty())
                names.remove(name);
        }
    }
    return names;
}

// A frame's fields as expected.
QVector<Shown> expected(quint8 module, quint8 type, const QByteArray &payload)
{
    const auto report = decode(module, type, payload);
    QVector<Shown> shown;
    if (report)
        addFields(shown, QStringLiteral("safetyworkbench.") + infoOf(*report).name, fields(*report));
    return shown;
}

// A file for everybody to read.
bool writeForAll(const QString &name, const QByteArray &content)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size()
        && file.setPermissions(QFile::Permissions(0x6444));
}

// tshark reads no script for root.
QProcessEnvironment homeIn(const QString &folder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), folder);
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    return environment;
}

} // namespace

class TestWireshark : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void fieldsAreTheReports();
    void jsonSaysTheSame();
    void bytesAreTheRecorded();
    void filtersFind_data();
    void filtersFind();

private:
    void record(session::Direction direction, const QByteArray &bytes);
    QByteArray tshark(const QStringList &arguments);

    QTemporaryDir m_folder;
    QByteArray m_file;
    QByteArray m_sent, m_received;
    QVector<Shown> m_expected;
    qint64 m_time = 1763700000000000000;
};

void TestWireshark::record(session::Direction direction, const QByteArray &bytes)
{
    session::Packet packet;
    packet.time = m_time += 1000000;
    packet.direction = direction;
    packet.bytes = bytes;
    session::appendPacket(m_file, packet);
    (direction == session::Direction::Sent ? m_sent : m_received) += bytes;
}

// Every report with every payload; in between a command cut in two and bytes of no frame.
void TestWireshark::initTestCase()
{
    m_file = session::encodeStart(QStringLiteral("test"), {QStringLiteral("ttyTEST")});
    QByteArray line;
    for (const ReportInfo &info : reportInfos()) {
        for (const QByteArray &payload : payloadsFor(info)) {
            line += encodeFrame(info.module, info.type, payload, 0x1234);
            m_expected += expected(static_cast<quint8>(info.module), info.type, payload);
        }
    }
    line += hex("00") + encodeFrame(static_cast<ModuleId>(99), 7, "abc") + hex("01020304");
    line += hex("A5C3 0000 0101 FFFF"); // a start that lies about its length hides no frame behind it
    line += encodeFrame(ModuleId::Fccu, fccu::FaultReport, hex("2F 00000000"));
    m_expected += expected(12, 2, hex("2F 00000000"));
    std::mt19937 random(62);
    for (int at = 0; at < line.size();) {
        const int size = 1 + static_cast<int>(random() % 200);
        record(session::Direction::Received, line.mid(at, size));
        at += size;
    }
    record(session::Direction::Sent, "cmu 3 17");
    record(session::Direction::Sent, "0 150\r\ninject 2\r\n");

    QFile dissector(QStringLiteral(DISSECTOR));
    QVERIFY(dissector.open(QIODevice::ReadOnly));
    QVERIFY(writeForAll(m_folder.filePath(QStringLiteral("dissector.lua")), dissector.readAll()));
    QVERIFY(writeForAll(m_folder.filePath(QStringLiteral("line.pcapng")), m_file));
    QVERIFY(QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7707))); // a home for anybody
}

QByteArray TestWireshark::tshark(const QStringList &arguments)
{
    const QStringList all =
        QStringList{QStringLiteral("-X"),
                    QStringLiteral("lua_script:") + m_folder.filePath(QStringLiteral("dissector.lua")),
                    QStringLiteral("-r"), m_folder.filePath(QStringLiteral("line.pcapng"))}
        + arguments;
    QProcess process;
    process.setProcessEnvironment(homeIn(m_folder.path()));
    if (geteuid() == 0)
        process.start(QStringLiteral("setpriv"),
                      QStringList{QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"),
                                  QStringLiteral("--clear-groups"), QStringLiteral("tshark")}
                          + all);
    else
        process.start(QStringLiteral("tshark"), all);
    if (!process.waitForFinished(120000) || process.exitCode() != 0)
        qWarning("tshark: %s", process.readAllStandardError().constData());
    const QByteArray errors = process.readAllStandardError();
    if (errors.contains("Lua"))
        qWarning("tshark: %s", errors.constData());
    return process.readAllStandardOutput();
}

void TestWireshark::fieldsAreTheReports()
{
    QXmlStreamReader xml(QString::fromUtf8(tshark({QStringLiteral("-T"), QStringLiteral("pdml")})));
    const QSet<QString> wanted = filters();
    int next = 0;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != QLatin1String("field"))
            continue;
        const QString name = xml.attributes().value(QLatin1String("name")).toString();
        if (!wanted.contains(name))
            continue;
        QString value = xml.attributes().value(QLatin1String("show")).toString();
        QVERIFY2(next < m_expected.size(), qPrintable(name + QLatin1Char('=') + value));
        const Shown &shown = m_expected[next++];
        QCOMPARE(name, shown.name);
        if (value != shown.value)
            QCOMPARE(simplified(value), shown.value);
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QCOMPARE(next, m_expected.size());
}

void TestWireshark::jsonSaysTheSame()
{
    QProcess tool;
    tool.start(QStringLiteral(TOOL),
               {QStringLiteral("decode"), QStringLiteral("--json"), m_folder.filePath(QStringLiteral("line.pcapng"))});
    QVERIFY(tool.waitForFinished());
    QVector<Shown> shown;
    for (QByteArray line; !(line = tool.readLine()).isEmpty();) {
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        if (object[QLatin1String("kind")] == QLatin1String("report"))
            addFields(shown, QStringLiteral("safetyworkbench.") + object[QLatin1String("report")].toString(),
                      object[QLatin1String("fields")].toObject());
    }
    QCOMPARE(shown.size(), m_expected.size());
    const auto byName = [](const Shown &a, const Shown &b) { return a.name < b.name; };
    std::stable_sort(shown.begin(), shown.end(), byName);
    std::stable_sort(m_expected.begin(), m_expected.end(), byName);
    for (int i = 0; i < shown.size(); ++i) {
        QCOMPARE(shown[i].name, m_expected[i].name);
        if (shown[i].value != m_expected[i].value)
            QCOMPARE(simplified(shown[i].value), simplified(m_expected[i].value));
    }
}

void TestWireshark::bytesAreTheRecorded()
{
    QByteArray sent, received;
    const QByteArray lines = tshark({QStringLiteral("-T"), QStringLiteral("fields"), QStringLiteral("-e"),
                                     QStringLiteral("safetyworkbench.direction"), QStringLiteral("-e"),
                                     QStringLiteral("safetyworkbench.bytes")});
    for (const QByteArray &line : lines.split('\n'))
        (line.startsWith('0') ? sent : received) += QByteArray::fromHex(line.mid(2));
    const auto sum = [](const QByteArray &bytes) {
        return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
    };
    QCOMPARE(sum(sent), sum(m_sent));
    QCOMPARE(sum(received), sum(m_received));
}

void TestWireshark::filtersFind_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<int>("least");
    const auto row = [](const char *filter, int least) {
        QTest::newRow(filter) << QString::fromLatin1(filter) << least;
    };
    row("safetyworkbench.fault.id == 47 && safetyworkbench.fault.source contains \"XBAR_0\" && "
        "safetyworkbench.expert.fault",
        2);
    row("safetyworkbench.command == \"cmu 3 170 150\" && safetyworkbench.expert.reset", 1);
    row("safetyworkbench.expert.damaged && safetyworkbench.stray contains 01:02:03:04", 1);
}

void TestWireshark::filtersFind()
{
    QFETCH(QString, filter);
    QFETCH(int, least);
    const QByteArray found = tshark({QStringLiteral("-Y"), filter});
    QVERIFY2(found.count('\n') >= least, found.constData());
}

QTEST_APPLESS_MAIN(TestWireshark)
#include "tst_wireshark.moc"
