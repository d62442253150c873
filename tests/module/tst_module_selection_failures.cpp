// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

using namespace Qt::StringLiterals;

/// Statements that fail: the table is empty then, and nobody says anything.
class TestModuleSelectionFailures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void aTableThatIsNoneHasNoColumnsAndNoRows_data()
    {
        QTest::addColumn<QByteArray>("oTable");
        QTest::newRow("missing") << "missing"_ba;
        QTest::newRow("no name") << "(("_ba;
        QTest::newRow("empty") << ""_ba;
        QTest::newRow("keywords") << "news_som"_ba;
        QTest::newRow("more than a name") << "news_train WHERE node=1; DROP TABLE news_train"_ba;
    }

    void aTableThatIsNoneHasNoColumnsAndNoRows()
    {
        // given
        QFETCH(QByteArray, oTable);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oServer.startLog();
        // when
        changeTable(oHost, oTable);
        // then
        QCOMPARE(oAnalyst.table().size(), 6);
        QCOMPARE(oAnalyst.menu("ShowMenu"), QByteArrayList{""});
        // when
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oAnalyst.table(), QByteArrayList{""});
        QCOMPARE(oHost.numRows(), 0);
        const QString sTable = QString::fromUtf8(oTable);
        QCOMPARE(oServer.log().join(u'\n'),
            u"SELECT node, dist, document.* FROM %1, news.document LIMIT 1\n"
            "SELECT node, dist, document.* FROM %1, news.document WHERE "
            "news.document.id=%1.item AND node=1 ORDER BY date"_s.arg(sTable));
        // when
        changeTable(oHost, "news_train");
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oAnalyst.table().size(), 6);
        QCOMPARE(oAnalyst.table().first(), "date | title");
    }

    void aTableThatGoesAwayLeavesNoRows_data()
    {
        QTest::addColumn<QString>("sTable");
        QTest::newRow("assignments") << u"som.news_train"_s;
        QTest::newRow("documents") << u"news.document"_s;
    }

    void aTableThatGoesAwayLeavesNoRows()
    {
        // given
        QFETCH(QString, sTable);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        QCOMPARE(oHost.numRows(), 5);
        // when
        oServer.sql(u"RENAME TABLE %1 TO som.gone"_s.arg(sTable));
        oHost.call("select", {"i:1"});
        // then
        const QByteArrayList lShown = oAnalyst.table();
        oServer.sql(u"RENAME TABLE som.gone TO %1"_s.arg(sTable));
        QCOMPARE(lShown.size(), 1);
        // when
        oHost.call("select", {"i:2"});
        // then
        QCOMPARE(oAnalyst.table(),
            QByteArrayList({"date | title", "10.05.06 12:00 | Sommer", "11.05.06 12:00 | Herbst"}));
    }

    void aSortColumnThatGoesAwayLeavesNoRowsUntilAnotherOneIsChosen()
    {
        // given
        makeSource(u"shrinking"_s, u"SELECT * FROM news.document"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        startWith(oAnalyst, "shrinking");
        oAnalyst.choose("Sort", "rate");
        QCOMPARE(oAnalyst.table().size(), 6);
        // when
        oServer.sql(u"ALTER TABLE shrinking.document DROP COLUMN rate"_s);
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oAnalyst.table().size(), 1);
        // when
        oAnalyst.choose("Sort", "id");
        // then
        QCOMPARE(oAnalyst.table().value(1), "01.03.05 13:00 | Schnee im März");
    }

    void aShownColumnThatGoesAwayIsEmpty()
    {
        // given
        makeSource(u"losing"_s, u"SELECT * FROM news.document"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        startWith(oAnalyst, "losing");
        // when
        oServer.sql(u"ALTER TABLE losing.document DROP COLUMN title"_s);
        oHost.call("select", {"i:2"});
        // then
        QCOMPARE(
            oAnalyst.table(), QByteArrayList({"date | title", "10.05.06 12:00 | ", "11.05.06 12:00 | "}));
    }

    void documentsWithoutADateHaveNoRowsUntilAnotherColumnSortsThem()
    {
        // given
        makeSource(u"dateless"_s, u"SELECT id, title FROM news.document"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        startWith(oAnalyst, "dateless");
        // then
        QCOMPARE(oAnalyst.table(), QByteArrayList{"title"});
        QCOMPARE(oHost.numRows(), 0);
        // when
        oAnalyst.choose("Sort", "title");
        // then
        QCOMPARE(oAnalyst.table(),
            QByteArrayList({"title", "Äpfel werden teurer", "Neue Brücke", "Schnee im März", "Wahl in Köln",
                "Zug entgleist"}));
    }

    void documentsWithoutAnIdHaveColumnsAndNoRows()
    {
        makeSource(u"nameless"_s, u"SELECT date, title FROM news.document"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        startWith(oAnalyst, "nameless");
        QCOMPARE(oAnalyst.table(), QByteArrayList{"date | title"});
    }

    void columnsThatBothTablesHaveFailAllStatements_data()
    {
        QTest::addColumn<QString>("sColumn");
        QTest::newRow("node") << u"node"_s;
        QTest::newRow("dist") << u"dist"_s;
    }

    void columnsThatBothTablesHaveFailAllStatements()
    {
        QFETCH(QString, sColumn);
        makeSource(sColumn + u'd', u"SELECT d.*, 1 AS %1 FROM news.document d"_s.arg(sColumn));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        startWith(oAnalyst, sColumn.toUtf8() + 'd');
        QCOMPARE(oAnalyst.table(), QByteArrayList{""});
        QCOMPARE(oAnalyst.menu("SortMenu"), QByteArrayList{""});
    }

    void anEmptyTableOfAssignmentsHasColumnsStill()
    {
        oServer.sql(u"CREATE TABLE som.empty LIKE som.news_train"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        changeTable(oHost, "empty");
        oHost.call("select", {"i:1"});
        QCOMPARE(oAnalyst.table(), QByteArrayList{"date | title"});
        QCOMPARE(oAnalyst.menu("SortMenu").size(), 9);
    }

    void aSourceThatMayNotBeReadHasNoRows()
    {
        // given
        oServer.sql(u"CREATE USER 'half'@'localhost' IDENTIFIED BY ''; "
                    "GRANT SELECT ON som.* TO 'half'@'localhost'"_s);
        CPlainHost oHost;
        oHost.command({"env", "MYSQL_USER", "half"});
        oHost.command({"env", "MYSQL_PWD", ""});
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        startWith(oAnalyst, "news");
        // then
        QCOMPARE(oAnalyst.table(), QByteArrayList{""});
        QCOMPARE(oHost.numRows(), 0);
    }

private:
    static void changeTable(CPlainHost& oHost, const QByteArray& oTable)
    {
        oHost.announceErrors({"CNodeBrowser: Changed Table to " + oTable});
        oHost.call("setSOMTable", {"t:" + oTable});
    }

    /// A database with a table of documents.
    void makeSource(const QString& sDatabase, const QString& sSelect)
    {
        oServer.sql(u"CREATE DATABASE %1; CREATE TABLE %1.document AS %2"_s.arg(sDatabase, sSelect));
    }

    static void startWith(CAnalyst& oAnalyst, const QByteArray& oSource)
    {
        oAnalyst.host().load();
        oAnalyst.host().call("setSOMTable", {"t:news_train"});
        oAnalyst.host().call("CNodeBrowser", {"t:som", "t:" + oSource});
        oAnalyst.showWindow();
        oAnalyst.host().call("select", {"i:1"});
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleSelectionFailures)
#include "tst_module_selection_failures.moc"
