// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTable.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QHeaderView>
#include <QScrollBar>

using namespace Qt::StringLiterals;

class TestTableColumns : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        oServer.sql(u"INSERT INTO news.document (id, date, title) SELECT 1000 + seq,"
                    " '2007-01-01' + INTERVAL seq DAY, REPEAT('Wm', IF(seq = 1500, 40, 1))"
                    " FROM news.seq_1_to_1500;"
                    "INSERT INTO som.news_train SELECT 9, 0, 1000 + seq FROM news.seq_1_to_1500"_s);
    }

    void aColumnIsAsWideAsItsWidestText()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(1);
        QCOMPARE(oTable->columnWidth(0), textWidth(oTable, u"01.03.05 13:00"_s) + 10);
        QCOMPARE(oTable->columnWidth(1), textWidth(oTable, u"Äpfel werden teurer"_s) + 10);
    }

    void theLastOfManyRowsCountsToo()
    {
        CTestTable oTable;
        oTable.setTables();
        QCOMPARE(oTable->selection(9), 1500);
        QCOMPARE(oTable->columnWidth(1), textWidth(oTable, u"Wm"_s.repeated(40)) + 10);
    }

    void aHeaderWiderThanTheTextsDecides()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable.toggleColumns({u"date"_s, u"title"_s, u"author"_s});
        oTable->selection(1);
        QCOMPARE(oTable->columnWidth(0), headerWidth(oTable, u"authorW"_s));
    }

    void anEmptyColumnIsAsWideAsItsHeader()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(3);
        QCOMPARE(oTable->columnWidth(0), headerWidth(oTable, u"dateW"_s));
        QCOMPARE(oTable->columnWidth(1), headerWidth(oTable, u"titleW"_s));
    }

    void theShownTextDecidesAndNotTheValue()
    {
        oServer.sql(u"CREATE OR REPLACE TABLE news.late AS SELECT id, date FROM news.document WHERE id=1;"
                    "INSERT INTO news.late VALUES (2, NULL)"_s);
        CTestTable oTable;
        oTable.setTables(u"late"_s);
        oTable->selection(1);
        QCOMPARE(oTable->columnWidth(0), textWidth(oTable, u"01.03.05 13:00"_s) + 10);
    }

    void aNewSelectionMeasuresAnew()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(9);
        oTable->selection(2);
        QCOMPARE(oTable->columnWidth(1),
            std::max(headerWidth(oTable, u"titleW"_s),
                std::max(textWidth(oTable, u"Sommer"_s), textWidth(oTable, u"Herbst"_s)) + 10));
    }

    void everyRowIs20PixelsHigh()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(1);
        for (int iRow = 0; iRow < 5; iRow++)
            QCOMPARE(oTable->rowHeight(iRow), 20);
    }

    void aNewSelectionBeginsAtTheTop()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(9);
        oTable.show();
        oTable->verticalScrollBar()->setValue(oTable->verticalScrollBar()->maximum());
        QVERIFY(oTable->verticalScrollBar()->value() > 0);
        oTable->selection(9);
        QCOMPARE(oTable->verticalScrollBar()->value(), 0);
    }

    void theTableScrollsByPixels()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(9);
        oTable.show();
        oTable->verticalScrollBar()->setValue(7);
        QCOMPARE(oTable.cell(0, 0).top(), -7);
    }

    void aRowBeyondTheEndStandsForTheLastOne()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(1);
        oTable->selectRow(5);
        QCOMPARE(oTable->currentRow(), 4);
        oTable->selection(3);
        oTable->selectRow(0);
        QCOMPARE(oTable->currentRow(), -1);
    }

    void aCellIsScrolledIntoSight()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(9);
        oTable.show();
        oTable->ensureCellVisible(100, 1);
        QVERIFY(oTable.viewport()->rect().contains(oTable.cell(100, 1).topLeft()));
        QCOMPARE(oTable->currentRow(), -1);
        oTable->ensureCellVisible(5000, 5000);
        QVERIFY(oTable.viewport()->rect().contains(oTable.cell(1499, 1).topLeft()));
    }

private:
    static int textWidth(CTestTable& oTable, const QString& sText)
    {
        return oTable->fontMetrics().horizontalAdvance(sText);
    }

    static int headerWidth(CTestTable& oTable, const QString& sText)
    {
        return oTable->horizontalHeader()->fontMetrics().horizontalAdvance(sText);
    }

    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestTableColumns, CPrivateDisplay::Manager::Running)
#include "tst_table_columns.moc"
