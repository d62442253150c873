// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

using namespace Qt::StringLiterals;

namespace {

const QString NodeOne = u"SELECT node, dist, document.* FROM news_train, news.document "
                        "WHERE news.document.id=news_train.item AND node=1 ORDER BY date"_s;

QString documents(const QString& sNode, const QString& sSort = u"date"_s)
{
    return QString(NodeOne).replace(u"=1 "_s, u'=' + sNode + u' ').replace(u"BY date"_s, u"BY "_s + sSort);
}

QString inTables(const QString& sStatement, const QString& sSOMTable, const QString& sSource = u"news"_s)
{
    return QString(sStatement)
        .replace(u"news_train"_s, sSOMTable)
        .replace(u"news.document"_s, sSource + u".document"_s);
}

} // namespace

/// What the server is asked for, and what the table shows then.
class TestModuleSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        oServer.sql(u"INSERT INTO news.document (id, date, title) SELECT 100 + seq, "
                    "'2007-01-01' + INTERVAL seq DAY, CONCAT('Nr. ', seq) FROM news.seq_1_to_100; "
                    "INSERT INTO som.news_train SELECT 9, 0, 100 + seq FROM news.seq_1_to_100"_s);
    }

    void theStatementNamesTheNode_data()
    {
        QTest::addColumn<QByteArray>("oNode");
        QTest::addColumn<int>("iRows");
        QTest::newRow("0") << "0"_ba << 1;
        QTest::newRow("17") << "17"_ba << 0;
        QTest::newRow("greatest") << "2147483647"_ba << 0;
    }

    void theStatementNamesTheNode()
    {
        QFETCH(QByteArray, oNode);
        CPlainHost oHost;
        oHost.start();
        oServer.startLog();
        oHost.call("select", {"i:" + oNode});
        QTEST(oHost.numRows(), "iRows");
        QCOMPARE(oServer.log(), QStringList{documents(QString::fromLatin1(oNode))});
    }

    void aNegativeNodeLeavesTheNodeBeforeInForce_data()
    {
        QTest::addColumn<QByteArray>("oNode");
        QTest::newRow("-1") << "i:-1"_ba;
        QTest::newRow("least") << "i:-2147483648"_ba;
    }

    void aNegativeNodeLeavesTheNodeBeforeInForce()
    {
        // given
        QFETCH(QByteArray, oNode);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(2);
        oAnalyst.clickCell(1, "title");
        const QByteArrayList lShown = oAnalyst.table();
        QCOMPARE(lShown.size(), 3);
        oServer.startLog();
        // when
        oHost.call("select", {oNode});
        // then
        QCOMPARE(oAnalyst.table(), lShown);
        QCOMPARE(oAnalyst.currentCell(), "1 1");
        QCOMPARE(oServer.log(), QStringList());
        // when
        oAnalyst.choose("Sort", "id");
        // then
        oAnalyst.table();
        QCOMPARE(oServer.log(), QStringList{documents(u"2"_s, u"id"_s)});
    }

    void theSameNodeAgainIsAskedForAgain()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        const QByteArrayList lShown = oAnalyst.table();
        oServer.startLog();
        oHost.call("select", {"i:1"});
        oHost.call("select", {"i:1"});
        QCOMPARE(oAnalyst.table(), lShown);
        QCOMPARE(oServer.log(), QStringList({NodeOne, NodeOne}));
    }

    void theRowsAreSortedByTheChosenColumn_data()
    {
        QTest::addColumn<QString>("sColumn");
        QTest::addColumn<QByteArray>("oInitials"); ///< of the titles
        QTest::newRow("dist") << u"dist"_s << "SWÄZN"_ba;
        QTest::newRow("id") << u"id"_s << "SWÄZN"_ba;
        QTest::newRow("date") << u"date"_s << "ZNSWÄ"_ba;
        QTest::newRow("title") << u"title"_s << "ÄNSWZ"_ba;
        QTest::newRow("URL") << u"URL"_s << "SWÄZN"_ba;
        QTest::newRow("text") << u"text"_s << "NWÄSZ"_ba;
        QTest::newRow("rate") << u"rate"_s << "ZSWNÄ"_ba;
    }

    void theRowsAreSortedByTheChosenColumn()
    {
        QFETCH(QString, sColumn);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oServer.startLog();
        oAnalyst.choose("Sort", sColumn.toUtf8());
        QTEST(initials(oAnalyst.table()), "oInitials");
        QCOMPARE(oServer.log(), QStringList{documents(u"1"_s, sColumn)});
    }

    // The node and its author are the same for several rows, whose order is the server's.
    void rowsThatAreAlikeAreSortedStill()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oServer.startLog();
        oAnalyst.choose("Sort", "node");
        oAnalyst.choose("Sort", "author");
        QCOMPARE(initials(oAnalyst.table()).right(1), "Z");
        QCOMPARE(oServer.log(), QStringList({documents(u"1"_s, u"node"_s), documents(u"1"_s, u"author"_s)}));
    }

    void theSortColumnStaysForOtherNodesAndTables()
    {
        // given
        oServer.sql(u"CREATE OR REPLACE VIEW som.others AS SELECT 2 node, 0.5 dist, 7 item"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.choose("Sort", "rate");
        oAnalyst.table();
        oServer.startLog();
        // when
        oHost.call("select", {"i:2"});
        oHost.announceErrors({"CNodeBrowser: Changed Table to others"});
        oHost.call("setSOMTable", {"t:others"});
        oHost.call("select", {"i:2"});
        // then
        QCOMPARE(oAnalyst.table(), QByteArrayList({"date | title", "11.05.06 12:00 | Herbst"}));
        const QString sTwo = documents(u"2"_s, u"rate"_s);
        QCOMPARE(oServer.log(),
            QStringList({sTwo, u"SELECT node, dist, document.* FROM others, news.document LIMIT 1"_s,
                inTables(sTwo, u"others"_s)}));
    }

    void namesGoInAsTheyStand()
    {
        // given
        oServer.sql(u"CREATE OR REPLACE VIEW som.`the map` AS SELECT * FROM som.news_train; "
                    "CREATE DATABASE `the news`; "
                    "CREATE VIEW `the news`.document AS SELECT * FROM news.document"_s);
        CPlainHost oHost;
        oServer.startLog();
        // when
        oHost.load();
        oHost.call("setSOMTable", {"t:`the map`"});
        oHost.call("CNodeBrowser", {"t:som", "t:`the news`"});
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oServer.log(),
            QStringList({u"SELECT node, dist, document.* FROM `the map`, `the news`.document LIMIT 1"_s,
                inTables(NodeOne, u"`the map`"_s, u"`the news`"_s)}));
    }

    void withoutAnyColumnTheRowsAreCountedStill()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oServer.startLog();
        oAnalyst.choose("Show", "title");
        oAnalyst.choose("Show", "date");
        QCOMPARE(oAnalyst.table().first(), "");
        QCOMPARE(oServer.log(), QStringList({NodeOne, NodeOne}));
        QCOMPARE(oHost.numRows(), 5);
    }

    void aNodeWithoutDocumentsHasHeadersOnly()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oHost.call("select", {"i:3"});
        QCOMPARE(oAnalyst.table(), QByteArrayList{"date | title"});
        QVERIFY(!oAnalyst.tableHeader("title").isEmpty());
        QCOMPARE(oAnalyst.rowsInSight(), "-1 -1");
    }

    void lookingAtTheRowsAsksNothing()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(9);
        oAnalyst.table();
        oServer.startLog();
        oAnalyst.clickCell(2, "title");
        oAnalyst.press({"Next", "Down", "End", "Home"});
        oScreen.resize("Ombrel", {900, 900});
        QTUTILS_WAIT_FOR(oScreen.place("Ombrel").size() == QSize(900, 900));
        QCOMPARE(oAnalyst.currentCell(), "0 1");
        QCOMPARE(oServer.log(), QStringList());
    }

    void aSelectionBeginsAtTheTopWithoutACurrentRow_data()
    {
        QTest::addColumn<QByteArrayList>("lChoice");
        QTest::newRow("of the host") << QByteArrayList{"i:9"};
        QTest::newRow("for a column") << QByteArrayList{"Show", "author"};
        QTest::newRow("for the order") << QByteArrayList{"Sort", "id"};
    }

    void aSelectionBeginsAtTheTopWithoutACurrentRow()
    {
        // given
        QFETCH(QByteArrayList, lChoice);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(9);
        oAnalyst.clickCell(2, "title");
        oAnalyst.press({"End"});
        QCOMPARE(oAnalyst.currentCell(), "99 1");
        QVERIFY(oAnalyst.rowsInSight().endsWith(" 99"));
        // when
        if (lChoice.size() == 1)
            oHost.call("select", lChoice);
        else
            oAnalyst.choose(lChoice[0], lChoice[1]);
        // then
        QCOMPARE(oAnalyst.currentCell(), "none");
        QVERIFY(oAnalyst.rowsInSight().startsWith("0 "));
        // and the keys begin at the first row
        oAnalyst.press({"Down"});
        QCOMPARE(oAnalyst.currentCell(), "0 0");
    }

private:
    /// The first letter of each row's title.
    static QByteArray initials(const QByteArrayList& lTable)
    {
        QString sInitials;
        for (const QByteArray& oRow : lTable.mid(1))
            sInitials += QString::fromUtf8(oRow).section(u" | "_s, 1, 1).first(1);
        return sInitials.toUtf8();
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleSelection)
#include "tst_module_selection.moc"
