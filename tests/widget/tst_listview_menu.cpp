// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTree.h"

#include "tests/support/CStrictTest.h"
#include "tests/support/pictures.h"
#include "tests/support/testmain.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

enum Entry
{
    ExpandAll,
    ExpandTwoLevels,
    CollapseAll
};

// 0 - 1 - 3 - 5 - 6, and side branches
const CNodeLists Nodes{{1, 2}, {3, 4}, {7}, {5}, {}, {6}, {}, {}};

} // namespace

class TestListViewMenu : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        CStrictTest::init();
        pTree = std::make_unique<CTestTree>();
        pTree->fill(Nodes, QString());
        pTree->show();
    }

    void cleanup() { pTree.reset(); }

    void aRightClickOpensTheMenu()
    {
        rightClick(pTree->place(1));
        QCOMPARE(
            pictures::menu(menu()), (QStringList{u"expand all"_s, u"expand 2 levels"_s, u"collapse all"_s}));
        QVERIFY(menu().activeAction() == nullptr);
        QCOMPARE(menu().pos(), (*pTree)->viewport()->mapToGlobal(pTree->place(1)));
    }

    void aRightClickChoosesTheNodeFirst()
    {
        rightClick(pTree->place(2));
        QVERIFY((*pTree)->currentIndex() == pTree->item(2));
    }

    void theMenuOpensBesideTheNodesToo()
    {
        openAll();
        rightClick(pTree->place(1));
        menu().hide();
        const QStringList slBefore = pTree->picture();
        for (const Entry eEntry : {ExpandAll, ExpandTwoLevels, CollapseAll}) {
            rightClick(QPoint(20, 250));
            choose(eEntry);
            QCOMPARE(pTree->picture(), slBefore);
        }
    }

    void expandAllOpensTheWholeBranch()
    {
        rightClick(pTree->place(1));
        choose(ExpandAll);
        QCOMPARE(pTree->picture(),
            (QStringList{u"v 0 | "_s, u"  v 1 |  <"_s, u"    v 3 | "_s, u"      v 5 | "_s,
                u"        - 6 | "_s, u"    - 4 | "_s, u"  > 2 | "_s, u"    - 7 | "_s}));
    }

    void expandAllOnTheRootOpensEverything()
    {
        rightClick(pTree->place(0));
        choose(ExpandAll);
        QCOMPARE(kinds(), u"vvvv--v-"_s);
    }

    void expandTwoLevelsOpensANodeAndItsChildren()
    {
        (*pTree)->collapse(pTree->item(0));
        rightClick(pTree->place(0));
        choose(ExpandTwoLevels);
        QCOMPARE(kinds(), u"vv>>--v-"_s);
    }

    void expandTwoLevelsLeavesOpenNodesBelowOpen()
    {
        (*pTree)->expand(pTree->item(5));
        rightClick(pTree->place(1));
        choose(ExpandTwoLevels);
        QCOMPARE(kinds(), u"vvvv-->-"_s);
    }

    void expandTwoLevelsOnALeafChangesNothing()
    {
        (*pTree)->expand(pTree->item(2));
        const QString sBefore = kinds();
        rightClick(pTree->place(7));
        choose(ExpandTwoLevels);
        QCOMPARE(kinds(), sBefore);
    }

    void collapseAllClosesTheWholeBranchOnly()
    {
        openAll();
        rightClick(pTree->place(3));
        choose(CollapseAll);
        QCOMPARE(kinds(), u"vv>>--v-"_s);
    }

    void collapseAllOnTheRootClosesEverything()
    {
        openAll();
        rightClick(pTree->place(0));
        choose(CollapseAll);
        QCOMPARE(kinds(), u">>>>-->-"_s);
    }

    void collapseChildrenClosesTwoLevels()
    {
        openAll();
        rightClick(pTree->place(1));
        (*pTree)->collapseChildren();
        QCOMPARE(kinds(), u"v>>v--v-"_s);
    }

    void aDepthOfNoneDoesNothing()
    {
        (*pTree)->expandChildren(pTree->item(1), 0);
        (*pTree)->collapseChildren(pTree->item(0), 0);
        QCOMPARE(kinds(), u"v>>>-->-"_s);
    }

    void aDepthOfOneIsTheNodeItself()
    {
        (*pTree)->expandChildren(pTree->item(1), 1);
        QCOMPARE(kinds(), u"vv>>-->-"_s);
        (*pTree)->collapseChildren(pTree->item(0), 1);
        QCOMPARE(kinds(), u">v>>-->-"_s);
    }

    void withoutARequestTheActionsDoNothing()
    {
        (*pTree)->expandAll();
        (*pTree)->expandChildren();
        (*pTree)->collapseAll();
        (*pTree)->collapseChildren();
        QCOMPARE(kinds(), u"v>>>-->-"_s);
    }

    void aNewTreeForgetsTheNodeOfTheRequest()
    {
        rightClick(pTree->place(1));
        menu().hide();
        pTree->fill(Nodes, QString());
        (*pTree)->expandAll();
        QCOMPARE(kinds(), u"v>>>-->-"_s);
    }

    void theKeyboardAsksForTheCurrentNode()
    {
        (*pTree)->setCurrentIndex(pTree->item(1));
        const QPoint oPlace(20, 250);
        QContextMenuEvent oEvent(
            QContextMenuEvent::Keyboard, oPlace, (*pTree)->viewport()->mapToGlobal(oPlace));
        QCoreApplication::sendEvent((*pTree)->viewport(), &oEvent);
        choose(ExpandAll);
        QCOMPARE(kinds(), u"vvvv-->-"_s);
    }

private:
    QMenu& menu() { return *(*pTree)->findChild<QMenu*>(u"popup"_s); }

    void openAll() { (*pTree)->expandChildren(pTree->item(0), -1); }

    /// Open, closed or leaf, item by item from the top.
    QString kinds()
    {
        QString sKinds;
        for (const QString& sLine : pTree->picture())
            sKinds += sLine.trimmed().at(0);
        return sKinds;
    }

    // Through the window system, which makes the request for the menu out of the press.
    void rightClick(const QPoint& oPlace)
    {
        QWidget* pViewport = (*pTree)->viewport();
        QTest::mouseClick((*pTree)->windowHandle(), Qt::RightButton, {}, pViewport->mapTo(&**pTree, oPlace));
        QTRY_VERIFY(menu().isVisible());
    }

    void choose(Entry eEntry)
    {
        QAction* pAction = menu().actions().at(eEntry);
        QTest::mouseClick(&menu(), Qt::LeftButton, {}, menu().actionGeometry(pAction).center());
        QTRY_VERIFY(!menu().isVisible());
    }

    std::unique_ptr<CTestTree> pTree;
};

QTUTILS_WIDGET_TEST_MAIN(TestListViewMenu, CPrivateDisplay::Manager::Running)
#include "tst_listview_menu.moc"
