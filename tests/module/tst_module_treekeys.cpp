// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

/// Branches opened, nodes chosen and the tree's menu used without it, by keys and by clicks.
class TestModuleTreeKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void keysMoveInTheTree_data()
    {
        QTest::addColumn<QByteArrayList>("lKeys");
        QTest::addColumn<QByteArray>("oOpen");
        QTest::addColumn<QList<int>>("lChosen");
        const auto row = [](const char* pcName, const QByteArrayList& lKeys, const char* pcOpen,
                             const QList<int>& lChosen) {
            QTest::newRow(pcName) << lKeys << QByteArray(pcOpen) << lChosen;
        };
        row("down", {"Down"}, "0", {2});
        row("up", {"Up"}, "0", {0});
        row("up at the top", {"Up", "Up"}, "0", {0});
        row("down at the end", {"Down", "Down", "Down"}, "0", {2});
        row("end", {"End"}, "0", {2});
        row("home", {"Home"}, "0", {0});
        row("a page", {"Next", "Prior"}, "0", {2, 0});
        row("right opens", {"Right"}, "0 1", {});
        row("right goes into an open branch", {"Right", "Right"}, "0 1", {3});
        row("right at a leaf", {"Down", "Right", "Right", "Right"}, "0 2", {2, 7});
        row("left closes", {"Right", "Left"}, "0", {});
        row("left goes out of a closed branch", {"Left"}, "0", {0});
        row("left closes the root", {"Left", "Left"}, "", {0});
        row("left at a closed root", {"Left", "Left", "Left"}, "", {0});
        row("plus opens", {"plus"}, "0 1", {});
        row("plus at an open branch", {"plus", "plus"}, "0 1", {});
        row("minus closes", {"plus", "minus"}, "0", {});
        row("minus at a closed branch", {"minus"}, "0", {});
        row("the keypad's signs", {"KP_Add", "Down", "KP_Add", "Up", "KP_Subtract"}, "0 3", {3, 1});
        row("an asterisk opens the whole branch", {"asterisk"}, "0 1 3 5", {});
        row("a node's number", {"2"}, "0", {2});
        row("the number of a hidden node", {"7"}, "0", {});
        row("other keys", {"Return", "space", "x", "Delete", "Escape", "F2"}, "0", {});
    }

    void keysMoveInTheTree()
    {
        // given
        QFETCH(QByteArrayList, lKeys);
        QFETCH(QList<int>, lChosen);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oAnalyst.click(oAnalyst.item(1));
        QCOMPARE(oAnalyst.currentNode(), "1");
        oServer.startLog();
        // when
        oAnalyst.press(lKeys);
        // then
        QTEST(oAnalyst.openNodes(), "oOpen");
        QCOMPARE(oAnalyst.currentNode(), QByteArray::number(lChosen.isEmpty() ? 1 : lChosen.last()));
        QCOMPARE(oServer.log(), statements(lChosen));
    }

    void theFirstKeyBeginsAtTheRoot()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oScreen.click(oAnalyst.part("ListView").center());
        oServer.startLog();
        oAnalyst.press({"Down"});
        QCOMPARE(oAnalyst.currentNode(), "0");
        QCOMPARE(oServer.log(), statements({0}));
    }

    void aDeepNodeIsReachedByKeys()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oAnalyst.click(oAnalyst.item(0));
        oServer.startLog();
        oAnalyst.press({"asterisk", "Down", "Down", "Down", "Down"});
        QCOMPARE(oAnalyst.currentNode(), "6");
        QCOMPARE(oServer.log(), statements({1, 3, 5, 6}));
    }

    void theMarkBesideANodeOpensAndClosesIt()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oServer.startLog();
        // when, then
        oAnalyst.click(oAnalyst.branchMark(1));
        QCOMPARE(oAnalyst.openNodes(), "0 1");
        oAnalyst.click(oAnalyst.branchMark(3));
        QCOMPARE(oAnalyst.openNodes(), "0 1 3");
        oAnalyst.click(oAnalyst.branchMark(1));
        QCOMPARE(oAnalyst.openNodes(), "0 3");
        oAnalyst.click(oAnalyst.branchMark(0));
        QCOMPARE(oAnalyst.openNodes(), "3");
        QVERIFY(oAnalyst.item(2).isEmpty());
        oScreen.click(oAnalyst.part("ListView").center()); // or the next click would be a double one
        oAnalyst.click(oAnalyst.branchMark(0));
        QVERIFY(!oAnalyst.item(2).isEmpty());
        QCOMPARE(oServer.log(), QStringList());
    }

    void aDoubleClickOpensAndClosesABranch()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oServer.startLog();
        oAnalyst.doubleClick(oAnalyst.item(1));
        QCOMPARE(oAnalyst.openNodes(), "0 1");
        oAnalyst.doubleClick(oAnalyst.item(2));
        QCOMPARE(oAnalyst.openNodes(), "0 1 2");
        oAnalyst.doubleClick(oAnalyst.item(1));
        QCOMPARE(oAnalyst.openNodes(), "0 2");
        oAnalyst.doubleClick(oAnalyst.item(7));
        QCOMPARE(oAnalyst.openNodes(), "0 2");
        QCOMPARE(oServer.log(), statements({1, 2, 1, 7}));
        QCOMPARE(oAnalyst.viewers(), QByteArrayList());
    }

    void keysChooseAnEntry_data()
    {
        QTest::addColumn<QByteArrayList>("lKeys");
        QTest::addColumn<QByteArray>("oOpen");
        QTest::newRow("first") << QByteArrayList{"Down", "Return"} << QByteArray("0 1 3 5");
        QTest::newRow("second") << QByteArrayList{"Down", "Down", "Return"} << QByteArray("0 1 3");
        QTest::newRow("last") << QByteArrayList{"Up", "Return"} << QByteArray("0");
    }

    void keysChooseAnEntry()
    {
        // given
        QFETCH(QByteArrayList, lKeys);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oAnalyst.click(oAnalyst.item(1));
        oAnalyst.press({"plus"});
        QCOMPARE(oAnalyst.openNodes(), "0 1");
        // when
        oAnalyst.press({"Menu"});
        // then
        QCOMPARE(oAnalyst.openMenu().size(), 3);
        QVERIFY(oAnalyst.part("ListView").contains(oAnalyst.part("popup").topLeft()));
        // when
        oAnalyst.press(lKeys);
        // then
        QTEST(oAnalyst.openNodes(), "oOpen");
        QCOMPARE(oAnalyst.currentNode(), "1");
    }

    void theKeyMeansTheCurrentNodeNotThePointer()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oAnalyst.click(oAnalyst.item(1));
        oHost.call("select", {"i:2"});
        // when
        oAnalyst.press({"Menu", "Down", "Return"});
        // then
        QCOMPARE(oAnalyst.openNodes(), "0 2");
    }

    void theKeyMeansTheCurrentNodeOutOfSightToo()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, manyBranches());
        oAnalyst.click(oAnalyst.item(1));
        for (int i = 0; i < 10; i++)
            oScreen.click(oAnalyst.part("ListView").center(), Wheel);
        QVERIFY(oAnalyst.item(1).isEmpty());
        // when
        oAnalyst.press({"Menu", "Down", "Return"});
        // then
        QCOMPARE(oAnalyst.openNodes(), "0 1");
    }

    void withoutACurrentNodeTheKeyDoesNothing()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, manyBranches());
        QCOMPARE(oAnalyst.focus(), "ListView");
        oServer.startLog();
        // when
        oAnalyst.press({"Menu", "Down", "Return"});
        // then
        QCOMPARE(oAnalyst.openNodes(), "0");
        QCOMPARE(oAnalyst.currentNode(), "none");
        QCOMPARE(oServer.log(), QStringList());
    }

    void theKeysMenuOpensAtTheCurrentNode()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        oAnalyst.click(oAnalyst.item(1));
        oAnalyst.press({"Menu"});
        QVERIFY(oAnalyst.item(1).contains(oAnalyst.part("popup").topLeft()));
    }

private:
    static constexpr int Wheel = 5; ///< the button of a turn towards the end

    static void show(CAnalyst& oAnalyst) { treehost::show(oAnalyst, treehost::deepTree()); }

    // More than there is room for, with a node below each.
    static QByteArrayList manyBranches()
    {
        QByteArrayList lChildren(101, "200");
        lChildren[0] = "1";
        for (int i = 2; i <= 100; i++)
            lChildren[0] += ',' + QByteArray::number(i);
        return lChildren;
    }

    static QStringList statements(const QList<int>& lNodes)
    {
        QStringList slStatements;
        for (const int iNode : lNodes)
            slStatements << treehost::documentsOf(iNode);
        return slStatements;
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleTreeKeys)
#include "tst_module_treekeys.moc"
