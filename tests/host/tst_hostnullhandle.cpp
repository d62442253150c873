// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "hostrun.h"

#include <QTest>

#include <cstddef>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

// A socket at the abstract address of a display that only this test uses.
class CFakeDisplay
{
public:
    CFakeDisplay()
        : iSocket(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        const QByteArray sPath = "/tmp/.X11-unix/X" + QByteArray::number(getpid());
        sockaddr_un oAddress = {};
        oAddress.sun_family = AF_UNIX;
        std::copy(sPath.begin(), sPath.end(), oAddress.sun_path + 1);
        const auto nLength = socklen_t(offsetof(sockaddr_un, sun_path) + std::size_t(sPath.size()) + 1);
        bListens = bind(iSocket, reinterpret_cast<const sockaddr*>(&oAddress), nLength) == 0
            && listen(iSocket, 1) == 0;
    }
    CFakeDisplay(const CFakeDisplay&) = delete;
    CFakeDisplay& operator=(const CFakeDisplay&) = delete;
    ~CFakeDisplay() { close(iSocket); }

    bool listens() const { return bListens; }
    static QString name() { return QLatin1Char(':') + QString::number(getpid()) + QStringLiteral(".0"); }

private:
    int iSocket;
    bool bListens = false;
};

} // namespace

class TestHostNullHandle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNullHandleIsExplained_data()
    {
        QTest::addColumn<QStringList>("slOptions");
        QTest::addColumn<QString>("sDisplay");
        QTest::addColumn<QString>("sReason");
        const QStringList slSet{QStringLiteral("--need"), QStringLiteral("PATH")};
        const auto row = [](const char* pcName, const QStringList& slOptions, const QString& sDisplay,
                             const char* pcReason) {
            QTest::newRow(pcName) << slOptions << sDisplay
                                  << QString::fromUtf8(pcReason).replace(QLatin1String("%1"), sDisplay);
        };
        row("usual variable", {}, QString(), "the environment variable MYSQL_USER is not set");
        row("named variable", slSet + QStringList{QStringLiteral("--need"), QStringLiteral("ABSENT")},
            QString(), "the environment variable ABSENT is not set");
        row("no display named", slSet, QString(), "DISPLAY is not set: there is no display");
        row("no display there", slSet, QStringLiteral(":98765"), "no display at DISPLAY=%1");
        row("wrong display", slSet, QStringLiteral("x"), "no display at DISPLAY=%1, or the module refused");
        row("far display", slSet, QStringLiteral("far:0"), "no display at DISPLAY=%1, or the module refused");
        row("display there", slSet, CFakeDisplay::name(), "the module refused");
    }

    void aNullHandleIsExplained()
    {
        QFETCH(QStringList, slOptions);
        QFETCH(QString, sDisplay);
        QFETCH(QString, sReason);
        const CFakeDisplay oDisplay;
        QVERIFY(oDisplay.listens());
        QProcessEnvironment oEnvironment = QProcessEnvironment::systemEnvironment();
        oEnvironment.insert(QStringLiteral("MYSQL_HOST"), QStringLiteral("localhost"));
        oEnvironment.remove(QStringLiteral("MYSQL_USER"));
        oEnvironment.remove(QStringLiteral("DISPLAY"));
        if (!sDisplay.isEmpty()) {
            oEnvironment.insert(QStringLiteral("DISPLAY"), sDisplay);
        }
        const QStringList slCall{
            sModules + QStringLiteral("refuse.so"), QStringLiteral("--command"), QStringLiteral("CRefuse")};
        const SRun oRun = run(slOptions + slCall, QByteArray(), oEnvironment);
        QCOMPARE(
            oRun.sError, QStringLiteral("command 1:1: CRefuse returned a null handle: %1\n").arg(sReason));
        QCOMPARE(oRun.sOut, QString()); // the destructor prints
        QCOMPARE(oRun.iCode, 2);
    }
};

QTEST_GUILESS_MAIN(TestHostNullHandle)
#include "tst_hostnullhandle.moc"
