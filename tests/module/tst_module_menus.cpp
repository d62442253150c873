// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// The menus by mouse: marks, columns, rows and statements.
class TestModuleMenus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        oServer.sql(QStringLiteral(
            "CREATE DATABASE letters; CREATE TABLE letters.document "
            "(title VARCHAR(9), id INT, `group` INT, `a&b` INT, date DATETIME, dated INT, Title2 INT);"
            "INSERT INTO letters.document VALUES ('one', 1, 2, 3, '2001-01-01', 4, 5),"
            " ('two', 2, 1, 3, '2001-01-02', 4, 5);"
            "CREATE VIEW som.letters_train AS SELECT 1 node, 0.5 dist, id item FROM letters.document"));
    }

    void theMenusListTheColumns()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        QCOMPARE(oAnalyst.menu("MenuFile"), QByteArrayList({"&Quit"}));
        QCOMPARE(oAnalyst.menu("ShowMenu"),
            QByteArrayList({"[ ] node", "[ ] dist", "[ ] id", "[x] date", "[x] title", "[ ] URL", "[ ] text",
                "[ ] author", "[ ] rate"}));
        QCOMPARE(oAnalyst.menu("SortMenu"),
            QByteArrayList({"[ ] node", "[ ] dist", "[ ] id", "[x] date", "[ ] title", "[ ] URL", "[ ] text",
                "[ ] author", "[ ] rate"}));
    }

    void withoutATableTheMenusAreEmpty()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.construct();
        oAnalyst.showWindow();
        for (const char* pcTitle : {"Show", "Sort"}) {
            // when
            oAnalyst.click(oAnalyst.menuTitle(pcTitle));
            // then
            QCOMPARE(oAnalyst.openMenu(), QByteArrayList({""}));
            oAnalyst.press({"Down", "Return", "Escape"});
            QCOMPARE(oAnalyst.openMenu(), QByteArrayList({"none"}));
        }
        // when
        setTable(oHost, "news_train");
        // then
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title"}));
        QCOMPARE(oAnalyst.marked("SortMenu"), QByteArrayList({"date"}));
        oHost.call("select", {"i:2"});
        oAnalyst.choose("Show", "id");
        QCOMPARE(oAnalyst.table().first(), "id | date | title");
    }

    void aTableThatCantBeReadEmptiesTheMenus()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        setTable(oHost, "nothing");
        QCOMPARE(oAnalyst.menu("ShowMenu"), QByteArrayList({""}));
        QCOMPARE(oAnalyst.menu("SortMenu"), QByteArrayList({""}));
        setTable(oHost, "news_train");
        QCOMPARE(oAnalyst.menu("ShowMenu").size(), 9);
        QCOMPARE(oAnalyst.menu("SortMenu").size(), 9);
    }

    void aShowEntryShowsItsColumn()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(2);
        // when
        oAnalyst.choose("Show", "author");
        // then
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title", "author"}));
        QCOMPARE(oAnalyst.table(),
            QByteArrayList({"date | title | author", "10.05.06 12:00 | Sommer | Anna",
                "11.05.06 12:00 | Herbst | Cora"}));
        QCOMPARE(oAnalyst.marked("SortMenu"), QByteArrayList({"date"}));
        // when
        oAnalyst.choose("Show", "author");
        oAnalyst.choose("Show", "date");
        // then
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"title"}));
        QCOMPARE(oAnalyst.table(), QByteArrayList({"title", "Sommer", "Herbst"}));
    }

    void shownColumnsKeepTheTablesOrder()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(2);
        for (const char* pcColumn : {"rate", "node", "text", "dist"})
            oAnalyst.choose("Show", pcColumn);
        QCOMPARE(oAnalyst.table().first(), "node | dist | date | title | text | rate");
        QCOMPARE(oAnalyst.table().last(), "2 | 0.2 | 11.05.06 12:00 | Herbst | Es ist kühl. | 4.000");
    }

    void everyChoiceAsksOnce()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oServer.startLog();
        // when
        oAnalyst.choose("Show", "author");
        oAnalyst.choose("Sort", "URL");
        oAnalyst.choose("Show", "date");
        oAnalyst.choose("Sort", "URL");
        QCOMPARE(oHost.numRows(), 5);
        // then
        QCOMPARE(oServer.log(),
            QStringList({documents("date"), documents("URL"), documents("URL"), documents("URL")}));
    }

    void allColumnsCanBeHidden()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(2);
        oServer.startLog();
        // when
        oAnalyst.choose("Show", "date");
        oAnalyst.choose("Show", "title");
        // then
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList());
        QCOMPARE(oAnalyst.table(), QByteArrayList({"", "", ""}));
        QCOMPARE(oHost.numRows(), 2);
        QCOMPARE(oServer.log().size(), 2);
        // when
        oAnalyst.click(oAnalyst.part("table"));
        oAnalyst.press({"Down", "Return"});
        oAnalyst.choose("Show", "title");
        // then
        QCOMPARE(oAnalyst.table(), QByteArrayList({"title", "Sommer", "Herbst"}));
    }

    void aSortEntrySortsAndIsTheOnlyOneMarked()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        for (int i = 0; i < 2; i++) {
            // when
            oAnalyst.choose("Sort", "title");
            // then
            QCOMPARE(oAnalyst.marked("SortMenu"), QByteArrayList({"title"}));
            QCOMPARE(titles(oAnalyst),
                "Äpfel werden teurer, Neue Brücke, Schnee im März, Wahl in Köln, Zug entgleist");
        }
        // when: a column that isn't shown
        oAnalyst.choose("Sort", "rate");
        // then
        QCOMPARE(oAnalyst.marked("SortMenu"), QByteArrayList({"rate"}));
        QCOMPARE(titles(oAnalyst),
            "Zug entgleist, Schnee im März, Wahl in Köln, Neue Brücke, Äpfel werden teurer");
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title"}));
        // when
        oHost.call("select", {"i:2"});
        // then
        QCOMPARE(titles(oAnalyst), "Sommer, Herbst");
        QCOMPARE(oAnalyst.marked("SortMenu"), QByteArrayList({"rate"}));
    }

    void beforeAnySelectionNothingIsAsked()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.start();
        oAnalyst.showWindow();
        oServer.startLog();
        // when
        oAnalyst.choose("Show", "author");
        oAnalyst.choose("Sort", "title");
        // then
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title", "author"}));
        QCOMPARE(oAnalyst.marked("SortMenu"), QByteArrayList({"title"}));
        QCOMPARE(oServer.log(), QStringList());
        // when
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oAnalyst.table().value(1), "03.03.05 00:00 | Äpfel werden teurer | Anna");
        QCOMPARE(oServer.log(), QStringList({documents("title")}));
    }

    // The marks tell the new table's first columns; what the user sorts by is kept.
    void aNewTableMarksTitleAndDateAgain()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.choose("Show", "author");
        oAnalyst.choose("Show", "date");
        oAnalyst.choose("Sort", "title");
        oServer.startLog();
        // when
        setTable(oHost, "news_train");
        // then
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title"}));
        QCOMPARE(oAnalyst.marked("SortMenu"), QByteArrayList({"date"}));
        QCOMPARE(oAnalyst.table().first(), "title | author");
        QCOMPARE(oServer.log(),
            QStringList(
                {QStringLiteral("SELECT node, dist, document.* FROM news_train, news.document LIMIT 1")}));
        // when
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oAnalyst.table().first(), "date | title");
        QCOMPARE(oServer.log().last(), documents("title"));
        // when
        oAnalyst.choose("Sort", "date");
        // then
        QCOMPARE(oServer.log().last(), documents("date"));
    }

    void otherColumnsMakeOtherMenus()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.call("setSOMTable", {"t:letters_train"});
        oHost.call("CNodeBrowser", {"t:som", "t:letters"});
        oAnalyst.showWindow();
        oHost.call("select", {"i:1"});
        QCOMPARE(oAnalyst.menu("ShowMenu"),
            QByteArrayList({"[ ] node", "[ ] dist", "[x] title", "[ ] id", "[ ] group", "[ ] a&b", "[x] date",
                "[ ] dated", "[ ] Title2"}));
        QCOMPARE(oAnalyst.table(),
            QByteArrayList({"title | date", "one | 01.01.01 00:00", "two | 02.01.01 00:00"}));
        // when
        oAnalyst.choose("Show", "ab");
        // then
        QCOMPARE(oAnalyst.table().last(), "two | 3 | 02.01.01 00:00");
        // when: no name of a column in a statement
        oAnalyst.choose("Sort", "group");
        // then
        QCOMPARE(oAnalyst.marked("SortMenu"), QByteArrayList({"group"}));
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oAnalyst.dialog(), "none");
        // when
        oAnalyst.choose("Sort", "dated");
        // then
        QCOMPARE(oHost.numRows(), 2);
    }

private:
    static void setTable(CPlainHost& oHost, const QByteArray& oName)
    {
        oHost.announceErrors({"CNodeBrowser: Changed Table to " + oName});
        oHost.call("setSOMTable", {"t:" + oName});
    }

    static QString documents(const char* pcSort)
    {
        return QStringLiteral("SELECT node, dist, document.* FROM news_train, news.document "
                              "WHERE news.document.id=news_train.item AND node=1 ORDER BY ")
            + QLatin1String(pcSort);
    }

    /// The last column's cells.
    static QByteArray titles(CAnalyst& oAnalyst)
    {
        QByteArrayList lTitles;
        for (const QByteArray& oRow : oAnalyst.table().mid(1))
            lTitles << oRow.mid(oRow.indexOf(" | ") + 3);
        return lTitles.join(", ");
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleMenus)
#include "tst_module_menus.moc"
