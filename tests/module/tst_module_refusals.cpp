// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"
#include "CScreen.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// Constructions that fail, again and again, with good ones between them.
class TestModuleRefusals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void aFailedConstructionCountsAndAGoodOneMayFollowItsFree_data()
    {
        QTest::addColumn<QByteArrayList>("lBreak");
        QTest::addColumn<QByteArrayList>("lMend");
        QTest::addColumn<QByteArray>("oError");
        for (const char* pcVariable : {"MYSQL_HOST", "MYSQL_USER", "MYSQL_PWD"})
            QTest::newRow(pcVariable) << QByteArrayList{"unenv", pcVariable}
                                      << QByteArrayList{"env", pcVariable, "?"} << QByteArray();
        const QByteArray oNoDisplay("qtutils: the display cannot be opened");
        QTest::newRow("no display") << QByteArrayList{"unenv", "DISPLAY"}
                                    << QByteArrayList{"env", "DISPLAY", "?"} << oNoDisplay;
        QTest::newRow("wrong display") << QByteArrayList{"env", "DISPLAY", ":9999"}
                                       << QByteArrayList{"env", "DISPLAY", "?"} << oNoDisplay;
        QTest::newRow("application of the host's own")
            << QByteArrayList{"library", QTUTILS_QT_APPLICATION} << QByteArrayList{"library"}
            << QByteArray("qtutils: the host has an application object of its own");
    }

    void aFailedConstructionCountsAndAGoodOneMayFollowItsFree()
    {
        QFETCH(QByteArrayList, lBreak);
        QFETCH(QByteArrayList, lMend);
        QFETCH(QByteArray, oError);
        for (int i = 0; i < repetitions(2); i++) {
            // given
            CPlainHost oHost;
            oHost.load();
            if (lMend.last() == "?")
                lMend.last() = oHost.command({"getenv", lMend[1]});
            // A display that once was there isn't asked for again.
            for (int iRound = 0; iRound < (oError.isEmpty() ? 2 : 1); iRound++) {
                failOnce(oHost, lBreak, oError);
                // when
                oHost.command(lMend);
                QCOMPARE(oHost.construct(), "null");
                for (int iFrees = 0; iFrees < 3; iFrees++)
                    oHost.free();
                // then
                if (lBreak.first() == "library") // Qt's first application object was in the main thread
                    oHost.announceErrors({"WARNING: QApplication was not created in the main() thread."});
                useOnce(oHost);
            }
            // when
            oHost.give({"exit", "3"});
            // then
            QCOMPARE(oHost.end(), "3");
        }
    }

private:
    static void failOnce(CPlainHost& oHost, const QByteArrayList& lBreak, const QByteArray& oError)
    {
        oHost.command({"env", "LANG", "C.UTF-8"});
        oHost.command(lBreak);
        QCOMPARE(oHost.construct(), "null");
        QCOMPARE(oHost.command({"getenv", "LANG"}), "de_DE");
        QCOMPARE(oHost.construct(), "null");
        QCOMPARE(oHost.numRows(), -7777);
        if (!oError.isEmpty())
            oHost.announceErrors({oError});
    }

    static void useOnce(CPlainHost& oHost)
    {
        oHost.call("setSOMTable", {"t:news_train"});
        QVERIFY(oHost.construct().endsWith("window"));
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        QCOMPARE(oHost.numRows(), -7777);
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleRefusals)
#include "tst_module_refusals.moc"
