// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// Ways into the menus and out of them, by keyboard and by mouse.
class TestModuleMenuKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void theLettersOpenTheMenus_data()
    {
        QTest::addColumn<QByteArray>("oFocus");
        for (const char* pcFocus : {"table", "texteditor", "dateedit"})
            QTest::newRow(pcFocus) << QByteArray(pcFocus);
    }

    // Show and Sort have the same letter and take turns.
    void theLettersOpenTheMenus()
    {
        // given
        QFETCH(QByteArray, oFocus);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.click(oAnalyst.part(oFocus));
        QCOMPARE(oAnalyst.focus(), oFocus);
        for (int i = 0; i < 2; i++) {
            // when, then
            oAnalyst.press({"alt+f"});
            QCOMPARE(oAnalyst.openMenu(), QByteArrayList({"&Quit"}));
            leave(oAnalyst);
            oAnalyst.press({"alt+s"});
            QCOMPARE(oAnalyst.openMenu(), oAnalyst.menu("ShowMenu"));
            leave(oAnalyst);
            oAnalyst.press({"alt+s"});
            QCOMPARE(oAnalyst.openMenu(), oAnalyst.menu("SortMenu"));
            leave(oAnalyst);
            QCOMPARE(oAnalyst.focus(), oFocus);
        }
    }

    void arrowsGoFromMenuToMenu()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.press({"alt+f", "Right"});
        QCOMPARE(oAnalyst.openMenu(), oAnalyst.menu("ShowMenu"));
        oAnalyst.press({"Right"});
        QCOMPARE(oAnalyst.openMenu(), oAnalyst.menu("SortMenu"));
        oAnalyst.press({"Left", "Left"});
        QCOMPARE(oAnalyst.openMenu(), QByteArrayList({"&Quit"}));
    }

    void aKeyChoosesTheEntry_data()
    {
        QTest::addColumn<QByteArray>("oKey");
        for (const char* pcKey : {"Return", "KP_Enter"})
            QTest::newRow(pcKey) << QByteArray(pcKey);
    }

    void aKeyChoosesTheEntry()
    {
        // given
        QFETCH(QByteArray, oKey);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oServer.startLog();
        // when
        oAnalyst.press({"alt+f", "Right", "Up", "Up", oKey});
        // then
        QCOMPARE(oAnalyst.openMenu(), QByteArrayList({"none"}));
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title", "author"}));
        QCOMPARE(oAnalyst.table().first(), "date | title | author");
        // when: the same entry once more
        oAnalyst.press({"alt+f", "Right", "Up", "Up", oKey});
        // then
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title"}));
        QCOMPARE(oAnalyst.table().first(), "date | title");
        QCOMPARE(oServer.log(), QStringList({documents("date"), documents("date")}));
    }

    void aKeyChoosesTheSortColumn()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oServer.startLog();
        for (int i = 0; i < 2; i++) {
            // when
            oAnalyst.press({"alt+f", "Left", "Up", "Return"});
            // then
            QCOMPARE(oAnalyst.marked("SortMenu"), QByteArrayList({"rate"}));
            QCOMPARE(oAnalyst.table().value(1), "27.02.05 23:59 | Zug entgleist");
        }
        QCOMPARE(oServer.log(), QStringList({documents("rate"), documents("rate")}));
    }

    void aMenuLeftWithoutAChoiceChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("oWay");
        for (const char* pcWay : {"Escape", "title", "text", "other menu"})
            QTest::newRow(pcWay) << QByteArray(pcWay);
    }

    void aMenuLeftWithoutAChoiceChangesNothing()
    {
        // given
        QFETCH(QByteArray, oWay);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oServer.startLog();
        for (const char* pcMenu : {"Show", "Sort"}) {
            // when
            oAnalyst.click(oAnalyst.menuTitle(pcMenu));
            QCOMPARE(oAnalyst.openMenu().size(), 9);
            oAnalyst.press({"Down", "Down"});
            if (oWay == "Escape")
                oAnalyst.press({"Escape"});
            else if (oWay == "title")
                oAnalyst.click(oAnalyst.menuTitle(pcMenu));
            else if (oWay == "text")
                oAnalyst.click(oAnalyst.part("texteditor"));
            else
                oAnalyst.press({"Right", "Escape"});
            // then
            QCOMPARE(oAnalyst.openMenu(), QByteArrayList({"none"}));
            QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title"}));
            QCOMPARE(oAnalyst.marked("SortMenu"), QByteArrayList({"date"}));
        }
        QCOMPARE(oServer.log().join(u'\n'), QString());
        QCOMPARE(oAnalyst.table().first(), "date | title");
    }

    void anEntryIsChosenByDraggingToIt()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oServer.startLog();
        // when
        oScreen.hold(oAnalyst.menuTitle("Show").center());
        QTUTILS_WAIT_FOR(!oAnalyst.entry("author").isEmpty());
        const QPoint oEntry = oAnalyst.entry("author").center();
        oScreen.hover(oEntry);
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title"}));
        oScreen.letGo(oEntry);
        // then
        QCOMPARE(oAnalyst.openMenu(), QByteArrayList({"none"}));
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title", "author"}));
        QCOMPARE(oServer.log(), QStringList({documents("date")}));
    }

    void keysOfAnOpenMenuDontReachTheTable()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.clickCell(2, "title");
        oAnalyst.press({"alt+s", "Down", "Down", "End", "Home", "F3", "ctrl+f", "Escape", "Escape"});
        QCOMPARE(oAnalyst.currentCell(), "2 1");
        QCOMPARE(oAnalyst.viewers(), QByteArrayList());
        QCOMPARE(oAnalyst.focus(), "table");
    }

    void theMarksOutliveAHiddenWindow()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.choose("Show", "author");
        oAnalyst.choose("Sort", "title");
        // when
        oAnalyst.choose("File", "Quit");
        QTUTILS_WAIT_FOR(!oScreen.isShown("Ombrel"));
        oAnalyst.showWindow();
        // then
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title", "author"}));
        QCOMPARE(oAnalyst.marked("SortMenu"), QByteArrayList({"title"}));
        QCOMPARE(oAnalyst.table().first(), "date | title | author");
    }

    void aFurtherConstructionBeginsAnew()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.choose("Show", "author");
        oAnalyst.choose("Sort", "title");
        // when
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.construct();
        oServer.startLog();
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title"}));
        QCOMPARE(oAnalyst.marked("SortMenu"), QByteArrayList({"date"}));
        QCOMPARE(oServer.log(), QStringList({documents("date")}));
    }

private:
    // First the menu, then the bar.
    static void leave(CAnalyst& oAnalyst)
    {
        oAnalyst.press({"Escape", "Escape"});
        QCOMPARE(oAnalyst.openMenu(), QByteArrayList({"none"}));
    }

    static QString documents(const char* pcSort)
    {
        return QStringLiteral("SELECT node, dist, document.* FROM news_train, news.document "
                              "WHERE news.document.id=news_train.item AND node=1 ORDER BY ")
            + QLatin1String(pcSort);
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleMenuKeys)
#include "tst_module_menu_keys.moc"
