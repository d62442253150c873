// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// What the host does while a menu is open.
class TestModuleMenuHost : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void aNewTableResetsTheOpenMenu()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.choose("Show", "author");
        oAnalyst.choose("Sort", "title");
        oAnalyst.click(oAnalyst.menuTitle("Show"));
        oAnalyst.press({"Down", "Down"}); // an entry is active
        QCOMPARE(oAnalyst.openMenu(), oAnalyst.menu("ShowMenu"));
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title", "author"}));
        // when
        setTable(oHost, "news_train");
        // then
        QCOMPARE(oAnalyst.openMenu(), oAnalyst.menu("ShowMenu"));
        QCOMPARE(oAnalyst.openMenu().size(), 9);
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title"}));
        QCOMPARE(oAnalyst.marked("SortMenu"), QByteArrayList({"date"}));
        // when: the new entry is clicked
        oServer.startLog();
        oAnalyst.click(oAnalyst.entry("author"));
        // then
        QCOMPARE(oAnalyst.openMenu(), QByteArrayList({"none"}));
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title", "author"}));
        QCOMPARE(oAnalyst.table().first(), "date | title | author");
        QCOMPARE(oServer.log().size(), 1);
    }

    void anOpenMenuMayBecomeEmpty()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.click(oAnalyst.menuTitle("Sort"));
        oAnalyst.press({"Down", "Down"});
        // when
        setTable(oHost, "nothing");
        // then
        QCOMPARE(oAnalyst.openMenu(), QByteArrayList({""}));
        oServer.startLog();
        oAnalyst.press({"Return", "Down", "Return", "Escape", "Escape"});
        QCOMPARE(oAnalyst.openMenu(), QByteArrayList({"none"}));
        QCOMPARE(oServer.log(), QStringList());
        // when
        setTable(oHost, "news_train");
        oAnalyst.choose("Sort", "title");
        // then
        QCOMPARE(oAnalyst.marked("SortMenu"), QByteArrayList({"title"}));
        QCOMPARE(oHost.numRows(), 5);
    }

    void theHostsCallsAreCarriedOut()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.click(oAnalyst.menuTitle("Sort"));
        const QByteArrayList lMenu = oAnalyst.openMenu();
        QCOMPARE(lMenu.size(), 9);
        // when, then
        oHost.call("select", {"i:2"});
        QCOMPARE(oHost.numRows(), 2);
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "2006-05-10T12:00:00");
        QCOMPARE(oHost.call("fillDate", {"oi:3"}), "0 1440 -7777");
        oHost.call("setRowColors", {"c:2x120,255,255"});
        oHost.call("markRow", {"k:2006-05-11 12:00:00", "i:1"});
        oHost.call("show");
        QCOMPARE(oAnalyst.text("texteditor"), "Es ist kühl.");
        QCOMPARE(oAnalyst.openMenu(), lMenu);
        // when: the menu goes on, for the new node
        oServer.startLog();
        oAnalyst.click(oAnalyst.entry("title"));
        // then
        QCOMPARE(oAnalyst.table(),
            QByteArrayList({"date | title", "11.05.06 12:00 | Herbst", "10.05.06 12:00 | Sommer"}));
        QCOMPARE(oServer.log().size(), 1);
    }

    void theTableMayBeHidden()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.click(oAnalyst.menuTitle("Show"));
        oHost.call("hideTable");
        QVERIFY(oAnalyst.part("RightSide").isEmpty());
        oAnalyst.click(oAnalyst.entry("author"));
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title", "author"}));
        QCOMPARE(oAnalyst.table().first(), "date | title | author");
    }

    void theLastFreeTakesTheMenuOffTheScreen()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.click(oAnalyst.menuTitle("Show"));
        const QRect oEntries = oAnalyst.entry("node") | oAnalyst.entry("rate");
        QTUTILS_WAIT_FOR(!isEmpty(oEntries));
        // when
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        // then
        QTUTILS_WAIT_FOR(isEmpty(oEntries));
        // when
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.construct();
        oAnalyst.showWindow();
        // then
        QCOMPARE(oAnalyst.openMenu(), QByteArrayList({"none"}));
        oAnalyst.choose("Show", "author");
        QCOMPARE(oAnalyst.marked("ShowMenu"), QByteArrayList({"date", "title", "author"}));
    }

    void theHostCanEnd()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.click(oAnalyst.menuTitle("Show"));
        QCOMPARE(oAnalyst.openMenu().size(), 9);
        oHost.give({"return", "3"});
        QCOMPARE(oHost.end(), "3");
    }

private:
    static void setTable(CPlainHost& oHost, const QByteArray& oName)
    {
        oHost.announceErrors({"CNodeBrowser: Changed Table to " + oName});
        oHost.call("setSOMTable", {"t:" + oName});
    }

    /// Whether nothing is there but a single colour.
    bool isEmpty(const QRect& oPlace) const
    {
        const QImage oPicture = oScreen.picture().copy(oPlace);
        return oScreen.pixels(oPicture.pixel(0, 0), oPlace) == oPlace.width() * oPlace.height();
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleMenuHost)
#include "tst_module_menu_host.moc"
