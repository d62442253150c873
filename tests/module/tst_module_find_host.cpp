// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// What the host may do while the find dialog or its message is open.
class TestModuleFindHost : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        oServer.sql(QStringLiteral(
            "UPDATE news.document SET text='One qt and two QT\\nand three Qt.' WHERE id IN (1, 2)"));
    }

    void theHostsCallsAreCarriedOutMeanwhile_data() { addStates(); }

    void theHostsCallsAreCarriedOutMeanwhile()
    {
        // given
        QFETCH(bool, bBox);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst);
        openDialog(oAnalyst, bBox);
        const QByteArray oDialog = oAnalyst.dialog();
        // when, then
        oHost.call("select", {"i:2"});
        QCOMPARE(oHost.numRows(), 2);
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "2006-05-10T12:00:00");
        QCOMPARE(oHost.call("fillDate", {"oi:3"}), "0 1440 -7777");
        oHost.call("setRowColors", {"c:2x120,255,255"});
        oHost.call("markRow", {"k:2006-05-11 12:00:00", "i:1"});
        QVERIFY(oAnalyst.currentCell().startsWith("1 "));
        QCOMPARE(oAnalyst.text("texteditor"), "Es ist kühl.");
        oHost.announceErrors({"CNodeBrowser: Changed Table to nothing"});
        oHost.call("setSOMTable", {"t:nothing"});
        QCOMPARE(oAnalyst.menu("ShowMenu"), QByteArrayList({""}));
        QCOMPARE(oAnalyst.text("0/fullEdit"), Text);
        // then: the dialog goes on
        QCOMPARE(oAnalyst.dialog(), oDialog);
        if (bBox)
            oAnalyst.press({"Return"});
        else {
            oAnalyst.type("three");
            oAnalyst.press({"Return"});
        }
        QCOMPARE(oAnalyst.dialog(), "none");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), bBox ? "0-0: " : "22-27: three");
    }

    void aFreeEndsTheDialog_data() { addStates(); }

    void aFreeEndsTheDialog()
    {
        // given
        QFETCH(bool, bBox);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst);
        openDialog(oAnalyst, bBox);
        // when
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        // then
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        // when
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.construct();
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oAnalyst.dialog(), "none");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "0-0: ");
    }

    void theHostCanEndMeanwhile_data() { addStates(); }

    void theHostCanEndMeanwhile()
    {
        QFETCH(bool, bBox);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst);
        openDialog(oAnalyst, bBox);
        oHost.give({"return", "3"});
        QCOMPARE(oHost.end(), "3");
    }

private:
    static void addStates()
    {
        QTest::addColumn<bool>("bBox");
        QTest::newRow("find dialog") << false;
        QTest::newRow("nothing found") << true;
    }

    static void openViewer(CAnalyst& oAnalyst)
    {
        oAnalyst.startAt(1);
        oAnalyst.openViewer(2);
    }

    static void openDialog(CAnalyst& oAnalyst, bool bBox)
    {
        if (!bBox)
            return oAnalyst.askWhatToFind();
        oAnalyst.find("four");
        QTUTILS_WAIT_FOR(oAnalyst.focus() == "QPushButton");
    }

    const QByteArray Text = "One qt and two QT\nand three Qt.";
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleFindHost)
#include "tst_module_find_host.moc"
