// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// The dialog that asks what to find, and its keys.
class TestModuleFindDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        oServer.sql(QStringLiteral(
            "UPDATE news.document SET text='One qt and two QT\\nand three Qt.' WHERE id IN (1, 2)"));
    }

    void controlFAsks()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst);
        oAnalyst.press({"ctrl+f"});
        QTUTILS_WAIT_FOR(oScreen.isActive("Find"));
        QCOMPARE(oAnalyst.dialog(), "Find: Find what: []");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "0-0: ");
    }

    void theButtonsFocusIsNoHindrance()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst);
        oAnalyst.press({"Tab"});
        QCOMPARE(oAnalyst.focus(), "0/exit");
        oAnalyst.find("qt");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "4-6: qt");
    }

    void noOtherKeyAsks_data()
    {
        QTest::addColumn<QByteArray>("oKey");
        for (const char* pcKey : {"f", "shift+f", "alt+f", "super+f", "ctrl+shift+f", "ctrl+alt+f", "ctrl+g",
                 "ctrl+d", "F3", "shift+F3", "F2", "F4", "Escape"})
            QTest::newRow(pcKey) << QByteArray(pcKey);
    }

    void noOtherKeyAsks()
    {
        QFETCH(QByteArray, oKey);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst);
        oAnalyst.press({oKey});
        QCOMPARE(oAnalyst.dialog(), "none");
        QCOMPARE(oAnalyst.viewers(), QByteArrayList({"shown"}));
        QCOMPARE(oAnalyst.text("0/fullEdit"), Text);
    }

    void theMainWindowAsksForNothing()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.clickCell(2, "title");
        for (const char* pcPart : {"table", "texteditor"}) {
            oAnalyst.click(oAnalyst.part(pcPart));
            oAnalyst.press({"ctrl+f", "F3"});
            QCOMPARE(oAnalyst.dialog(), "none");
        }
    }

    void f3OffersTheLastTextToBeReplaced_data()
    {
        QTest::addColumn<QByteArray>("oKey");
        for (const char* pcKey : {"F3", "shift+F3", "ctrl+F3", "ctrl+f"})
            QTest::newRow(pcKey) << QByteArray(pcKey);
    }

    void f3OffersTheLastTextToBeReplaced()
    {
        // given
        QFETCH(QByteArray, oKey);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst);
        oAnalyst.find("qt");
        // when
        oAnalyst.askWhatToFind(oKey);
        // then
        QCOMPARE(oAnalyst.dialog(), "Find: Find what: [qt]");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "4-6: qt");
        // when
        oAnalyst.type("three");
        // then
        QCOMPARE(oAnalyst.dialog(), "Find: Find what: [three]");
        // when
        oAnalyst.click(oAnalyst.button("OK"));
        // then
        QCOMPARE(oAnalyst.dialog(), "none");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "22-27: three");
    }

    void cancellingForgetsTheText_data() { addWays("Cancel"); }

    void cancellingForgetsTheText()
    {
        // given
        QFETCH(QByteArray, oWay);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst);
        oAnalyst.find("qt");
        // when
        oAnalyst.askWhatToFind("F3");
        oAnalyst.type("two");
        end(oAnalyst, oWay);
        // then
        QCOMPARE(oAnalyst.dialog(), "none");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "4-6: qt");
        // when
        oAnalyst.press({"F3"});
        // then
        QCOMPARE(oAnalyst.dialog(), "none");
        // when
        oAnalyst.askWhatToFind();
        // then
        QCOMPARE(oAnalyst.dialog(), "Find: Find what: []");
    }

    void anEmptyTextIsNotSearchedAndForgetsToo()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst);
        oAnalyst.find("qt");
        // when
        oAnalyst.askWhatToFind("F3");
        oAnalyst.press({"BackSpace", "Return"});
        // then
        QCOMPARE(oAnalyst.dialog(), "none");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "4-6: qt");
        QTUTILS_WAIT_FOR(oAnalyst.focus() == "0/fullEdit");
        oAnalyst.press({"F3"});
        QCOMPARE(oAnalyst.dialog(), "none");
    }

    void theBoxIsEndedAndTheTextIsOfferedAgain_data() { addWays("OK"); }

    void theBoxIsEndedAndTheTextIsOfferedAgain()
    {
        // given
        QFETCH(QByteArray, oWay);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst);
        oAnalyst.find("four");
        QCOMPARE(oAnalyst.dialog(), "Find: Nothing found");
        QTUTILS_WAIT_FOR(oAnalyst.focus() == "QPushButton");
        // when
        end(oAnalyst, oWay);
        // then
        QCOMPARE(oAnalyst.dialog(), "none");
        oAnalyst.askWhatToFind("F3");
        QCOMPARE(oAnalyst.dialog(), "Find: Find what: [four]");
    }

    void copiedTextCanBeSearched()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst);
        oAnalyst.find("three");
        oAnalyst.press({"ctrl+c"});
        oAnalyst.askWhatToFind();
        oAnalyst.press({"Delete", "ctrl+v"});
        QCOMPARE(oAnalyst.dialog(), "Find: Find what: [three]");
    }

    void theOtherWindowsWaitForTheDialog()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst);
        oAnalyst.askWhatToFind();
        oAnalyst.clickCell(4, "title");
        oAnalyst.doubleClickCell(4, "title");
        QCOMPARE(oAnalyst.currentCell(), "2 1");
        QCOMPARE(oAnalyst.viewers(), QByteArrayList({"shown"}));
        QCOMPARE(oAnalyst.dialog(), "Find: Find what: []");
    }

private:
    /// Ways to end a dialog: its button, a key, the window manager.
    static void addWays(const char* pcButton)
    {
        QTest::addColumn<QByteArray>("oWay");
        QTest::newRow("key") << QByteArray("Escape");
        QTest::newRow("button") << QByteArray(pcButton);
        QTest::newRow("window manager") << QByteArray("alt+F4");
    }

    static void openViewer(CAnalyst& oAnalyst)
    {
        oAnalyst.startAt(1);
        oAnalyst.openViewer(2);
    }

    static void end(CAnalyst& oAnalyst, const QByteArray& oWay)
    {
        if (oAnalyst.button(oWay).isEmpty())
            oAnalyst.press({oWay});
        else
            oAnalyst.click(oAnalyst.button(oWay));
        QTUTILS_WAIT_FOR(oAnalyst.focus() == "0/fullEdit");
    }

    const QByteArray Text = "One qt and two QT\nand three Qt.";
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleFindDialog)
#include "tst_module_find_dialog.moc"
