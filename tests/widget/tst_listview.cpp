// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTree.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/pictures.h"
#include "tests/support/testmain.h"

#include <QDir>
#include <QHeaderView>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

class TestListView : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    // Signs two rows high, each in a colour of its own.
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        QDir(oFolder.path()).mkdir(u"Images"_s);
        QDir::setCurrent(oFolder.path());
        for (int i = 0; i <= 20; i++) {
            QPixmap oPixmap(28, 28);
            oPixmap.fill(signColor(i));
            QVERIFY(oPixmap.save(u"Images/%1.xpm"_s.arg(i), "XPM"));
        }
    }

    void aNewTreeIsEmptyAndTakesNoWidth()
    {
        const CTestTree oTree;
        QCOMPARE(oTree.picture(), QStringList());
        QCOMPARE(oTree->maximumWidth(), 0);
        QCOMPARE(oTree->objectName(), u"ListView"_s);
        QCOMPARE(oTree->font().family(), u"Sans Serif"_s);
        QCOMPARE(oTree->font().pointSize(), 8);
        QCOMPARE(pictures::table(*oTree->model()), QStringList{u"Nodes | Keywords"_s});
        QVERIFY(oTree->rootIsDecorated());
    }

    void fillingOpensTheTree()
    {
        CTestTree oTree;
        oTree.fill({{}}, QString());
        QCOMPARE(oTree->minimumWidth(), 340);
        QCOMPARE(oTree->maximumWidth(), QWIDGETSIZE_MAX);
    }

    void withoutChildrenThereIsAnOpenRootOnly()
    {
        CTestTree oTree;
        oTree.fill({{}, {}}, QString());
        QCOMPARE(oTree.picture(), QStringList{u"- 0 | "_s});
        QVERIFY(oTree->isExpanded(oTree.root()));
    }

    void withoutAnyNodeThereIsARoot()
    {
        CTestTree oTree;
        oTree.fill({}, QString());
        QCOMPARE(oTree.picture(), QStringList{u"- 0 | "_s});
    }

    void siblingsStandInTheOrderOfTheirNumbers()
    {
        CTestTree oTree;
        oTree.fill({{7, 2, 10}, {}, {11, 1}}, QString());
        QCOMPARE(oTree.picture(),
            (QStringList{u"v 0 | "_s, u"  > 2 | "_s, u"    - 1 | "_s, u"    - 11 | "_s, u"  - 7 | "_s,
                u"  - 10 | "_s}));
    }

    void keywordsStandBesideTheirNodes()
    {
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill({{1, 3}, {2}, {}, {}}, u"news_train"_s);
        QCOMPARE(oTree.picture(),
            (QStringList{u"v 0 | alles, viel, mehr"_s, u"  > 1 | red, green, blue"_s, u"    - 2 | warm"_s,
                u"  - 3 | leer, nichts, keiner"_s}));
    }

    void aNodeShowsTheSignOfItsTopic()
    {
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill({{1, 2, 3}, {}, {}, {}}, u"news_train"_s);
        QCOMPARE(sign(oTree.item(1)), signColor(3));
        QCOMPARE(sign(oTree.item(3)), signColor(1));
    }

    void topicsAbove20ShareTheLastSign()
    {
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill({{2}, {}, {}}, u"news_train"_s);
        QCOMPARE(sign(oTree.item(2)), signColor(20));
    }

    void theRootShowsSign0WhateverItsTopic()
    {
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill({{}}, u"news_train"_s);
        QCOMPARE(
            oServer.sql(u"SELECT _assigned_topic FROM som.news_som WHERE node=0"_s), QStringList{u"5"_s});
        QCOMPARE(sign(oTree.root()), signColor(0));
    }

    void aSignIsAsHighAsItsRowsAllow()
    {
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill({{1}, {}}, u"news_train"_s);
        QCOMPARE(icon(oTree.root()).availableSizes(), QList<QSize>{QSize(14, 14)});
        QCOMPARE(oTree->iconSize(), QSize(14, 14));
    }

    void withoutTopicsThereAreNoSigns()
    {
        CTestTree oTree;
        oTree.fill({{1}, {}}, QString());
        QVERIFY(icon(oTree.root()).isNull());
        QVERIFY(icon(oTree.item(1)).isNull());
    }

    void nodesBeyondTheKeywordTableHaveANumberOnly()
    {
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill({{3, 4, 99}, {}, {}, {}, {}}, u"news_train"_s);
        QCOMPARE(oTree.picture().mid(1),
            (QStringList{u"  - 3 | leer, nichts, keiner"_s, u"  - 4 | "_s, u"  - 99 | "_s}));
        QVERIFY(icon(oTree.item(4)).isNull());
    }

    void rowsBeyondTheHierarchyAreLeftOut()
    {
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill({{1}}, u"news_train"_s);
        QCOMPARE(oTree.picture(), (QStringList{u"v 0 | alles, viel, mehr"_s, u"  - 1 | red, green, blue"_s}));
    }

    void topicsBeyondTheHierarchyAreLeftOut()
    {
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill({{1}}, u"news_train"_s);
        QVERIFY(!icon(oTree.root()).isNull());
        QVERIFY(icon(oTree.item(1)).isNull());
    }

    void aNodeBelowItselfIsLeftOut()
    {
        CTestTree oTree;
        oTree.fill({{1, 0}, {2}, {1, 3}, {}}, QString());
        QCOMPARE(
            oTree.picture(), (QStringList{u"v 0 | "_s, u"  > 1 | "_s, u"    > 2 | "_s, u"      - 3 | "_s}));
    }

    void aNodeMayStandInTwoBranches()
    {
        CTestTree oTree;
        oTree.fill({{1, 2}, {3}, {3}, {}}, QString());
        QCOMPARE(oTree.picture(),
            (QStringList{u"v 0 | "_s, u"  > 1 | "_s, u"    - 3 | "_s, u"  > 2 | "_s, u"    - 3 | "_s}));
    }

    void aNegativeNodeIsALeaf()
    {
        CTestTree oTree;
        oTree.fill({{-1, 1}, {}}, QString());
        QCOMPARE(oTree.picture(), (QStringList{u"v 0 | "_s, u"  - -1 | "_s, u"  - 1 | "_s}));
    }

    void aDeepHierarchyIsBuilt()
    {
        CNodeLists vviNodes;
        vviNodes.resize(1999);
        for (int i = 1; i < 2000; i++)
            vviNodes.set(std::size_t(i) - 1, std::span(&i, 1));
        CTestTree oTree;
        oTree.fill(vviNodes, QString());
        QCOMPARE(oTree.picture().size(), 2000);
    }

    void aNullHierarchyChangesNothing()
    {
        CTestTree oTree;
        oTree->fillList(nullptr, u"news_train"_s);
        QCOMPARE(oTree->maximumWidth(), 0);
        oTree.fill({{1}, {}}, QString());
        oTree->fillList(nullptr, u"news_train"_s);
        QCOMPARE(oTree.picture(), (QStringList{u"v 0 | "_s, u"  - 1 | "_s}));
    }

    void aSecondHierarchyReplacesTheFirst()
    {
        CTestTree oTree;
        oTree.fill({{1, 2}, {}, {}}, QString());
        oTree.fill({{3}, {}, {}, {}}, QString());
        QCOMPARE(oTree.picture(), (QStringList{u"v 0 | "_s, u"  - 3 | "_s}));
    }

    void fillingChoosesNoNode()
    {
        CTestTree oTree;
        oTree.fill({{1, 2}, {}, {}}, QString());
        oTree->setCurrentIndex(oTree.item(2));
        int iChanges = 0;
        connect(&*oTree, &CListView::currentItemChanged, this, [&] { iChanges++; });
        oTree.fill({{1, 2}, {}, {}}, QString());
        oTree.show();
        QCOMPARE(iChanges, 0);
        QVERIFY(!oTree->currentIndex().isValid());
    }

    void focusChoosesNoNode()
    {
        CTestTree oTree;
        oTree.fill({{1, 2}, {}, {}}, QString());
        QWidget oWindow;
        auto* pLayout = new QVBoxLayout(&oWindow);
        auto* pField = new QLineEdit(&oWindow);
        pLayout->addWidget(pField);
        pLayout->addWidget(&*oTree);
        pField->setFocus();
        oWindow.show();
        QVERIFY(QTest::qWaitForWindowActive(&oWindow));
        QTRY_VERIFY(pField->hasFocus());
        oTree->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(oTree->hasFocus());
        QVERIFY(!oTree->currentIndex().isValid());
        oTree->setParent(nullptr);
    }

    void aHeaderSortsByItsColumn()
    {
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill({{1, 2, 3}, {}, {}, {}}, u"news_train"_s);
        oTree.show();
        const QStringList slByNumber = oTree.picture();
        clickHeader(oTree, 1);
        QCOMPARE(oTree.picture().mid(1),
            (QStringList{
                u"  - 3 | leer, nichts, keiner"_s, u"  - 1 | red, green, blue"_s, u"  - 2 | warm"_s}));
        clickHeader(oTree, 1);
        QCOMPARE(oTree.picture().mid(1),
            (QStringList{
                u"  - 2 | warm"_s, u"  - 1 | red, green, blue"_s, u"  - 3 | leer, nichts, keiner"_s}));
        clickHeader(oTree, 0);
        QCOMPARE(oTree.picture(), slByNumber);
    }

    void aColumnIsWideEnoughForTheTextsOfClosedBranches()
    {
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill({{2}, {}, {3}, {}}, u"news_train"_s);
        const int iText = oTree->fontMetrics().horizontalAdvance(u"leer, nichts, keiner"_s);
        QVERIFY(oTree->columnWidth(1) >= iText);
        QVERIFY(oTree->columnWidth(1) < iText + 30);
        QVERIFY(oTree->columnWidth(0) >= 3 * oTree->indentation() + 14);
    }

private:
    static QColor signColor(int iTopic) { return {10 * iTopic, 255 - 10 * iTopic, 0}; }
    static QIcon icon(const QModelIndex& oItem) { return oItem.data(Qt::DecorationRole).value<QIcon>(); }
    static QColor sign(const QModelIndex& oItem)
    {
        return icon(oItem).pixmap(14, 14).toImage().pixelColor(5, 5);
    }

    static void clickHeader(CTestTree& oTree, int iColumn)
    {
        const QHeaderView& oHeader = *oTree->header();
        QTest::mouseClick(oHeader.viewport(), Qt::LeftButton, {},
            QPoint(oHeader.sectionViewportPosition(iColumn) + 15, oHeader.height() / 2));
    }

    QTemporaryDir oFolder;
    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestListView, CPrivateDisplay::Manager::Running)
#include "tst_listview.moc"
