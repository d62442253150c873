// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "refusedhost.h"
#include "tests/support/CPrivateServer.h"
#include "tests/support/pagesample.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include <arpa/inet.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

const QString Data = QStringLiteral(QTUTILS_TEST_DATA "/tls/");
const QString Page = QStringLiteral("docs/database.md");

/// A port of this machine that others can't get; a server that shares addresses, as stunnel does, can listen.
class CKeptPort
{
public:
    CKeptPort()
    {
        const int iShared = 1;
        setsockopt(iSocket, SOL_SOCKET, SO_REUSEADDR, &iShared, sizeof iShared);
        sockaddr_in oAddress{};
        socklen_t uSize = sizeof oAddress;
        oAddress.sin_family = AF_INET;
        oAddress.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* pAddress = reinterpret_cast<sockaddr*>(&oAddress);
        if (bind(iSocket, pAddress, uSize) == 0 && getsockname(iSocket, pAddress, &uSize) == 0)
            uNumber = ntohs(oAddress.sin_port);
    }
    ~CKeptPort() { close(iSocket); }
    CKeptPort(const CKeptPort&) = delete;
    CKeptPort& operator=(const CKeptPort&) = delete;

    /// Such as "127.0.0.1:1234".
    QString address() const { return u"127.0.0.1:"_s + QString::number(uNumber); }
    /// Whether a server listens: the kernel's table has the port with the state 0A.
    bool isServed() const
    {
        QFile oSockets(u"/proc/net/tcp"_s);
        return oSockets.open(QIODevice::ReadOnly)
            && oSockets.readAll().contains(
                ":" + QByteArray::number(uNumber, 16).toUpper().rightJustified(4, '0') + " 00000000:0000 0A");
    }

private:
    int iSocket = socket(AF_INET, SOCK_STREAM, 0);
    quint16 uNumber = 0;
};

/// One end of a tunnel: stunnel with its own configuration. Ends with the object, or with the test program.
class CTunnelEnd
{
public:
    CTunnelEnd(const QString& sFile, const QString& sConfiguration)
    {
        QFile oFile(sFile);
        if (oFile.open(QIODevice::WriteOnly))
            oFile.write(sConfiguration.toUtf8());
        oFile.close();
        oProcess.setProcessChannelMode(QProcess::MergedChannels);
        oProcess.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        oProcess.start(u"stunnel"_s, {sFile});
    }
    ~CTunnelEnd()
    {
        oProcess.terminate();
        oProcess.waitForFinished();
    }
    CTunnelEnd(const CTunnelEnd&) = delete;
    CTunnelEnd& operator=(const CTunnelEnd&) = delete;

    bool hasEnded() const { return oProcess.state() == QProcess::NotRunning; }
    /// What it has said so far.
    const QByteArray& log()
    {
        oProcess.waitForReadyRead(0);
        return oLog += oProcess.readAll();
    }

private:
    QProcess oProcess;
    QByteArray oLog;
};

/// Whether a server listens at a Unix socket: the kernel's table has it with that mark.
bool isServed(const QString& sSocket)
{
    QFile oSockets(u"/proc/net/unix"_s);
    const QRegularExpression oListening(
        u" 00010000 0001 01 +\\d+ "_s + QRegularExpression::escape(sSocket) + u'\n');
    return oSockets.open(QIODevice::ReadOnly) && QString::fromUtf8(oSockets.readAll()).contains(oListening);
}

} // namespace

