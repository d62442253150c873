// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTable.h"

#include "tests/support/CDialogs.h"
#include "tests/support/CPrivateServer.h"
#include "tests/support/CStandardOutput.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

using namespace Qt::StringLiterals;

class TestTableFailures : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void aWrongPasswordIsSaidOnceAndLeavesAnEmptyTable()
    {
        CDialogs dialogs;
        CStandardOutput output;
        CTestTable oTable(u"wrong"_s);
        oTable.setTables();
        const int iRows = oTable->selection(1);
        QCOMPARE(output.lines(), QStringList{u"show error"_s});
        QCOMPARE(dialogs.texts().size(), 1);
        QVERIFY(dialogs.texts()[0].startsWith(u"SQL Error: Could not open SOM Database!\n\n"_s));
        QCOMPARE(iRows, 0);
        QCOMPARE(oTable.picture(), QStringList{u""_s});
        oTable.show();
        QVERIFY(oTable->isVisible());
    }

    void aMissingTableIsSilent_data()
    {
        QTest::addColumn<QString>("sSourceTable");
        QTest::addColumn<QString>("sSOMTable");
        QTest::newRow("assignment table") << u"document"_s << u"nothing"_s;
        QTest::newRow("source table") << u"nothing"_s << u"news_train"_s;
        QTest::newRow("no statement at all") << u"\"'`;"_s << u"(("_s;
        QTest::newRow("assignment table without a name") << u"document"_s << QString();
    }

    void aMissingTableIsSilent()
    {
        QFETCH(QString, sSourceTable);
        QFETCH(QString, sSOMTable);
        CDialogs dialogs;
        CTestTable oTable;
        CStandardOutput output;
        oTable.setTables(sSourceTable, sSOMTable);
        const int iRows = oTable->selection(1);
        QCOMPARE(output.lines(), QStringList());
        QCOMPARE(dialogs.texts(), QStringList());
        QCOMPARE(oTable->columns(), QStringList());
        QCOMPARE(iRows, 0);
        QCOMPARE(oTable.picture(), QStringList{u""_s});
    }

    void afterAFailureAnotherTableWorks()
    {
        CTestTable oTable;
        oTable.setTables(u"document"_s, u"nothing"_s);
        oTable->selection(1);
        oTable->setSOMTable(u"news_train"_s);
        QCOMPARE(oTable->selection(1), 5);
    }

    void aStatementThatFailsEmptiesTheTable()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(1);
        oServer.sql(u"RENAME TABLE som.news_train TO som.gone"_s);
        const int iRows = oTable->selection(1);
        oServer.sql(u"RENAME TABLE som.gone TO som.news_train"_s);
        QCOMPARE(iRows, 0);
        QCOMPARE(oTable->numRows(), 0);
        QCOMPARE(oTable->selection(1), 5);
    }

    void aClosedConnectionIsSilent()
    {
        CDialogs dialogs;
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(1);
        oTable->somDatabase()->close();
        CStandardOutput output;
        const int iRows = oTable->selection(1);
        oTable->setSOMTable(u"news_train"_s);
        QCOMPARE(output.lines(), QStringList());
        QCOMPARE(dialogs.texts(), QStringList());
        QCOMPARE(iRows, 0);
        QCOMPARE(oTable->columns(), QStringList());
    }

    void aServerThatIsGoneIsSilent()
    {
        CDialogs dialogs;
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(1);
        oServer.kill();
        CStandardOutput output;
        const int iRows = oTable->selection(1);
        const QStringList slLines = output.lines();
        oServer.restart();
        QCOMPARE(slLines, QStringList());
        QCOMPARE(dialogs.texts(), QStringList());
        QCOMPARE(iRows, 0);
    }

    void anEmptyAssignmentTableStillHasColumns()
    {
        oServer.sql(u"CREATE OR REPLACE TABLE som.empty LIKE som.news_train"_s);
        CTestTable oTable;
        oTable.setTables(u"document"_s, u"empty"_s);
        QCOMPARE(oTable->columns().size(), 9);
        QCOMPARE(oTable->selection(1), 0);
        QCOMPARE(oTable.picture(), QStringList{u"date | title"_s});
    }

    void aSourceTableWithoutADateGivesNoRowsUntilItIsSortedByAnotherColumn()
    {
        oServer.sql(u"CREATE OR REPLACE TABLE news.dateless AS SELECT id, title FROM news.document"_s);
        CTestTable oTable;
        oTable.setTables(u"dateless"_s);
        QCOMPARE(oTable->columns(), (QStringList{u"node"_s, u"dist"_s, u"id"_s, u"title"_s}));
        QCOMPARE(oTable->selection(2), 0);
        oTable->changeSort(2);
        QCOMPARE(oTable.picture(), (QStringList{u"title"_s, u"Sommer"_s, u"Herbst"_s}));
    }

private:
    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestTableFailures, CPrivateDisplay::Manager::Running)
#include "tst_table_failures.moc"
