// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "listening.h"
#include "moduletest.h"
#include "refusedhost.h"
#include "tests/support/CPrivateServer.h"
#include "tests/support/pagesample.h"

#include <QFile>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>

using namespace Qt::StringLiterals;

namespace {

const QString Data = QStringLiteral(QTUTILS_TEST_DATA "/tls/");

/// A server that says that it can't encrypt, and listens to what it is told then.
class CPlainServer
{
public:
    explicit CPlainServer(const QByteArray& oName)
        : oPath(oName)
    {
        sockaddr_un oAddress{};
        oAddress.sun_family = AF_UNIX;
        qstrncpy(oAddress.sun_path, oPath.constData(), sizeof oAddress.sun_path);
        listenAt(iSocket, oAddress);
    }
    ~CPlainServer() { close(iSocket); }
    CPlainServer(const CPlainServer&) = delete;
    CPlainServer& operator=(const CPlainServer&) = delete;

    /// Greets a client; all that it says before it hangs up, or before it asks for an answer.
    QByteArray told() const
    {
        const int iClient = accept(iSocket, nullptr, nullptr);
        const QByteArray oGreeting = greeting();
        send(iClient, oGreeting.constData(), size_t(oGreeting.size()), MSG_NOSIGNAL);
        std::array<char, 1000> acTold{};
        const auto nTold = recv(iClient, acTold.data(), acTold.size(), 0);
        close(iClient);
        return nTold > 0 ? QByteArray(acTold.data(), nTold) : QByteArray();
    }

private:
    // Protocol 10, a version, thread 1, and what the server can do: all but TLS (bit 11).
    static QByteArray greeting()
    {
        const QByteArray oText = QByteArray("\x0a") + "10.11.0\0"_ba + "\1\0\0\0"_ba + "abcdefgh\0"_ba
            + "\xff\xf7"_ba + "\x21\x02\0"_ba + "\xff\x81"_ba + char(21) + QByteArray(10, '\0')
            + "ijklmnopqrst\0"_ba + "mysql_native_password\0"_ba;
        return QByteArray(1, char(oText.size())) + QByteArray(3, '\0') + oText;
    }

    QByteArray oPath;
    int iSocket = socket(AF_UNIX, SOCK_STREAM, 0);
};

} // namespace

