// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

using namespace Qt::StringLiterals;

/// The window manager closes windows while menus and dialogs of theirs are open.
class TestModuleFaultsClosing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void aWindowIsClosedUnderItsMenu_data()
    {
        QTest::addColumn<QByteArray>("oMenu");
        for (const char* pcMenu : {"File", "Show", "Sort", "branch"})
            QTest::newRow(pcMenu) << QByteArray(pcMenu);
    }

    void aWindowIsClosedUnderItsMenu()
    {
        // given
        QFETCH(QByteArray, oMenu);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.click(
            oMenu == "branch" ? oAnalyst.item(1) : oAnalyst.menuTitle(oMenu), oMenu == "branch" ? 3 : 1);
        QTUTILS_WAIT_FOR(oAnalyst.openMenu() != QByteArrayList{"none"});
        // when
        oScreen.close("Ombrel");
        // then
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        oHost.call("select", {"i:2"});
        QCOMPARE(oHost.numRows(), 2);
        // when
        oAnalyst.press({"Escape"});
        // then
        QCOMPARE(oAnalyst.openMenu(), QByteArrayList{"none"});
        // when
        oAnalyst.showWindow();
        oAnalyst.choose("Sort", "title");
        // then
        QCOMPARE(oAnalyst.table(),
            QByteArrayList({"date | title", "11.05.06 12:00 | Herbst", "10.05.06 12:00 | Sommer"}));
    }

    void aWindowWaitsForItsDialog_data()
    {
        QTest::addColumn<QByteArray>("oDialog");
        QTest::newRow("find dialog") << "Find: Find what: []"_ba;
        QTest::newRow("nothing found") << "Find: Nothing found"_ba;
    }

    void aWindowWaitsForItsDialog()
    {
        // given
        QFETCH(QByteArray, oDialog);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.openViewer(0);
        if (oDialog.endsWith("found"))
            oAnalyst.find("nowhere");
        else
            oAnalyst.askWhatToFind();
        QTUTILS_WAIT_FOR(oAnalyst.dialog() == oDialog);
        // when
        closeAll();
        // then
        QCOMPARE(oAnalyst.dialog(), oDialog);
        QCOMPARE(oScreen.shown(), QByteArrayList({"Find", "Ombrel", "Zug entgleist"}));
        oHost.call("select", {"i:2"});
        QCOMPARE(oHost.numRows(), 2);
        // when
        oScreen.close("Find");
        QTUTILS_WAIT_FOR(oAnalyst.dialog() == "none");
        closeAll();
        // then
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        QCOMPARE(oAnalyst.viewers(), QByteArrayList{"hidden"});
        oAnalyst.showWindow();
        QCOMPARE(oAnalyst.table().size(), 3);
    }

    void theWindowWaitsForTheDatabasesBox()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.command({"env", "MYSQL_PWD", "wrong"});
        oHost.announceOutput({"show error", "show error"});
        oHost.load();
        oHost.command({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"});
        endBox();
        QCOMPARE(oHost.command({"join", "1"}), "window");
        oAnalyst.showWindow();
        oHost.announceErrors({"CNodeBrowser: Changed Table to news_train"});
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.passHierarchy();
        QTUTILS_WAIT_FOR(oScreen.isActive("SQL Error"));
        // when
        closeAll();
        // then
        QVERIFY(oAnalyst.dialog().startsWith("SQL Error"));
        QCOMPARE(oScreen.shown(), QByteArrayList({"Ombrel", "SQL Error"}));
        // when
        endBox();
        closeAll();
        // then
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        QCOMPARE(oAnalyst.tree().first(), "v 0 | ");
    }

private:
    /// Has the window manager ask the main window and every viewer to close; they have been asked then.
    void closeAll() const
    {
        for (const char* pcTitle : {"Ombrel", "Zug entgleist"})
            oScreen.closeAll(pcTitle);
        oScreen.hover({5, 5});
    }

    void endBox() const
    {
        QTUTILS_WAIT_FOR(oScreen.isActive("SQL Error"));
        oScreen.close("SQL Error");
        QTUTILS_WAIT_FOR(!oScreen.isShown("SQL Error"));
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleFaultsClosing)
#include "tst_module_faults_closing.moc"
