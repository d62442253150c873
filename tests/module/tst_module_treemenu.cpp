// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

namespace {

const QByteArrayList Entries{"expand all", "expand 2 levels", "collapse all"};

} // namespace

/// The menu of the tree, by mouse.
class TestModuleTreeMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void aRightClickOpensTheMenuAtThePointer()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        const QRect oNode = oAnalyst.item(2);
        // when
        oAnalyst.click(oNode, 3);
        // then
        QCOMPARE(oAnalyst.openMenu(), Entries);
        QCOMPARE(oAnalyst.part("popup").topLeft(), oNode.center());
        QCOMPARE(oAnalyst.openNodes(), "0");
    }

    void anEntryActsOnItsBranch_data()
    {
        QTest::addColumn<QByteArray>("oBefore");
        QTest::addColumn<int>("iNode");
        QTest::addColumn<QByteArray>("oEntry");
        QTest::addColumn<QByteArray>("oOpen");
        QTest::newRow("expand all, root") << Entries[0] << 0 << Entries[0] << QByteArray("0 1 3 5 2");
        QTest::newRow("expand all, branch") << QByteArray() << 1 << Entries[0] << QByteArray("0 1 3 5");
        QTest::newRow("expand all, other branch") << QByteArray() << 2 << Entries[0] << QByteArray("0 2");
        QTest::newRow("expand all, closed root") << Entries[2] << 0 << Entries[0] << QByteArray("0 1 3 5 2");
        QTest::newRow("expand 2 levels, root") << QByteArray() << 0 << Entries[1] << QByteArray("0 1 2");
        QTest::newRow("expand 2 levels, closed root") << Entries[2] << 0 << Entries[1] << QByteArray("0 1 2");
        QTest::newRow("expand 2 levels, branch") << QByteArray() << 1 << Entries[1] << QByteArray("0 1 3");
        QTest::newRow("expand 2 levels leaves open what is open")
            << Entries[0] << 1 << Entries[1] << QByteArray("0 1 3 5 2");
        QTest::newRow("expand 2 levels, leaf") << Entries[0] << 4 << Entries[1] << QByteArray("0 1 3 5 2");
        QTest::newRow("expand all, leaf") << Entries[0] << 6 << Entries[0] << QByteArray("0 1 3 5 2");
        QTest::newRow("collapse all, leaf") << Entries[0] << 6 << Entries[2] << QByteArray("0 1 3 5 2");
        QTest::newRow("collapse all, branch") << Entries[0] << 3 << Entries[2] << QByteArray("0 1 2");
        QTest::newRow("collapse all, closed branch") << QByteArray() << 2 << Entries[2] << QByteArray("0");
        QTest::newRow("collapse all, root") << Entries[0] << 0 << Entries[2] << QByteArray();
    }

    void anEntryActsOnItsBranch()
    {
        // given
        QFETCH(QByteArray, oBefore);
        QFETCH(int, iNode);
        QFETCH(QByteArray, oEntry);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        if (!oBefore.isEmpty())
            oAnalyst.chooseAt(oAnalyst.item(0), oBefore);
        // when
        oAnalyst.chooseAt(oAnalyst.item(iNode), oEntry);
        // then
        QTEST(oAnalyst.openNodes(), "oOpen");
        QCOMPARE(oAnalyst.openMenu(), QByteArrayList({"none"}));
    }

    void aClosedBranchForgetsWhatWasOpenInIt()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oAnalyst.chooseAt(oAnalyst.item(0), "expand all");
        // when
        oAnalyst.chooseAt(oAnalyst.item(0), "collapse all");
        // then
        QVERIFY(oAnalyst.item(1).isEmpty());
        // when
        oAnalyst.chooseAt(oAnalyst.item(0), "expand 2 levels");
        // then
        QVERIFY(!oAnalyst.item(3).isEmpty());
        QVERIFY(oAnalyst.item(5).isEmpty());
    }

    void besideTheNodesTheEntriesDoNothing_data() { addEntries(); }

    void besideTheNodesTheEntriesDoNothing()
    {
        // given
        QFETCH(QByteArray, oEntry);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oAnalyst.click(oAnalyst.item(1), 3);
        oAnalyst.press({"Escape"});
        const QByteArrayList lBefore = oAnalyst.tree();
        oServer.startLog();
        // when
        const QPoint oBeside = oAnalyst.part("ListView").center();
        oScreen.click(oBeside, 3);
        // then
        QCOMPARE(oAnalyst.openMenu(), Entries);
        QCOMPARE(oAnalyst.part("popup").topLeft(), oBeside);
        // when
        oAnalyst.click(oAnalyst.entry(oEntry));
        // then
        QCOMPARE(oAnalyst.tree(), lBefore);
        QCOMPARE(oServer.log(), QStringList());
    }

    void besideANumberItsNodeIsMeant()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        const QRect oKeywords(oAnalyst.header("Keywords").left(), oAnalyst.item(1).top(), 20, 13);
        oAnalyst.chooseAt(oKeywords, "expand 2 levels");
        QCOMPARE(oAnalyst.openNodes(), "0 1 3");
    }

    void aRightClickChoosesItsNodeOnce()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oServer.startLog();
        // when
        oAnalyst.click(oAnalyst.item(1), 3);
        // then
        QCOMPARE(oAnalyst.currentNode(), "1");
        QCOMPARE(oServer.log(), QStringList({treehost::documentsOf(1)}));
        QCOMPARE(oAnalyst.table().size(), 6);
        // when
        oAnalyst.click(oAnalyst.entry("expand all"));
        oAnalyst.chooseAt(oAnalyst.item(1), "collapse all");
        // then
        QCOMPARE(oAnalyst.currentNode(), "1");
        QCOMPARE(oServer.log(), QStringList({treehost::documentsOf(1)}));
    }

    void escapeChangesNothing()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oAnalyst.click(oAnalyst.item(1), 3);
        oAnalyst.press({"Down", "Escape"});
        QCOMPARE(oAnalyst.openMenu(), QByteArrayList({"none"}));
        QCOMPARE(oAnalyst.openNodes(), "0");
        QCOMPARE(oAnalyst.focus(), "ListView");
    }

    void aClickElsewhereClosesTheMenu()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oAnalyst.click(oAnalyst.item(1), 3);
        oAnalyst.click(oAnalyst.part("texteditor"));
        QCOMPARE(oAnalyst.openMenu(), QByteArrayList({"none"}));
        QCOMPARE(oAnalyst.openNodes(), "0");
        QCOMPARE(oAnalyst.currentNode(), "1");
    }

    void aTreeRebuiltUnderItsMenuForgetsTheNode_data() { addEntries(); }

    void aTreeRebuiltUnderItsMenuForgetsTheNode()
    {
        // given
        QFETCH(QByteArray, oEntry);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oAnalyst.click(oAnalyst.item(1), 3);
        // when
        treehost::pass(oHost, treehost::deepTree());
        // then
        QCOMPARE(oAnalyst.openMenu(), Entries);
        QCOMPARE(oAnalyst.currentNode(), "none");
        // when
        oAnalyst.click(oAnalyst.entry(oEntry));
        // then
        QCOMPARE(oAnalyst.openNodes(), "0");
        // when
        oAnalyst.chooseAt(oAnalyst.item(2), "expand all");
        // then
        QCOMPARE(oAnalyst.openNodes(), "0 2");
    }

    void aHostsChoiceUnderTheMenuChangesNoBranch()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oAnalyst.click(oAnalyst.item(1), 3);
        // when
        oHost.call("select", {"i:2"});
        oAnalyst.click(oAnalyst.entry("expand 2 levels"));
        // then
        QCOMPARE(oAnalyst.openNodes(), "0 1 3");
        QCOMPARE(oAnalyst.currentNode(), "2");
    }

    void theWindowMayEndUnderItsMenu()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oAnalyst.click(oAnalyst.item(1), 3);
        QCOMPARE(oAnalyst.openMenu(), Entries);
        // when
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(qRgb(255, 255, 255)) == 0); // the menu has gone, too
        // when
        show(oAnalyst);
        // then
        QCOMPARE(oAnalyst.openMenu(), QByteArrayList({"none"}));
        oAnalyst.chooseAt(oAnalyst.item(2), "expand all");
        QCOMPARE(oAnalyst.openNodes(), "0 2");
    }

private:
    static void addEntries()
    {
        QTest::addColumn<QByteArray>("oEntry");
        for (const QByteArray& oEntry : Entries)
            QTest::newRow(oEntry.constData()) << oEntry;
    }

    static void show(CAnalyst& oAnalyst) { treehost::show(oAnalyst, treehost::deepTree()); }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleTreeMenu)
#include "tst_module_treemenu.moc"
