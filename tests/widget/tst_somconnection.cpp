// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "data/somconnection.h"

#include "tests/support/CDialogs.h"
#include "tests/support/CPrivateServer.h"
#include "tests/support/CStandardOutput.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <csignal>

using namespace Qt::StringLiterals;

class TestSOMConnection : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    // The client library takes broken pipes over when it is used for the first time.
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        struct sigaction oBefore = {};
        struct sigaction oOurs = {};
        oOurs.sa_handler = [](int) {};
        sigaction(SIGPIPE, &oOurs, &oBefore);
        QSqlDatabase oDatabase = connection();
        QVERIFY(somconnection::open(oDatabase));
        struct sigaction oAfter = {};
        sigaction(SIGPIPE, &oBefore, &oAfter);
        bBrokenPipesLeft = oAfter.sa_handler == oOurs.sa_handler;
        oDatabase = QSqlDatabase();
        somconnection::remove();
    }

    void cleanup() { somconnection::remove(); }

    void aConnectionIsMadeFromItsParameters()
    {
        const QSqlDatabase oDatabase = somconnection::add(u"a"_s, u"b"_s, u"c"_s, u"d"_s);
        QCOMPARE(oDatabase.connectionName(), u"som"_s);
        QCOMPARE(oDatabase.driverName(), u"QMYSQL"_s);
        QCOMPARE(oDatabase.hostName(), u"a"_s);
        QCOMPARE(oDatabase.userName(), u"b"_s);
        QCOMPARE(oDatabase.password(), u"c"_s);
        QCOMPARE(oDatabase.databaseName(), u"d"_s);
        QCOMPARE(oDatabase.port(), -1);
        QCOMPARE(oDatabase.connectOptions(), QString());
        QVERIFY(!oDatabase.isOpen());
    }

    void openingSaysNothing()
    {
        QSqlDatabase oDatabase = connection();
        CDialogs dialogs;
        CStandardOutput output;
        const bool bOpen = somconnection::open(oDatabase);
        QCOMPARE(output.lines(), QStringList());
        QCOMPARE(dialogs.texts(), QStringList());
        QVERIFY(bOpen && oDatabase.isOpen());
    }

    void aFailureIsSaidOnceOnStandardOutputAndInABox_data()
    {
        QTest::addColumn<QString>("sPassword");
        QTest::addColumn<QString>("sDatabase");
        QTest::addColumn<QString>("sReason");
        QTest::newRow("wrong password")
            << u"wrong"_s << u"som"_s
            << u"Access denied for user 'reader'@'localhost' (using password: YES)"_s;
        QTest::newRow("no password") << u""_s << u"som"_s
                                     << u"Access denied for user 'reader'@'localhost' (using password: NO)"_s;
        QTest::newRow("missing database")
            << qEnvironmentVariable("MYSQL_PWD") << u"nowhere"_s << u"Unknown database 'nowhere'"_s;
    }

    void aFailureIsSaidOnceOnStandardOutputAndInABox()
    {
        QFETCH(QString, sPassword);
        QFETCH(QString, sDatabase);
        QFETCH(QString, sReason);
        qunsetenv("MYSQL_PWD"); // else the client library takes it for an empty password
        QSqlDatabase oDatabase = connection(sPassword, sDatabase);
        CDialogs dialogs;
        CStandardOutput output;
        const bool bOpen = somconnection::open(oDatabase);
        const QStringList slLines = output.lines();
        qputenv("MYSQL_PWD", oPassword);
        QVERIFY(!bOpen);
        QCOMPARE(slLines, QStringList{u"show error"_s});
        QCOMPARE(dialogs.texts(),
            QStringList{u"SQL Error: Could not open SOM Database!\n\n"_s + sReason
                + u" QMYSQL: Unable to connect"_s});
    }

    void aConnectionThatFailedCanBeOpenedLater()
    {
        QSqlDatabase oDatabase = connection();
        oServer.kill();
        CDialogs dialogs;
        CStandardOutput output;
        const bool bOpenWithoutServer = somconnection::open(oDatabase);
        const QStringList slLines = output.lines();
        oServer.restart();
        QVERIFY(!bOpenWithoutServer);
        QCOMPARE(slLines, QStringList{u"show error"_s});
        QVERIFY(somconnection::open(oDatabase));
        QCOMPARE(dialogs.texts().size(), 1);
    }

    void theHandlingOfBrokenPipesStaysAsItWas() { QVERIFY(bBrokenPipesLeft); }

    void aRemovedConnectionCanBeMadeAgain()
    {
        somconnection::add(u"a"_s, u"b"_s, u"c"_s, u"d"_s);
        somconnection::remove();
        QVERIFY(!QSqlDatabase::contains(u"som"_s));
        QCOMPARE(somconnection::add(u"e"_s, u"f"_s, u"g"_s, u"h"_s).hostName(), u"e"_s);
    }

private:
    QSqlDatabase connection() { return connection(qEnvironmentVariable("MYSQL_PWD"), u"som"_s); }

    static QSqlDatabase connection(const QString& sPassword, const QString& sDatabase)
    {
        return somconnection::add(
            qEnvironmentVariable("MYSQL_HOST"), qEnvironmentVariable("MYSQL_USER"), sPassword, sDatabase);
    }

    CPrivateServer oServer;
    const QByteArray oPassword = qgetenv("MYSQL_PWD");
    bool bBrokenPipesLeft = false;
};

QTUTILS_WIDGET_TEST_MAIN(TestSOMConnection, CPrivateDisplay::Manager::None)
#include "tst_somconnection.moc"
