// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "CFakeBrowser.h"
#include "CFaultyLine.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <memory>

using namespace Qt::StringLiterals;

/// The display goes away, or throws the host out, whatever is open there. The host lives on without a window.
class TestModuleFaultsDisplay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void init()
    {
        pLine = std::make_unique<CFaultyLine>(oServer.socket(), oFolder);
        qputenv("MYSQL_UNIX_PORT", pLine->socket());
    }

    void theHostLivesOnWhateverIsOpen_data()
    {
        QTest::addColumn<QByteArray>("oOpen");
        QTest::addColumn<bool>("bThrownOut"); ///< the display lives on, and closes the host's connection
        for (const char* pcOpen : {"nothing found", "branch menu", "Sort menu", "date field", "viewers"})
            for (const bool bThrownOut : {false, true})
                QTest::addRow("%s, %s", pcOpen, bThrownOut ? "thrown out" : "display gone")
                    << QByteArray(pcOpen) << bThrownOut;
        QTest::newRow("window, thrown out") << "window"_ba << true;
        QTest::newRow("find dialog, thrown out") << "find dialog"_ba << true;
        QTest::newRow("database's box, thrown out") << "database's box"_ba << true;
        QTest::newRow("database's box, display gone") << "database's box"_ba << false;
    }

    void theHostLivesOnWhateverIsOpen()
    {
        // given
        QFETCH(QByteArray, oOpen);
        QFETCH(bool, bThrownOut);
        CPrivateDisplay oDisplay(CPrivateDisplay::Manager::Running);
        CPlainHost oHost;
        CScreen oScreen;
        CAnalyst oAnalyst(oHost, oScreen);
        open(oAnalyst, oOpen);
        // when
        if (bThrownOut)
            oScreen.throwOut(oScreen.shown().first());
        else
            oDisplay.kill();
        // then
        checkLoss(oHost);
        oHost.output();
    }

    void aHeldUpWindowLosesItsDisplayAfterwards_data()
    {
        QTest::addColumn<QByteArray>("oHeldUpBy");
        QTest::newRow("fillDate") << "fillDate"_ba;
        QTest::newRow("web browser") << "web browser"_ba;
        QTest::newRow("server") << "server"_ba;
    }

    void aHeldUpWindowLosesItsDisplayAfterwards()
    {
        // given
        QFETCH(QByteArray, oHeldUpBy);
        CPrivateDisplay oDisplay(CPrivateDisplay::Manager::Running);
        CPlainHost oHost;
        CScreen oScreen;
        CAnalyst oAnalyst(oHost, oScreen);
        CFakeBrowser oBrowser(oHost, CFakeBrowser::State::Ready);
        oAnalyst.startAt(1);
        holdUp(oAnalyst, oHeldUpBy, oBrowser);
        // when
        oDisplay.kill();
        oHost.command({"start", "1", "call", "getNumRows", "oi:1"});
        oHost.call("select", {"i:2"});
        // then
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        // when
        if (oHeldUpBy == "fillDate")
            oHost.call("setRowColors", {"c:5x0,0,0"});
        else if (oHeldUpBy == "server")
            pLine->goOn();
        else
            oBrowser.close();
        // then: the question returns, with its answer or without one
        const QByteArray oAnswer = oHost.command({"join", "1"});
        QVERIFY2(QByteArrayList({"5", "2", "-7777"}).contains(oAnswer), oAnswer.constData());
        checkLoss(oHost);
    }

private:
    void open(CAnalyst& oAnalyst, const QByteArray& oWhat)
    {
        if (oWhat == "database's box")
            return openBox(oAnalyst);
        oAnalyst.startAt(1);
        if (oWhat == "branch menu")
            oAnalyst.click(oAnalyst.item(1), 3);
        else if (oWhat == "Sort menu")
            oAnalyst.click(oAnalyst.menuTitle("Sort"));
        else if (oWhat == "date field")
            oAnalyst.click(oAnalyst.part("dateedit"));
        else if (oWhat != "window")
            openViewer(oAnalyst, oWhat);
        if (oWhat.endsWith("menu"))
            QTUTILS_WAIT_FOR(oAnalyst.openMenu().size() > 1);
    }

    static void openViewer(CAnalyst& oAnalyst, const QByteArray& oWhat)
    {
        oAnalyst.openViewer(0);
        if (oWhat == "viewers") {
            oAnalyst.press({"alt+F4"});
            QTUTILS_WAIT_FOR(oAnalyst.viewers() == QByteArrayList{"hidden"});
            oAnalyst.openViewer(1);
        } else if (oWhat == "find dialog") {
            oAnalyst.askWhatToFind();
        } else {
            oAnalyst.find("nowhere");
            QTUTILS_WAIT_FOR(oAnalyst.dialog() == "Find: Nothing found");
        }
    }

    /// The tree's, in a shown window.
    static void openBox(CAnalyst& oAnalyst)
    {
        CPlainHost& oHost = oAnalyst.host();
        oHost.command({"env", "MYSQL_PWD", "wrong"});
        oHost.load();
        oHost.command({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"});
        QTUTILS_WAIT_FOR(oAnalyst.screen().isActive("SQL Error"));
        oAnalyst.press({"Return"});
        QCOMPARE(oHost.command({"join", "1"}), "window");
        oAnalyst.showWindow();
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.passHierarchy();
        QTUTILS_WAIT_FOR(oAnalyst.screen().isActive("SQL Error"));
    }

    void holdUp(CAnalyst& oAnalyst, const QByteArray& oBy, const CFakeBrowser& oBrowser) const
    {
        CPlainHost& oHost = oAnalyst.host();
        if (oBy == "fillDate") {
            oHost.call("fillDate", {"oi:5"});
        } else if (oBy == "server") {
            pLine->fallSilentBehind(0);
            oHost.call("select", {"i:1"});
            QTUTILS_WAIT_FOR(pLine->isSilent());
        } else {
            oAnalyst.choose("Show", "URL");
            oAnalyst.doubleClickCell(0, "URL");
            QTUTILS_WAIT_FOR(oBrowser.calls().size() == 2);
        }
    }

    /// The host is told, has no window any more, and ends as it likes.
    static void checkLoss(CPlainHost& oHost)
    {
        QTUTILS_WAIT_FOR(oHost.errors().contains(
            "qtutils: the display is lost, and with it the window; there will be no other one"));
        QCOMPARE(oHost.numRows(), -7777);
        QCOMPARE(oHost.call("fillDate", {"oi:1"}), "-7777");
        for (const char* pcMethod : {"show", "hideTable", "FREE_CNodeBrowser"})
            QCOMPARE(oHost.call(pcMethod), "");
        QCOMPARE(oHost.construct(), "null");
        oHost.give({"exit", "3"});
        QCOMPARE(oHost.end(), "3");
        oHost.errors();
    }

    CPrivateServer oServer;
    QTemporaryDir oFolder;
    std::unique_ptr<CFaultyLine> pLine;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleFaultsDisplay)
#include "tst_module_faults_display.moc"
