// SPDX-License-Identifier: MIT
// Identities of serial ports, and the messages about a port that cannot be used.
#include "link/serialline.h"
#include "link/serialports.h"
#include "support/boxanswerer.h"
#include "support/fixtures.h"

#include <QTemporaryDir>
#include <QTest>

#include <termios.h>

Q_DECLARE_METATYPE(PortInfo)

class TestPorts : public QObject
{
    Q_OBJECT

private slots:
    void init() { gPortName.clear(); }
    void cleanup() { closeLine(*gSerialPort); }

    void portsAreListedOnceEach()
    {
        int listings = 0;
        RawLine line;
        setAvailablePortNames([&] {
            ++listings;
            QStringList names = {line.tty()};
            for (int i = 0; i < 32; ++i)
                names.append(QStringLiteral("no-such-port-%1").arg(i));
            return names;
        });
        BoxAnswerer answers;
        const MainWindow window;
        QCOMPARE(listings, 3); // the settings dialog, the choice, the opening
    }

    void descriptions_data()
    {
        QTest::addColumn<PortInfo>("port");
        QTest::addColumn<QString>("words");
        const auto port = [](const char *name, const char *description, quint16 vendor, quint16 product) {
            return PortInfo{name, description, {}, {}, {}, vendor, product};
        };
        QTest::newRow("all") << port("ttyUSB0", "Serial Adapter", 0x0403, 0x60AF) << "Serial Adapter, 0403:60AF";
        QTest::newRow("identifiers") << port("ttyUSB0", "", 0x0403, 0) << "0403:0000";
        QTest::newRow("description") << port("ttyS0", "Modem", 0, 0) << "Modem";
        QTest::newRow("nothing") << port("ttyS0", "", 0, 0) << "";
        QTest::newRow("virtual") << port("/dev/pts/ptmx", "Serial Adapter", 1, 2) << "virtual board";
    }

    void descriptions()
    {
        QFETCH(PortInfo, port);
        QTEST(portDescription(port), "words");
    }

    void aLinkToAPseudoTerminalIsAVirtualBoardToo()
    {
        const RawLine line;
        QTemporaryDir folder;
        const QString link = folder.filePath(QStringLiteral("board"));
        QVERIFY(QFile::link(line.tty(), link));
        QVERIFY(isPseudoTerminal(link));
        QVERIFY(!isPseudoTerminal(folder.path()));
        QVERIFY(!isPseudoTerminal(QString()));
    }

    void thePermissionsRemedyWorks_data()
    {
        QTest::addColumn<QString>("group");
        QTest::addColumn<int>("rights");
        QTest::addColumn<QString>("remedy");
        const int all = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOwner | QFile::WriteOwner;
        QTest::newRow("dialout 0660") << "dialout" << all << "usermod -aG dialout $USER";
        QTest::newRow("root 0660") << "root" << all << "60-safety-workbench.rules";
        QTest::newRow("dialout 0640") << "dialout" << (all & ~QFile::WriteGroup) << "60-safety-workbench.rules";
        QTest::newRow("dialout 0620") << "dialout" << (all & ~QFile::ReadGroup) << "60-safety-workbench.rules";
        QTest::newRow("nobody 0600") << "" << all << "60-safety-workbench.rules";
    }

    void thePermissionsRemedyWorks()
    {
        QFETCH(QString, group);
        QFETCH(int, rights);
        QFETCH(QString, remedy);
        const QString text = permissionRemedy(group, QFile::Permissions(rights));
        QVERIFY2(text.startsWith(QStringLiteral("no permission: ")) && text.contains(remedy), qPrintable(text));
        QVERIFY(!text.contains(QStringLiteral("root")));
    }

    // The adapter's driver sets another rate than the one asked for.
    void aRefusedBaudRateIsSaid()
    {
        WindowFixture bench;
        QVERIFY(lineTrouble(*gSerialPort).isEmpty());
        termios settings = {};
        QCOMPARE(tcgetattr(gSerialPort->handle(), &settings), 0);
        cfsetspeed(&settings, B115200);
        QCOMPARE(tcsetattr(gSerialPort->handle(), TCSANOW, &settings), 0);
        QVERIFY2(lineTrouble(*gSerialPort).contains(QStringLiteral("115200")), qPrintable(lineTrouble(*gSerialPort)));
    }
};

QTEST_MAIN(TestPorts)
#include "tst_ports.moc"