/// The tunnel of docs/database.md, both ends on one machine. Of the page's configurations only names, ports
/// and paths are replaced.
class TestModuleTunnel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (QStandardPaths::findExecutable(u"stunnel"_s).isEmpty())
            QSKIP("stunnel4 is not installed");
        // The end at the server gives up root's rights.
        QFile::setPermissions(QFileInfo(oServer.socket()).path(), Closed | QFile::ExeOther);
        oServer.load(u"news.sql"_s);
    }

    void theTunnelLeadsToTheServer()
    {
        // given
        CTunnelEnd oFar(oFolder.filePath(u"server.conf"_s), serverEnd(u"localhost.pem"_s));
        CTunnelEnd oNear(oFolder.filePath(u"client.conf"_s), clientEnd(u"authority.pem"_s));
        QVERIFY2(isOpen(oNear, oFar), (oNear.log() + oFar.log()).constData());
        // when
        CPlainHost oHost;
        oHost.command({"env", "MYSQL_UNIX_PORT", socket().toUtf8()});
        oHost.start();
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), 5);
    }

    void aWrongCertificateIsRefused_data()
    {
        QTest::addColumn<QString>("sCertificate");
        QTest::addColumn<QString>("sAuthority");
        QTest::addColumn<QByteArray>("oReason");
        QTest::newRow("another authority")
            << u"localhost.pem"_s << u"other-authority.pem"_s << "unable to get local issuer certificate"_ba;
        QTest::newRow("another server")
            << u"elsewhere.pem"_s << u"authority.pem"_s << "CERT: Subject checks failed"_ba;
    }

    void aWrongCertificateIsRefused()
    {
        // given
        QFETCH(QString, sCertificate);
        QFETCH(QString, sAuthority);
        QFETCH(QByteArray, oReason);
        CTunnelEnd oFar(oFolder.filePath(u"server.conf"_s), serverEnd(sCertificate));
        CTunnelEnd oNear(oFolder.filePath(u"client.conf"_s), clientEnd(sAuthority));
        QVERIFY2(isOpen(oNear, oFar), (oNear.log() + oFar.log()).constData());
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.command({"env", "MYSQL_UNIX_PORT", socket().toUtf8()});
        // when
        refusedhost::construct(oAnalyst);
        // then
        refusedhost::checkBox(oAnalyst, "Lost connection to server");
        QVERIFY2(oNear.log().contains(oReason), oNear.log().constData());
    }

    void rootOfTheServersMachineIsNobodyThroughTheTunnel()
    {
        if (geteuid() != 0)
            QSKIP("only root's stunnel can give up root's rights");
        // given: an administrator as Debian's packages have it
        oServer.sql(
            u"ALTER USER root@localhost IDENTIFIED VIA mysql_native_password USING 'invalid' OR unix_socket"_s);
        CPlainHost oLocal;
        oLocal.command({"env", "MYSQL_USER", "root"});
        oLocal.start();
        oLocal.call("select", {"i:1"});
        QCOMPARE(oLocal.numRows(), 5);
        // when
        CTunnelEnd oFar(oFolder.filePath(u"server.conf"_s), serverEnd(u"localhost.pem"_s));
        CTunnelEnd oNear(oFolder.filePath(u"client.conf"_s), clientEnd(u"authority.pem"_s));
        QVERIFY2(isOpen(oNear, oFar), (oNear.log() + oFar.log()).constData());
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.command({"env", "MYSQL_USER", "root"});
        oHost.command({"env", "MYSQL_UNIX_PORT", socket().toUtf8()});
        refusedhost::construct(oAnalyst);
        // then
        refusedhost::checkBox(oAnalyst, "Access denied for user 'root'@'localhost'");
    }

private:
    /// Somebody who isn't a service of the machine doesn't write to its log.
    const std::pair<QString, QString> Attended{u"foreground = yes\n"_s, u"foreground = yes\nsyslog = no\n"_s};
    static constexpr QFile::Permissions Closed = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

    QString socket() const { return oFolder.filePath(u"som.sock"_s); }

    QString clientEnd(const QString& sAuthority) const
    {
        return pagesample::moved(pagesample::find(Page, u"client = yes"_s),
            {Attended, {u"/run/user/1000/som.sock"_s, socket()}, {u"db.example.org:3307"_s, oPort.address()},
                {u"/etc/ssl/som-ca.pem"_s, Data + sAuthority}, {u"db.example.org"_s, u"localhost"_s}});
    }

    /// Who isn't root can't be another user.
    QString serverEnd(const QString& sCertificate) const
    {
        const QString sConfiguration = pagesample::moved(pagesample::find(Page, u"setuid"_s),
            {Attended, {u"accept = 3307"_s, u"accept = "_s + oPort.address()},
                {u"/run/mysqld/mysqld.sock"_s, oServer.socket()},
                {u"/etc/ssl/som-cert.pem"_s, Data + sCertificate},
                {u"/etc/ssl/som-key.pem"_s, Data + u"server-key.pem"_s}});
        return geteuid() == 0 ? sConfiguration
                              : pagesample::moved(sConfiguration,
                                  {{u"setuid = stunnel4\n"_s, u""_s}, {u"setgid = stunnel4\n"_s, u""_s}});
    }

    /// Waits until both ends listen, or one has ended.
    bool isOpen(const CTunnelEnd& oNear, const CTunnelEnd& oFar) const
    {
        const auto isDone = [&] {
            return (oPort.isServed() && isServed(socket())) || oNear.hasEnded() || oFar.hasEnded();
        };
        return QTest::qWaitFor(isDone, 20000) && !oNear.hasEnded() && !oFar.hasEnded();
    }

    CKeptPort oPort;
    QTemporaryDir oFolder;
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleTunnel)
#include "tst_module_tunnel.moc"
