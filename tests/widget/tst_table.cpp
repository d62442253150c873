// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTable.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

const QString Head = u"SELECT node, dist, document.* FROM news_train, news.document "
                     "WHERE news.document.id=news_train.item AND node="_s;

const QStringList NodeOne{
    u"date | title"_s,
    u"27.02.05 23:59 | Zug entgleist"_s,
    u"01.03.05 09:30 | Neue Brücke"_s,
    u"01.03.05 13:00 | Schnee im März"_s,
    u"02.03.05 08:15 | Wahl in Köln"_s,
    u"03.03.05 00:00 | Äpfel werden teurer"_s,
};

} // namespace

class TestTable : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void aNewTableIsEmpty()
    {
        CTestTable oTable;
        QCOMPARE(oTable.picture(), QStringList{u""_s});
        QCOMPARE(oTable->columns(), QStringList());
        QCOMPARE(oTable->currentRow(), -1);
        QCOMPARE(oTable->currentColumn(), -1);
        QCOMPARE(oTable->objectName(), u"table"_s);
        QVERIFY(oTable->somDatabase()->isOpen());
    }

    void withoutASourceTableNothingIsProbed()
    {
        CTestTable oTable;
        oServer.startLog();
        oTable->setSOMTable(u"news_train"_s);
        QCOMPARE(oServer.log(), QStringList());
        QCOMPARE(oTable->columns(), QStringList());
        QCOMPARE(oTable->somTable(), u"news_train"_s);
    }

    void theSourceTableAloneChangesNothing()
    {
        CTestTable oTable;
        oServer.startLog();
        oTable->setSourceTable(u"document"_s);
        QCOMPARE(oServer.log(), QStringList());
        QCOMPARE(oTable->columns(), QStringList());
    }

    void theAssignmentTableIsProbedOnceForTheColumns()
    {
        CTestTable oTable;
        oServer.startLog();
        oTable.setTables();
        QCOMPARE(oServer.log(),
            QStringList{u"SELECT node, dist, document.* FROM news_train, news.document LIMIT 1"_s});
        QCOMPARE(oTable->columns(),
            (QStringList{u"node"_s, u"dist"_s, u"id"_s, u"date"_s, u"title"_s, u"URL"_s, u"text"_s,
                u"author"_s, u"rate"_s}));
    }

    void aProbeShowsNothing()
    {
        CTestTable oTable;
        oTable.setTables();
        QCOMPARE(oTable.picture(), QStringList{u""_s});
    }

    void titleAndDateAreShownInTheOrderOfTheResult()
    {
        CTestTable oTable;
        oTable.setTables();
        QCOMPARE(oTable->selection(1), 5);
        QCOMPARE(oTable.picture(), NodeOne);
    }

    void aSelectionIsOneStatement()
    {
        CTestTable oTable;
        oTable.setTables();
        oServer.startLog();
        oTable->selection(1);
        QCOMPARE(oServer.log(), QStringList{Head + u"1 ORDER BY date"_s});
    }

    void showingTheRowsAsksTheServerNothingMore()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(1);
        oServer.startLog();
        oTable.show();
        oTable->selectRow(4);
        QCOMPARE(oServer.log(), QStringList());
    }

    void nodeZeroIsANode()
    {
        CTestTable oTable;
        oTable.setTables();
        oServer.startLog();
        QCOMPARE(oTable->selection(0), 1);
        QCOMPARE(oServer.log(), QStringList{Head + u"0 ORDER BY date"_s});
        QCOMPARE(oTable.picture(), (QStringList{u"date | title"_s, u"01.03.05 13:00 | Schnee im März"_s}));
    }

    void aNegativeNodeChangesNothing()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(1);
        oTable->selectRow(2);
        oServer.startLog();
        QCOMPARE(oTable->selection(-1), -1);
        QCOMPARE(oServer.log(), QStringList());
        QCOMPARE(oTable.picture(), NodeOne);
        QCOMPARE(oTable->currentRow(), 2);
        // and the current node is still the last valid one
        oTable->changeSort(2);
        QCOMPARE(oServer.log(), QStringList{Head + u"1 ORDER BY id"_s});
    }

    void aNodeWithoutDocumentsShowsTheHeadersOnly()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(1);
        QCOMPARE(oTable->selection(3), 0);
        QCOMPARE(oTable.picture(), QStringList{u"date | title"_s});
    }

    void anotherColumnIsShownInItsPlace()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(2);
        oTable.toggleColumns({u"rate"_s, u"node"_s});
        QCOMPARE(oTable.picture(),
            (QStringList{u"node | date | title | rate"_s, u"2 | 10.05.06 12:00 | Sommer | 3.333"_s,
                u"2 | 11.05.06 12:00 | Herbst | 4.000"_s}));
    }

    void aColumnToggledTwiceIsAsBeforeAndSelectsTwice()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(1);
        oServer.startLog();
        oTable.toggleColumns({u"author"_s, u"author"_s});
        const QString sStatement = Head + u"1 ORDER BY date"_s;
        QCOMPARE(oServer.log(), (QStringList{sStatement, sStatement}));
        QCOMPARE(oTable.picture(), NodeOne);
    }

    void beforeAnyNodeAColumnIsOnlyRemembered()
    {
        CTestTable oTable;
        oTable.setTables();
        oServer.startLog();
        oTable.toggleColumns({u"date"_s});
        QCOMPARE(oServer.log(), QStringList());
        QCOMPARE(oTable.picture(), QStringList{u""_s});
        oTable->selection(0);
        QCOMPARE(oTable.picture(), (QStringList{u"title"_s, u"Schnee im März"_s}));
    }

    void aColumnThatDoesNotExistSelectsOnly()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(1);
        for (const int iIndex : {-1, 9})
            oTable->changeColumn(iIndex);
        QCOMPARE(oTable.picture(), NodeOne);
    }

    void withoutAnyColumnTheRowsAreCountedStill()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable.toggleColumns({u"date"_s, u"title"_s});
        oServer.startLog();
        QCOMPARE(oTable->selection(1), 5);
        QCOMPARE(oServer.log(), QStringList{Head + u"1 ORDER BY date"_s});
        QCOMPARE(oTable->numCols(), 0);
        QCOMPARE(oTable->numRows(), 5);
    }

    void anotherSortColumnOrdersTheRows()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(1);
        oTable.toggleColumns({u"date"_s, u"author"_s});
        oServer.startLog();
        oTable->changeSort(int(oTable->columns().indexOf(u"rate"_s)));
        QCOMPARE(oServer.log(), QStringList{Head + u"1 ORDER BY rate"_s});
        QCOMPARE(oTable.picture(),
            (QStringList{u"title | author"_s, u"Zug entgleist | Cora"_s, u"Schnee im März | Anna"_s,
                u"Wahl in Köln | Bert"_s, u"Neue Brücke | Bert"_s, u"Äpfel werden teurer | Anna"_s}));
    }

    void aSortColumnThatDoesNotExistSaysSo()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(1);
        QTest::ignoreMessage(
            QtWarningMsg, QRegularExpression(uR"(^ASSERT: "i <= nodes" in CTable\.cpp \(\d+\)$)"_s));
        oServer.startLog();
        oTable->changeSort(9);
        QCOMPARE(oServer.log(), QStringList{Head + u"1 ORDER BY"_s}); // the record drops a last blank
        QCOMPARE(oTable->numRows(), 0);
    }

    void aNewAssignmentTableKeepsTheRowsOnDisplay()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(1);
        oTable->setSOMTable(u"news_train"_s);
        QCOMPARE(oTable.picture(), NodeOne);
    }

    void aNewAssignmentTableShowsTitleAndDateAgain()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable.toggleColumns({u"node"_s, u"date"_s});
        oTable->setSOMTable(u"news_train"_s);
        oTable->selection(1);
        QCOMPARE(oTable.picture(), NodeOne);
    }

    void aSelectionMakesNoRowCurrent()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable.show();
        QStringList slTitles;
        oTable->selection(1);
        oTable->selectRow(2);
        oTable.recordCurrentTitles(slTitles);
        oTable->selection(2);
        QCoreApplication::processEvents();
        QCOMPARE(oTable->currentRow(), -1);
        QCOMPARE(oTable->currentColumn(), -1);
        QVERIFY(!oTable->selectionModel()->hasSelection());
        QCOMPARE(slTitles, QStringList());
    }

    void theNumberOfRowsIsAnswered()
    {
        CTestTable oTable;
        for (const int iExpected : {0, 5}) {
            *oTable.oHandover.flag() = 0;
            int iRows = -1;
            oTable->getNumRows(&iRows);
            QCOMPARE(iRows, iExpected);
            QCOMPARE(*oTable.oHandover.flag(), 1);
            oTable.setTables();
            oTable->selection(1);
        }
    }

private:
    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestTable, CPrivateDisplay::Manager::Running)
#include "tst_table.moc"
