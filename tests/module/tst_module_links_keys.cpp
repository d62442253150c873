// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "CFakeBrowser.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

using State = CFakeBrowser::State;

/// Opening an address with the keyboard. Node 1's documents by date: 4, 5, 1, 2, 3.
class TestModuleLinksKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void returnOnTheAddressCellIsADoubleClick_data()
    {
        QTest::addColumn<QByteArray>("oKey");
        for (const char* pcKey : {"Return", "shift+Return", "ctrl+Return", "alt+Return"})
            QTest::newRow(pcKey) << QByteArray(pcKey);
    }

    void returnOnTheAddressCellIsADoubleClick()
    {
        QFETCH(QByteArray, oKey);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Ended);
        show(oAnalyst);
        oAnalyst.clickCell(1, "URL");
        oAnalyst.press({oKey});
        QCOMPARE(oAnalyst.viewers(), QByteArrayList{"shown"});
        QCOMPARE(oAnalyst.text("0/fullEdit"), QByteArray("Die Brücke ist offen."));
        QCOMPARE(oBrowser.calls(),
            QByteArrayList(
                {"<-remote> <openURL(http://news.example/5,new-tab)>", "<http://news.example/5>"}));
        QCOMPARE(oAnalyst.currentCell(), "1 2");
    }

    void otherKeysOpenNothing()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst);
        oAnalyst.clickCell(1, "URL");
        oAnalyst.press({"KP_Enter", "space", "F2", "Insert", "Delete", "Escape", "h", "F3", "Linefeed"});
        QCOMPARE(oAnalyst.currentCell(), "1 2");
        QCOMPARE(oAnalyst.viewers(), QByteArrayList());
        QCOMPARE(oBrowser.calls(), QByteArrayList());
    }

    void returnOnAnotherCellOpensTheTextOnly_data()
    {
        QTest::addColumn<QByteArray>("oColumn");
        QTest::newRow("date") << QByteArray("date");
        QTest::newRow("title") << QByteArray("title");
    }

    void returnOnAnotherCellOpensTheTextOnly()
    {
        QFETCH(QByteArray, oColumn);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst);
        oAnalyst.clickCell(1, oColumn);
        oAnalyst.press({"Return"});
        QCOMPARE(oAnalyst.viewers(), QByteArrayList{"shown"});
        QCOMPARE(oBrowser.calls(), QByteArrayList());
    }

    void arrowsLeadToTheAddressCell()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst);
        oAnalyst.clickCell(1, "title");
        oAnalyst.press({"Right", "Down", "Down", "Return"});
        QCOMPARE(oAnalyst.viewers(), QByteArrayList{"shown"});
        QCOMPARE(oBrowser.calls(), QByteArrayList{"<-remote> <openURL(http://news.example/2,new-tab)>"});
    }

    void returnWithoutACurrentCellOpensTheTextOnly()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst);
        focusTable(oAnalyst);
        QCOMPARE(oAnalyst.currentCell(), "none");
        oAnalyst.press({"Return"});
        QCOMPARE(oAnalyst.viewers(), QByteArrayList{"shown"});
        QCOMPARE(oAnalyst.text("0/fullEdit"), "no article selected");
        QCOMPARE(oBrowser.calls(), QByteArrayList());
    }

    // The mark chooses a row and no column, not even where the address is the only one.
    void returnAfterAMarkOpensTheTextOnly()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst);
        oAnalyst.choose("Show", "date");
        oAnalyst.choose("Show", "title");
        focusTable(oAnalyst);
        oHost.call("markRow", {"k:2005-03-01 09:00:00", "i:1"});
        QCOMPARE(oAnalyst.currentCell(), "1 0");
        oAnalyst.press({"Return"});
        QCOMPARE(oAnalyst.viewers(), QByteArrayList{"shown"});
        QCOMPARE(oAnalyst.text("0/fullEdit"), QByteArray("Die Brücke ist offen."));
        QCOMPARE(oBrowser.calls(), QByteArrayList());
    }

    void returnAfterAMarkOpensTheAddressOfTheCellPressedBefore()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst);
        oAnalyst.clickCell(4, "URL");
        oHost.call("markRow", {"k:2005-03-01 09:00:00", "i:1"});
        QCOMPARE(oAnalyst.currentCell(), "1 2");
        oAnalyst.press({"Return"});
        QCOMPARE(oAnalyst.viewers(), QByteArrayList{"shown"});
        QCOMPARE(oBrowser.calls(), QByteArrayList{"<-remote> <openURL(http://news.example/5,new-tab)>"});
    }

    void returnWithTheFocusElsewhereOpensNothing_data()
    {
        QTest::addColumn<QByteArray>("oPart");
        for (const char* pcPart : {"ListView", "texteditor", "dateedit", "checkdate"})
            QTest::newRow(pcPart) << QByteArray(pcPart);
    }

    void returnWithTheFocusElsewhereOpensNothing()
    {
        QFETCH(QByteArray, oPart);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst);
        oAnalyst.clickCell(1, "URL");
        oAnalyst.click(oAnalyst.part(oPart));
        QVERIFY(oAnalyst.focus() != "table");
        oAnalyst.press({"Return"});
        QCOMPARE(oAnalyst.viewers(), QByteArrayList());
        QCOMPARE(oBrowser.calls(), QByteArrayList());
    }

private:
    // Node 1's documents with their addresses.
    void show(CAnalyst& oAnalyst) const
    {
        oAnalyst.startAt(1);
        oScreen.resize("Ombrel", {1000, 800});
        oAnalyst.choose("Show", "URL");
    }

    // Without choosing a row.
    static void focusTable(CAnalyst& oAnalyst)
    {
        oAnalyst.click(oAnalyst.part("texteditor"));
        oAnalyst.press({"shift+Tab"});
        QCOMPARE(oAnalyst.focus(), "table");
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleLinksKeys)
#include "tst_module_links_keys.moc"