/// A host of the form NAME=VALUE;NAME=VALUE is a list of the client library's options, by which the
/// connection is encrypted.
class TestModuleEncryption : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        oServer.sql(u"ALTER USER reader@localhost REQUIRE SSL"_s);
    }

    void init() { certify(u"localhost.pem"_s); }

    void anEncryptedConnectionIsUsedAsAnyOther_data()
    {
        QTest::addColumn<QString>("sPage");
        for (const QString& sPage : Pages)
            QTest::newRow(qPrintable(sPage)) << sPage;
    }

    void anEncryptedConnectionIsUsedAsAnyOther()
    {
        QFETCH(QString, sPage);
        CPlainHost oHost;
        oHost.command({"env", "MYSQL_HOST", optionsOf(sPage, Authority)});
        oHost.start();
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
    }

    void theHostIsThatOfTheOptions_data() { anEncryptedConnectionIsUsedAsAnyOther_data(); }

    void theHostIsThatOfTheOptions()
    {
        // given: a port where nobody listens
        QFETCH(QString, sPage);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.command({"env", "MYSQL_TCP_PORT", "1"});
        oHost.command({"env", "MYSQL_HOST", optionsOf(sPage, Authority, u"127.0.0.1"_s)});
        // when
        refusedhost::construct(oAnalyst);
        // then
        refusedhost::checkBox(oAnalyst, "Can't connect to server on '127.0.0.1'");
    }

    void anyOtherConnectionIsRefused_data()
    {
        QTest::addColumn<QByteArray>("oHostName");
        QTest::addColumn<QString>("sCertificate");
        QTest::addColumn<QByteArray>("oReason");
        const auto row = [](const char* pcName, const QByteArray& oHostName, const QString& sCertificate,
                             const QByteArray& oReason) {
            QTest::newRow(pcName) << oHostName << sCertificate << oReason;
        };
        const QByteArray oDenied = "Access denied for user 'reader'@'localhost' (using password: YES)";
        row("in plain", "localhost", u"localhost.pem"_s, oDenied);
        row("options without encryption", options(), u"localhost.pem"_s, oDenied);
        row("an option without its value", options() + ";ssl-verify-server-cert", u"localhost.pem"_s,
            oDenied);
        row("an unknown authority", options() + Verified, u"localhost.pem"_s, "TLS/SSL error: ");
        for (const QString& sPage : Pages) {
            row(qPrintable(u"another authority, "_s + sPage), optionsOf(sPage, OtherAuthority),
                u"localhost.pem"_s, "TLS/SSL error: ");
            row(qPrintable(u"another server, "_s + sPage), optionsOf(sPage, Authority), u"elsewhere.pem"_s,
                "TLS/SSL error: Validation of SSL server certificate failed");
        }
    }

    void anyOtherConnectionIsRefused()
    {
        // given
        QFETCH(QByteArray, oHostName);
        QFETCH(QString, sCertificate);
        QFETCH(QByteArray, oReason);
        certify(sCertificate);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.command({"env", "MYSQL_HOST", oHostName});
        // when
        refusedhost::construct(oAnalyst);
        // then
        refusedhost::checkBox(oAnalyst, oReason);
    }

    void aServerThatCantEncryptIsToldNothing_data()
    {
        QTest::addColumn<QByteArray>("oOptions");
        QTest::addColumn<bool>("bTold");
        QTest::newRow("verified") << Verified << false;
        QTest::newRow("verified by an authority") << ";ssl-ca=" + Authority + Verified << false;
        QTest::newRow("an authority alone") << ";ssl-ca=" + Authority << true;
        QTest::newRow("enforced") << ";ssl-enforce=1"_ba << true;
    }

    void aServerThatCantEncryptIsToldNothing()
    {
        // given
        QFETCH(QByteArray, oOptions);
        QFETCH(bool, bTold);
        const QByteArray oSocket = oFolder.filePath(u"plain"_s).toUtf8();
        const CPlainServer oPlain(oSocket);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.command({"env", "MYSQL_HOST", "socket=" + oSocket + oOptions});
        // when
        refusedhost::construct(oAnalyst);
        // then
        QCOMPARE(oPlain.told().contains("reader"), bTold);
        refusedhost::checkBox(
            oAnalyst, bTold ? "" : "TLS/SSL error: SSL is required, but the server does not support it");
        QFile::remove(QString::fromUtf8(oSocket));
    }

    void optionFilesAreNotRead()
    {
        // given
        QFile oOptions(oFolder.filePath(u".my.cnf"_s));
        QVERIFY(oOptions.open(QFile::WriteOnly));
        oOptions.write("[client]\nssl-ca=" + Authority + "\nssl-verify-server-cert\n");
        oOptions.close();
        QVERIFY(oOptions.copy(oFolder.filePath(u"my.cnf"_s)));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        for (const char* pcVariable : {"HOME", "MYSQL_HOME", "MARIADB_HOME"})
            oHost.command({"env", pcVariable, oFolder.path().toUtf8()});
        // when
        refusedhost::construct(oAnalyst);
        // then: the user may not come in plain
        refusedhost::checkBox(oAnalyst, "Access denied for user 'reader'@'localhost'");
    }

private:
    /// Gives the server a certificate of tests/data/tls.
    void certify(const QString& sCertificate) const
    {
        QFile::remove(oFolder.filePath(u"certificate"_s));
        QVERIFY(QFile::copy(Data + sCertificate, oFolder.filePath(u"certificate"_s)));
        oServer.sql(u"FLUSH SSL"_s);
    }

    QStringList serverOptions() const
    {
        QFile::copy(Data + u"localhost.pem"_s, oFolder.filePath(u"certificate"_s));
        return {u"--ssl-cert="_s + oFolder.filePath(u"certificate"_s),
            u"--ssl-key="_s + Data + u"server-key.pem"_s};
    }

    /// The private server, in the form that takes options.
    QByteArray options() const { return "host=localhost;socket=" + oServer.socket().toUtf8(); }

    /// MYSQL_HOST as a page has it, for the private server: its socket is in MYSQL_UNIX_PORT.
    static QByteArray optionsOf(
        const QString& sPage, const QByteArray& oAuthority, const QString& sHost = u"localhost"_s)
    {
        const QString sLine = pagesample::moved(pagesample::find(sPage, u"MYSQL_HOST='"_s),
            {{u"db.example.org"_s, sHost}, {u"/etc/ssl/som-ca.pem"_s, QString::fromUtf8(oAuthority)}});
        return sLine.section(u'\'', 1, 1).toUtf8();
    }

    const QStringList Pages{u"docs/database.md"_s, u"docs/security.md"_s};
    const QByteArray Authority = Data.toUtf8() + "authority.pem";
    const QByteArray OtherAuthority = Data.toUtf8() + "other-authority.pem";
    const QByteArray Verified = ";ssl-verify-server-cert=1";
    QTemporaryDir oFolder;
    CPrivateServer oServer{serverOptions()};
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleEncryption)
#include "tst_module_encryption.moc"
