// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

using namespace Qt::StringLiterals;

/// Tables and columns go away, come back and change while a window shows them; rights as well.
class TestModuleFaultsTables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void everyColumnCanGoAwayAndComeBack_data()
    {
        QTest::addColumn<QString>("sColumn"); ///< database, table and column
        QTest::addColumn<QByteArrayList>("lTable"); ///< the selection shown meanwhile
        QTest::addColumn<QByteArray>("oText"); ///< the panel behind a click on the first row
        QTest::addColumn<int>("iEntries"); ///< of the menus, once they are made anew
        const QByteArrayList lNone{"date | title"};
        const QByteArrayList lAll{"date | title", "10.05.06 12:00 | Sommer", "11.05.06 12:00 | Herbst"};
        const auto row = [](const QString& sColumn, const QByteArrayList& lTable, const QByteArray& oText,
                             int iEntries) {
            QTest::newRow(sColumn.toUtf8().constData()) << sColumn << lTable << oText << iEntries;
        };
        row(u"som.news_train.node"_s, lNone, "no article selected", 0);
        row(u"som.news_train.dist"_s, lNone, "no article selected", 0);
        row(u"som.news_train.item"_s, lNone, "no article selected", 9);
        row(u"news.document.id"_s, lNone, "no article selected", 9);
        row(u"news.document.date"_s, lNone, "no article selected", 9);
        row(u"news.document.title"_s, {"date | title", "10.05.06 12:00 | ", "11.05.06 12:00 | "},
            "Es ist warm.", 9);
        row(u"news.document.URL"_s, lAll, "Es ist warm.", 9);
        row(u"news.document.text"_s, lAll, "no text available", 9);
        row(u"som.news_som._keywords"_s, lAll, "Es ist warm.", 9);
        row(u"som.news_som._assigned_topic"_s, lAll, "Es ist warm.", 9);
    }

    void everyColumnCanGoAwayAndComeBack()
    {
        // given
        QFETCH(QString, sColumn);
        QFETCH(QByteArrayList, lTable);
        QFETCH(QByteArray, oText);
        QFETCH(int, iEntries);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        QCOMPARE(oHost.numRows(), 5);
        // when
        const QString sBack = rename(sColumn);
        oHost.call("select", {"i:2"});
        // then
        QCOMPARE(oAnalyst.table(), lTable);
        QCOMPARE(oHost.numRows(), int(lTable.size()) - 1);
        click(oAnalyst);
        QCOMPARE(oAnalyst.text("texteditor"), oText);
        // when
        changeTable(oHost);
        passHierarchy(oHost, sColumn.contains(u"news_som"_s));
        // then
        QCOMPARE(entries(oAnalyst), iEntries);
        QCOMPARE(
            oAnalyst.tree()[1], sColumn.contains(u"news_som"_s) ? "  - 1 | " : "  - 1 | red, green, blue");
        QCOMPARE(oAnalyst.dialog(), "none");
        // when
        oServer.sql(sBack);
        changeTable(oHost);
        passHierarchy(oHost, false);
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oAnalyst.table().value(1), "27.02.05 23:59 | Zug entgleist");
        QCOMPARE(entries(oAnalyst), 9);
        QCOMPARE(oAnalyst.currentNode(), "1");
        QCOMPARE(oAnalyst.tree()[1], "  - 1 | red, green, blue <");
    }

    void aWindowCanBeMadeWithoutAColumn_data()
    {
        QTest::addColumn<QString>("sColumn");
        QTest::addColumn<QByteArrayList>("lTable"); ///< node 2
        const auto row = [](const QString& sColumn, const QByteArrayList& lTable) {
            QTest::newRow(sColumn.toUtf8().constData()) << sColumn << lTable;
        };
        row(u"som.news_train.node"_s, {""});
        row(u"som.news_train.dist"_s, {""});
        row(u"som.news_train.item"_s, {"date | title"});
        row(u"news.document.id"_s, {"date | title"});
        row(u"news.document.date"_s, {"title"});
        row(u"news.document.title"_s, {"date", "10.05.06 12:00", "11.05.06 12:00"});
        row(u"news.document.URL"_s, {"date | title", "10.05.06 12:00 | Sommer", "11.05.06 12:00 | Herbst"});
        row(u"news.document.text"_s, {"date | title", "10.05.06 12:00 | Sommer", "11.05.06 12:00 | Herbst"});
    }

    void aWindowCanBeMadeWithoutAColumn()
    {
        // given
        QFETCH(QString, sColumn);
        QFETCH(QByteArrayList, lTable);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const QString sBack = rename(sColumn);
        // when
        oAnalyst.startAt(2);
        // then
        QCOMPARE(oAnalyst.table(), lTable);
        QCOMPARE(oHost.numRows(), int(lTable.size()) - 1);
        // when
        oServer.sql(sBack);
        changeTable(oHost);
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oAnalyst.table().value(1), "27.02.05 23:59 | Zug entgleist");
    }

    void aTableThatChangesIsShownAsItIs_data()
    {
        QTest::addColumn<QString>("sChange");
        QTest::addColumn<QByteArrayList>("lTable"); ///< node 2
        const auto row = [](const char* pcName, const QString& sChange, const QByteArrayList& lTable) {
            QTest::newRow(pcName) << sChange << lTable;
        };
        const QByteArrayList lAll{"date | title", "10.05.06 12:00 | Sommer", "11.05.06 12:00 | Herbst"};
        row("columns before all others", u"ALTER TABLE odd.document ADD COLUMN extra INT DEFAULT 7 FIRST"_s,
            lAll);
        row("columns in another order", u"ALTER TABLE odd.document MODIFY title VARCHAR(200) FIRST"_s, lAll);
        row("a date of letters", u"ALTER TABLE odd.document MODIFY date VARCHAR(30)"_s,
            {"date | title", "2006-05-10 12:00:00 | Sommer", "2006-05-11 12:00:00 | Herbst"});
        row("a date without a time", u"ALTER TABLE odd.document MODIFY date DATE"_s,
            {"date | title", "10.05.06 | Sommer", "11.05.06 | Herbst"});
        row("numbers of letters",
            u"ALTER TABLE odd.news_train MODIFY node VARCHAR(9), MODIFY item VARCHAR(9)"_s, lAll);
        row("without its rows", u"TRUNCATE TABLE odd.document"_s, {"date | title"});
        row("made anew, with less",
            u"CREATE OR REPLACE TABLE odd.document AS SELECT id, date FROM news.document"_s,
            {"date | title", "10.05.06 12:00 | ", "11.05.06 12:00 | "});
        row("without documents", u"DROP TABLE odd.document"_s, {"date | title"});
        row("without assignments", u"DROP TABLE odd.news_train"_s, {"date | title"});
        row("without its database", u"DROP DATABASE odd"_s, {"date | title"});
    }

    void aTableThatChangesIsShownAsItIs()
    {
        // given
        QFETCH(QString, sChange);
        QFETCH(QByteArrayList, lTable);
        const QString sAnew = u"CREATE OR REPLACE DATABASE odd; USE odd; "
                              "CREATE TABLE document LIKE news.document; INSERT INTO document SELECT * FROM "
                              "news.document; CREATE TABLE news_train LIKE som.news_train; "
                              "INSERT INTO news_train SELECT * FROM som.news_train"_s;
        oServer.sql(sAnew);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.call("setSOMTable", {"t:odd.news_train"});
        oHost.call("CNodeBrowser", {"t:som", "t:odd"});
        oAnalyst.showWindow();
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
        // when
        oServer.sql(sChange);
        oHost.call("select", {"i:2"});
        // then
        QCOMPARE(oAnalyst.table(), lTable);
        QCOMPARE(oHost.numRows(), int(lTable.size()) - 1);
        QCOMPARE(oAnalyst.dialog(), "none");
        // when
        oServer.sql(sAnew);
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oAnalyst.table().value(1), "27.02.05 23:59 | Zug entgleist");
        QCOMPARE(oHost.numRows(), 5);
    }

    void aKeywordTableThatIsDroppedLeavesTheNumbersUntilItIsThereAgain()
    {
        // given
        oServer.sql(u"CREATE TABLE som.kept AS SELECT * FROM som.news_som"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(2);
        // when
        oServer.sql(u"DROP TABLE som.news_som"_s);
        passHierarchy(oHost, true);
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oAnalyst.tree(), QByteArrayList({"v 0 | ", "  - 1 |  <", "  - 2 | ", "  - 3 | "}));
        QCOMPARE(oHost.numRows(), 5);
        // when
        oServer.sql(u"RENAME TABLE som.kept TO som.news_som"_s);
        passHierarchy(oHost, false);
        // then
        QCOMPARE(oAnalyst.tree()[1], "  - 1 | red, green, blue");
    }

