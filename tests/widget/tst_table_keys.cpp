// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTable.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

using Cell = std::pair<int, int>;

class TestTableKeys : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        oServer.sql(u"INSERT INTO news.document (id, date, title) SELECT 100 + seq,"
                    " '2007-01-01' + INTERVAL seq DAY, CONCAT('Nr. ', seq) FROM news.seq_1_to_100;"
                    "INSERT INTO som.news_train SELECT 9, 0, 100 + seq FROM news.seq_1_to_100"_s);
    }

    void init()
    {
        CStrictTest::init();
        pTable = std::make_unique<CTestTable>();
        pTable->setTables();
        table().selection(9);
        pTable->show();
    }

    void cleanup() { pTable.reset(); }

    void aKeyMovesTheCurrentCell_data()
    {
        QTest::addColumn<Cell>("oFrom");
        QTest::addColumn<int>("iKey");
        QTest::addColumn<Cell>("oTo");
        QTest::newRow("down") << Cell(3, 0) << int(Qt::Key_Down) << Cell(4, 0);
        QTest::newRow("down at the end") << Cell(99, 0) << int(Qt::Key_Down) << Cell(99, 0);
        QTest::newRow("up") << Cell(3, 1) << int(Qt::Key_Up) << Cell(2, 1);
        QTest::newRow("up at the beginning") << Cell(0, 1) << int(Qt::Key_Up) << Cell(0, 1);
        QTest::newRow("right") << Cell(3, 0) << int(Qt::Key_Right) << Cell(3, 1);
        QTest::newRow("right at the end") << Cell(3, 1) << int(Qt::Key_Right) << Cell(3, 1);
        QTest::newRow("left") << Cell(3, 1) << int(Qt::Key_Left) << Cell(3, 0);
        QTest::newRow("left at the beginning") << Cell(3, 0) << int(Qt::Key_Left) << Cell(3, 0);
        QTest::newRow("home: the first row") << Cell(50, 1) << int(Qt::Key_Home) << Cell(0, 1);
        QTest::newRow("end: the last row") << Cell(50, 0) << int(Qt::Key_End) << Cell(99, 0);
        QTest::newRow("tab: the next column") << Cell(3, 0) << int(Qt::Key_Tab) << Cell(3, 1);
        QTest::newRow("tab stops at the last column") << Cell(3, 1) << int(Qt::Key_Tab) << Cell(3, 1);
        QTest::newRow("back: the column before") << Cell(3, 1) << int(Qt::Key_Backtab) << Cell(3, 0);
        QTest::newRow("back stops at the first column") << Cell(3, 0) << int(Qt::Key_Backtab) << Cell(3, 0);
        for (const Qt::Key eKey : {Qt::Key_Space, Qt::Key_N, Qt::Key_9, Qt::Key_Enter, Qt::Key_Return,
                 Qt::Key_F2, Qt::Key_Insert, Qt::Key_Delete, Qt::Key_Escape, Qt::Key_A})
            QTest::addRow("no move: 0x%x", eKey) << Cell(3, 0) << int(eKey) << Cell(3, 0);
    }

    void aKeyMovesTheCurrentCell()
    {
        QFETCH(Cell, oFrom);
        QFETCH(int, iKey);
        QFETCH(Cell, oTo);
        choose(oFrom);
        QTest::keyClick(&table(), Qt::Key(iKey));
        QCOMPARE(Cell(table().currentRow(), table().currentColumn()), oTo);
        QCOMPARE(table().selectionModel()->selectedRows().size(), 1);
        QVERIFY(table().selectionModel()->isRowSelected(oTo.first));
        QVERIFY(table().findChildren<QLineEdit*>().isEmpty());
    }

    void pageKeysMoveByAScreen()
    {
        choose({0, 0});
        QTest::keyClick(&table(), Qt::Key_PageDown);
        const int iPage = table().currentRow();
        QVERIFY(iPage > 3 && iPage < 20);
        QTest::keyClick(&table(), Qt::Key_PageUp);
        QCOMPARE(table().currentRow(), 0);
    }

    void homeAndEndScroll()
    {
        choose({50, 0});
        QTest::keyClick(&table(), Qt::Key_End);
        QCOMPARE(table().verticalScrollBar()->value(), table().verticalScrollBar()->maximum());
        QTest::keyClick(&table(), Qt::Key_Home);
        QCOMPARE(table().verticalScrollBar()->value(), 0);
    }

    void onlyAnotherRowIsAnnounced()
    {
        choose({3, 0});
        QStringList slTitles;
        pTable->recordCurrentTitles(slTitles);
        for (const Qt::Key eKey : {Qt::Key_Right, Qt::Key_Left, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Down,
                 Qt::Key_Right, Qt::Key_End, Qt::Key_End, Qt::Key_Home})
            QTest::keyClick(&table(), eKey);
        QCOMPARE(slTitles, (QStringList{u"Nr. 5"_s, u"Nr. 100"_s, u"Nr. 1"_s}));
    }

    void returnIsADoubleClickOnTheCurrentCell()
    {
        choose({3, 1});
        QStringList slClicks;
        pTable->recordDoubleClicks(slClicks);
        QVERIFY(accepts(Qt::Key_Return));
        QCOMPARE(slClicks, QStringList{u"3, 1, 0, 0, 0"_s});
    }

    void returnWithoutACurrentCellReportsNone()
    {
        QStringList slClicks;
        pTable->recordDoubleClicks(slClicks);
        QVERIFY(accepts(Qt::Key_Return));
        QCOMPARE(slClicks, QStringList{u"-1, -1, 0, 0, 0"_s});
    }

    void returnRightAfterARowWasChosenReportsNoColumn()
    {
        table().selectRow(7);
        QStringList slClicks;
        pTable->recordDoubleClicks(slClicks);
        QTest::keyClick(&table(), Qt::Key_Return);
        QCOMPARE(slClicks, QStringList{u"7, -1, 0, 0, 0"_s});
    }

    void aRowChosenByTheProgramKeepsTheColumn()
    {
        choose({3, 1});
        table().selectRow(7);
        QCOMPARE(table().currentColumn(), 1);
        table().selection(9);
        table().selectRow(7);
        QCOMPARE(table().currentColumn(), -1);
    }

    void returnOnAPressedCellOfARowChosenByTheProgramReportsItsColumn()
    {
        table().selectRow(7);
        QStringList slClicks;
        pTable->recordDoubleClicks(slClicks);
        choose({7, 0});
        QTest::keyClick(&table(), Qt::Key_Return);
        QCOMPARE(slClicks, QStringList{u"7, 0, 0, 0, 0"_s});
    }

    void otherKeysAreLeftToTheParent_data()
    {
        QTest::addColumn<int>("iKey");
        for (const Qt::Key eKey : {Qt::Key_Enter, Qt::Key_Space, Qt::Key_A, Qt::Key_F2, Qt::Key_F3,
                 Qt::Key_Escape, Qt::Key_Insert, Qt::Key_Delete})
            QTest::addRow("0x%x", eKey) << int(eKey);
    }

    void otherKeysAreLeftToTheParent()
    {
        QFETCH(int, iKey);
        choose({3, 0});
        QStringList slClicks;
        pTable->recordDoubleClicks(slClicks);
        QVERIFY(!accepts(Qt::Key(iKey)));
        QCOMPARE(slClicks, QStringList());
    }

    void downBeginsAtTheFirstRow()
    {
        QCOMPARE(table().currentRow(), -1);
        QTest::keyClick(&table(), Qt::Key_Down);
        QCOMPARE(table().currentRow(), 0);
    }

    void keysOnAnEmptyTableDoNothing()
    {
        table().selection(3);
        for (const Qt::Key eKey : {Qt::Key_Home, Qt::Key_End, Qt::Key_Down, Qt::Key_Tab, Qt::Key_PageDown})
            QTest::keyClick(&table(), eKey);
        QCOMPARE(table().currentRow(), -1);
    }

    void controlCCopiesTheHeadersAndTheCurrentRow()
    {
        oServer.sql(u"UPDATE news.document SET title=CONCAT('Nr.', CHAR(9), 4, CHAR(13), CHAR(10), 'end')"
                    " WHERE id=104"_s);
        table().selection(9);
        choose({3, 0});
        QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"date\ttitle\n05.01.07 00:00\tNr. 4 end"_s);
    }

    void withoutACurrentRowNothingIsCopied()
    {
        QApplication::clipboard()->setText(u"before"_s);
        QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"before"_s);
    }

    void focusMakesNoRowCurrent()
    {
        // given a table beside a field that has the focus
        QStringList slTitles;
        QWidget oWindow;
        auto* pLayout = new QVBoxLayout(&oWindow);
        auto* pField = new QLineEdit(&oWindow);
        pLayout->addWidget(pField);
        pLayout->addWidget(&table());
        pField->setFocus();
        oWindow.show();
        QVERIFY(QTest::qWaitForWindowActive(&oWindow));
        QTRY_VERIFY(pField->hasFocus());
        pTable->recordCurrentTitles(slTitles);
        // when the table gets it
        table().setFocus(Qt::TabFocusReason);
        // then nothing is current
        QTRY_VERIFY(table().hasFocus());
        QCOMPARE(table().currentRow(), -1);
        QCOMPARE(slTitles, QStringList());
        table().setParent(nullptr);
    }

private:
    CTable& table() { return **pTable; }
    void choose(Cell oCell)
    {
        table().ensureCellVisible(oCell.first, oCell.second);
        QTest::mouseClick(
            pTable->viewport(), Qt::LeftButton, {}, pTable->cell(oCell.first, oCell.second).center());
        QCOMPARE(Cell(table().currentRow(), table().currentColumn()), oCell);
    }

    bool accepts(Qt::Key eKey)
    {
        QKeyEvent oEvent(QEvent::KeyPress, eKey, Qt::NoModifier);
        QCoreApplication::sendEvent(&table(), &oEvent);
        return oEvent.isAccepted();
    }

    CPrivateServer oServer;
    std::unique_ptr<CTestTable> pTable;
};

QTUTILS_WIDGET_TEST_MAIN(TestTableKeys, CPrivateDisplay::Manager::Running)
#include "tst_table_keys.moc"
