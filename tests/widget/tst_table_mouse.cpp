// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTable.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>

using namespace Qt::StringLiterals;

class TestTableMouse : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void init()
    {
        CStrictTest::init();
        pTable = std::make_unique<CTestTable>();
        pTable->setTables();
        table().selection(1);
        pTable->show();
        pTable->recordCurrentTitles(slTitles);
        pTable->recordDoubleClicks(slClicks);
    }

    void cleanup()
    {
        pTable.reset();
        slTitles.clear();
        slClicks.clear();
    }

    void aPressChoosesItsRow_data()
    {
        QTest::addColumn<Qt::MouseButton>("eButton");
        QTest::newRow("left") << Qt::LeftButton;
        QTest::newRow("right") << Qt::RightButton;
    }

    void aPressChoosesItsRow()
    {
        QFETCH(Qt::MouseButton, eButton);
        QTest::mouseClick(viewport(), eButton, {}, pTable->cell(3, 1).center());
        QCOMPARE(table().currentRow(), 3);
        QCOMPARE(table().currentColumn(), 1);
        QVERIFY(table().selectionModel()->isRowSelected(3));
        QCOMPARE(slTitles, QStringList{u"Wahl in Köln"_s});
        QCOMPARE(slClicks, QStringList());
    }

    void aSecondPressInTheRowIsNotAnnounced()
    {
        QTest::mouseClick(viewport(), Qt::LeftButton, {}, pTable->cell(3, 1).center());
        QTest::mouseClick(viewport(), Qt::LeftButton, {}, pTable->cell(3, 0).center());
        QCOMPARE(slTitles.size(), 1);
        QCOMPARE(table().currentColumn(), 0);
    }

    void aPressBesideTheCellsActsOnTheNearestOne_data()
    {
        QTest::addColumn<QPoint>("oBeside");
        QTest::addColumn<int>("iRow");
        QTest::addColumn<int>("iColumn");
        QTest::newRow("below") << QPoint(0, 150) << 4 << 0;
        QTest::newRow("right") << QPoint(480, 0) << 0 << 1;
        QTest::newRow("below and right") << QPoint(480, 150) << 4 << 1;
    }

    void aPressBesideTheCellsActsOnTheNearestOne()
    {
        QFETCH(QPoint, oBeside);
        QFETCH(int, iRow);
        QFETCH(int, iColumn);
        table().resize(700, 300);
        const QPoint oPlace = oBeside + QPoint(10, 10);
        QVERIFY(!table().indexAt(oPlace).isValid());
        QTest::mouseClick(viewport(), Qt::LeftButton, {}, oPlace);
        QCOMPARE(table().currentRow(), iRow);
        QCOMPARE(table().currentColumn(), iColumn);
        QVERIFY(table().selectionModel()->isRowSelected(iRow));
    }

    void aPressOnAnEmptyTableDoesNothing()
    {
        table().selection(3);
        QTest::mouseClick(viewport(), Qt::LeftButton, {}, QPoint(10, 10));
        QCOMPARE(table().currentRow(), -1);
        QCOMPARE(slTitles, QStringList());
    }

    void aDoubleClickIsAnnouncedWithItsCellAndPlace()
    {
        const QPoint oPlace = pTable->cell(3, 1).center();
        doubleClick(Qt::LeftButton, oPlace);
        QCOMPARE(slClicks, QStringList{u"3, 1, 1, %1, %2"_s.arg(oPlace.x()).arg(oPlace.y())});
        QCOMPARE(table().currentRow(), 3);
    }

    void thePlaceCountsFromTheContents()
    {
        table().resize(120, 80);
        QVERIFY(table().verticalScrollBar()->maximum() > 0 && table().horizontalScrollBar()->maximum() > 0);
        table().verticalScrollBar()->setValue(table().verticalScrollBar()->maximum());
        table().horizontalScrollBar()->setValue(table().horizontalScrollBar()->maximum());
        const QPoint oScrolled(
            table().horizontalScrollBar()->maximum(), table().verticalScrollBar()->maximum());
        doubleClick(Qt::LeftButton, QPoint(5, 5));
        const QPoint oContents = QPoint(5, 5) + oScrolled;
        QCOMPARE(slClicks.value(0).section(u", "_s, 3), u"%1, %2"_s.arg(oContents.x()).arg(oContents.y()));
        QCOMPARE(slClicks.value(0).section(u", "_s, 0, 0), QString::number(oContents.y() / 20));
    }

    void aDoubleClickBesideTheCellsHasNoCell()
    {
        table().resize(700, 300);
        doubleClick(Qt::LeftButton, QPoint(490, 160));
        doubleClick(Qt::LeftButton, QPoint(10, 160));
        doubleClick(Qt::LeftButton, QPoint(490, 10));
        QCOMPARE(slClicks,
            (QStringList{u"-1, -1, 1, 490, 160"_s, u"-1, 0, 1, 10, 160"_s, u"0, -1, 1, 490, 10"_s}));
    }

    void onlyTheLeftButtonDoubleClicks()
    {
        doubleClick(Qt::RightButton, pTable->cell(3, 1).center());
        doubleClick(Qt::MiddleButton, pTable->cell(2, 1).center());
        QCOMPARE(slClicks, QStringList());
    }

    void aDoubleClickEditsNothing()
    {
        doubleClick(Qt::LeftButton, pTable->cell(3, 1).center());
        QVERIFY(table().indexWidget(table().currentIndex()) == nullptr);
        QCOMPARE(static_cast<QAbstractItemView&>(table()).editTriggers(), QAbstractItemView::NoEditTriggers);
    }

    void aColumnHeaderDoesNothing()
    {
        const QHeaderView& oHeader = *table().horizontalHeader();
        const QPoint oPlace(oHeader.sectionViewportPosition(1) + 20, oHeader.height() / 2);
        const QStringList slBefore = pTable->picture();
        QTest::mouseClick(oHeader.viewport(), Qt::LeftButton, {}, oPlace);
        QTest::mouseDClick(oHeader.viewport(), Qt::LeftButton, {}, oPlace);
        QCOMPARE(table().currentRow(), -1);
        QVERIFY(!table().selectionModel()->hasSelection());
        QCOMPARE(pTable->picture(), slBefore);
        QVERIFY(!oHeader.sectionsClickable());
    }

    void aRowHeaderChoosesItsRow()
    {
        const QHeaderView& oHeader = *table().verticalHeader();
        const QPoint oPlace(oHeader.width() / 2, oHeader.sectionViewportPosition(2) + 10);
        QTest::mouseClick(oHeader.viewport(), Qt::LeftButton, {}, oPlace);
        QCOMPARE(table().currentRow(), 2);
        QVERIFY(table().selectionModel()->isRowSelected(2));
        QCOMPARE(slTitles, QStringList{u"Schnee im März"_s});
    }

    void severalRowsCannotBeSelected()
    {
        QTest::mouseClick(viewport(), Qt::LeftButton, {}, pTable->cell(1, 0).center());
        for (const Qt::KeyboardModifier eModifier : {Qt::ShiftModifier, Qt::ControlModifier})
            QTest::mouseClick(viewport(), Qt::LeftButton, eModifier, pTable->cell(3, 0).center());
        QVERIFY(table().selectionModel()->selectedRows().size() <= 1);
    }

    void theTableHasNoMenuOfItsOwn()
    {
        QTest::mouseClick(viewport(), Qt::RightButton, {}, pTable->cell(1, 0).center());
        QCOMPARE(table().contextMenuPolicy(), Qt::NoContextMenu);
        QVERIFY(QApplication::activePopupWidget() == nullptr);
    }

private:
    CTable& table() { return **pTable; }
    QWidget* viewport() { return pTable->viewport(); }
    void doubleClick(Qt::MouseButton eButton, const QPoint& oPlace)
    {
        QTest::mouseClick(viewport(), eButton, {}, oPlace);
        QTest::mouseDClick(viewport(), eButton, {}, oPlace);
    }

    CPrivateServer oServer;
    std::unique_ptr<CTestTable> pTable;
    QStringList slTitles;
    QStringList slClicks;
};

QTUTILS_WIDGET_TEST_MAIN(TestTableMouse, CPrivateDisplay::Manager::Running)
#include "tst_table_mouse.moc"
