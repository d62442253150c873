// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTable.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QScrollBar>

using namespace Qt::StringLiterals;

/// The first date of a selection, and where a marked row comes to stand.
class TestTableMarks : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void theFirstRowsDateIsAnswered()
    {
        CTestTable oTable;
        oTable.showDates(oServer, {u"2006-05-10 12:00:05"_s, u"2006-05-09 12:00:00"_s});
        QCOMPARE(firstDateInSelection(oTable), "2006-05-10T12:00:05"_ba);
    }

    void withoutARowTheFirstDateIsLeftAlone()
    {
        CTestTable oTable;
        QTest::ignoreMessage(QtDebugMsg,
            "CTable: An Error occurred while getting first date in selection                \n"
            "SelectCursor is empty!");
        QCOMPARE(firstDateInSelection(oTable), "untouched"_ba);
    }

    void withoutADateColumnTheNodeStandsIn()
    {
        oServer.sql(u"CREATE OR REPLACE TABLE news.dateless AS SELECT id, title FROM news.document"_s);
        CTestTable oTable;
        oTable.setTables(u"dateless"_s);
        oTable->changeSort(2);
        oTable->selection(2);
        QCOMPARE(firstDateInSelection(oTable), "2"_ba);
    }

    void fiveRowsBehindAMarkedOneAreInSight()
    {
        CTestTable oTable;
        showManyRows(oTable);
        oTable.show();
        mark(oTable);
        QCOMPARE(oTable->currentRow(), 50);
        QVERIFY(isInSight(oTable, 50));
        QVERIFY(isInSight(oTable, 55));
        QVERIFY(!isInSight(oTable, 56));
    }

    void aRowMarkedUnseenIsInSightOnceTheTableIsShown()
    {
        CTestTable oTable;
        showManyRows(oTable);
        mark(oTable);
        oTable.show();
        QVERIFY(isInSight(oTable, 50));
        QVERIFY(isInSight(oTable, 55));
    }

    void aRowMarkedUnseenNearTheTopScrollsNothing()
    {
        CTestTable oTable;
        showManyRows(oTable);
        oTable->resize(60, 60);
        mark(oTable, "2006-01-12 12:00:00");
        oTable.show();
        QCOMPARE(oTable->currentRow(), 2);
        QVERIFY(isInSight(oTable, 0));
        QCOMPARE(oTable->horizontalScrollBar()->value(), 0);
    }

    void aMarkNearTheEndShowsTheLastRows()
    {
        CTestTable oTable;
        showManyRows(oTable, 52);
        oTable.show();
        mark(oTable);
        QCOMPARE(oTable->currentRow(), 50);
        QCOMPARE(oTable->verticalScrollBar()->value(), oTable->verticalScrollBar()->maximum());
    }

private:
    /// A row for each day from 2006-01-01 on.
    void showManyRows(CTestTable& oTable, int iRows = 100)
    {
        QStringList slDates;
        for (int i = 0; i < iRows; i++)
            slDates << QDate(2006, 1, 1).addDays(i).toString(Qt::ISODate);
        oTable.showDates(oServer, slDates);
    }

    /// The first row later than ten days before the date; that of the default is 2006-02-20, the 51st.
    static void mark(CTestTable& oTable, QByteArray oDate = "2006-03-01 12:00:00")
    {
        oTable->markRow(oDate.data(), 0);
    }

    static bool isInSight(CTestTable& oTable, int iRow)
    {
        return oTable.viewport()->rect().contains(oTable.cell(iRow, 0));
    }

    static QByteArray firstDateInSelection(CTestTable& oTable)
    {
        char acDate[20] = "untouched";
        oTable->getFirstDateInSelection(acDate);
        return acDate;
    }

    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestTableMarks, CPrivateDisplay::Manager::Running)
#include "tst_table_marks.moc"
