// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "CFakeBrowser.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

using namespace Qt::StringLiterals;

/// What the database's user may do, and what the server lets through.
class TestModuleFaultsRights : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        oServer.sql(u"CREATE USER 'reader2'@'localhost' IDENTIFIED BY 'a password'"_s);
    }

    void init()
    {
        for (const QString& sTable : Tables)
            oServer.sql(u"GRANT SELECT ON %1 TO 'reader2'@'localhost'"_s.arg(sTable));
        qputenv("MYSQL_USER", "reader2");
    }

    void toReadTheThreeTablesIsEnoughForEverything()
    {
        // given
        oServer.startLog();
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, CFakeBrowser::State::Running);
        // when, then: the host
        oAnalyst.startAt(1);
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oHost.call("fillDate", {"oi:5"}), "0 2010 2220 3376 4320");
        oHost.call("setRowColors", {"c:5x120,255,255"});
        oHost.call("markRow", {"k:2005-03-01 13:00:00", "i:1"});
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), "18494640");
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "2005-02-27T23:59:59");
        changeTable(oHost);
        treehost::pass(oHost, Nodes);
        // and the user
        QCOMPARE(oAnalyst.tree().first(), "v 0 | alles, viel, mehr");
        oAnalyst.click(oAnalyst.item(2));
        oAnalyst.choose("Show", "URL");
        oAnalyst.choose("Sort", "title");
        QCOMPARE(oAnalyst.table(),
            QByteArrayList({"date | title | URL", "11.05.06 12:00 | Herbst | http://news.example/7",
                "10.05.06 12:00 | Sommer | http://news.example/6"}));
        oAnalyst.doubleClickCell(1, "URL");
        QTUTILS_WAIT_FOR(oAnalyst.focus() == "0/fullEdit");
        QCOMPARE(oBrowser.calls().size(), 1);
        oAnalyst.find("warm");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "7-11: warm");
        oAnalyst.press({"alt+F4"});
        QTUTILS_WAIT_FOR(oAnalyst.focus() == "table");
        const QRect oBox = oAnalyst.part("checkdate");
        oAnalyst.click({oBox.topLeft(), QSize(16, oBox.height())});
        QCOMPARE(oAnalyst.table().size(), 3);
        // then: nothing was asked for but rows
        for (const QString& sStatement : oServer.log())
            QVERIFY2(sStatement.startsWith(u"SELECT "_s), qPrintable(sStatement));
        QCOMPARE(oServer.log().size(), 9);
    }

    void aRightThatIsTakenLeavesNothingUntilItIsGivenBack_data()
    {
        QTest::addColumn<QString>("sRight");
        QTest::addColumn<int>("iRows");
        QTest::addColumn<QByteArray>("oNode");
        QTest::newRow("assignments") << Tables[0] << 0 << "  - 1 | red, green, blue"_ba;
        QTest::newRow("keywords") << Tables[1] << 5 << "  - 1 | "_ba;
        QTest::newRow("documents") << Tables[2] << 0 << "  - 1 | red, green, blue"_ba;
    }

    void aRightThatIsTakenLeavesNothingUntilItIsGivenBack()
    {
        // given
        QFETCH(QString, sRight);
        QFETCH(int, iRows);
        QFETCH(QByteArray, oNode);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(2);
        QCOMPARE(oHost.numRows(), 2);
        // when
        oServer.sql(u"REVOKE SELECT ON %1 FROM 'reader2'@'localhost'"_s.arg(sRight));
        treehost::pass(oHost, Nodes);
        if (sRight == Tables[1])
            oHost.announceErrors({"CListView: WARNING: Could not connect to Database, using               "
                                  "select-statement: SELECT _assigned_topic, _keywords FROM news_som "});
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), iRows);
        QCOMPARE(oAnalyst.tree().value(1).left(oNode.size()), oNode);
        QCOMPARE(oAnalyst.dialog(), "none");
        // when
        oServer.sql(u"GRANT SELECT ON %1 TO 'reader2'@'localhost'"_s.arg(sRight));
        treehost::pass(oHost, Nodes);
        oHost.call("select", {"i:2"});
        // then
        QCOMPARE(oHost.numRows(), 2);
        QCOMPARE(oAnalyst.tree().value(1), "  - 1 | red, green, blue");
    }

    void someColumnsAreNotEnough()
    {
        oServer.sql(u"REVOKE SELECT ON news.document FROM 'reader2'@'localhost'; "
                    "GRANT SELECT (id, date, title) ON news.document TO 'reader2'@'localhost'"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oAnalyst.table(), QByteArrayList{""});
        oServer.sql(u"REVOKE SELECT (id, date, title) ON news.document FROM 'reader2'@'localhost'"_s);
    }

    void aDocumentMayBeLargerThanTheServersPackets()
    {
        // given
        oServer.sql(u"CREATE DATABASE big; CREATE TABLE big.document SELECT * FROM news.document; "
                    "UPDATE big.document SET text=CONCAT(REPEAT('word ', 20000), 'last') WHERE id=6; "
                    "GRANT SELECT ON big.document TO 'reader2'@'localhost'; "
                    "SET GLOBAL max_allowed_packet=1024"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.call("CNodeBrowser", {"t:som", "t:big"});
        oAnalyst.showWindow();
        // when
        oHost.call("select", {"i:2"});
        // then
        QCOMPARE(oHost.numRows(), 2);
        oAnalyst.openViewer(0);
        oAnalyst.find("last");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "100000-100004: last");
        oScreen.press({"alt+F4"});
        oScreen.press({"alt+F4"});
        oServer.sql(u"SET GLOBAL max_allowed_packet=16777216"_s);
    }

    void aStatementThatIsTooLargeEndsTheConnection()
    {
        // given
        oServer.sql(u"SET GLOBAL max_allowed_packet=1024"_s);
        CPlainHost oHost;
        oHost.start();
        // when
        oHost.announceErrors({"CNodeBrowser: Changed Table to " + QByteArray(20000, 'a')});
        oHost.call("setSOMTable", {"r:20000xa"});
        changeTable(oHost);
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), 0);
        // when
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        oHost.call("setSOMTable", {"t:news_train"});
        QVERIFY(oHost.construct().endsWith("window"));
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), 5);
        oServer.sql(u"SET GLOBAL max_allowed_packet=16777216"_s);
    }

private:
    static void changeTable(CPlainHost& oHost)
    {
        oHost.announceErrors({"CNodeBrowser: Changed Table to news_train"});
        oHost.call("setSOMTable", {"t:news_train"});
    }

    const QByteArrayList Nodes{"1,2,3", "", "", ""};
    const QStringList Tables{u"som.news_train"_s, u"som.news_som"_s, u"news.document"_s};
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleFaultsRights)
#include "tst_module_faults_rights.moc"