private:
    /// Takes a column's name away; the statement that gives it back.
    QString rename(const QString& sColumn) const
    {
        const QStringList slNames = sColumn.split(u'.');
        const QString sRename = u"ALTER TABLE %1.%2 RENAME COLUMN "_s.arg(slNames[0], slNames[1]);
        oServer.sql(sRename + slNames[2] + u" TO gone"_s);
        return sRename + u"gone TO "_s + slNames[2];
    }

    static void click(CAnalyst& oAnalyst)
    {
        if (oAnalyst.table().size() > 1)
            oAnalyst.clickCell(0, "date");
    }

    static int entries(CAnalyst& oAnalyst)
    {
        QByteArrayList lEntries = oAnalyst.menu("ShowMenu");
        lEntries.removeAll({});
        return oAnalyst.menu("SortMenu").size() == std::max<qsizetype>(lEntries.size(), 1)
            ? int(lEntries.size())
            : -1;
    }

    static void changeTable(CPlainHost& oHost)
    {
        oHost.announceErrors({"CNodeBrowser: Changed Table to news_train"});
        oHost.call("setSOMTable", {"t:news_train"});
    }

    static void passHierarchy(CPlainHost& oHost, bool bInVain)
    {
        treehost::pass(oHost, {"1,2,3", "", "", ""});
        if (bInVain)
            oHost.announceErrors({"CListView: WARNING: Could not connect to Database, using               "
                                  "select-statement: SELECT _assigned_topic, _keywords FROM news_som "});
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleFaultsTables)
#include "tst_module_faults_tables.moc"
