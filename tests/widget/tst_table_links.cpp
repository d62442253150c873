// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTable.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

/// A program "firefox", first on the path, writes down what it is called with.
class TestTableLinks : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        qputenv("PATH", oFolder.path().toUtf8() + ':' + qgetenv("PATH"));
    }

    void init()
    {
        CStrictTest::init();
        QFile::remove(oFolder.filePath(u"calls"_s));
        setBrowserStatus(0);
    }

    void theAddressCellOpensTheBrowser()
    {
        CTestTable oTable;
        show(oTable);
        doubleClick(oTable, 2, 2);
        QCOMPARE(calls(), QStringList{u"-remote openURL(http://news.example/1,new-tab)"_s});
    }

    void otherCellsOpenNothing()
    {
        CTestTable oTable;
        show(oTable);
        doubleClick(oTable, 2, 0);
        doubleClick(oTable, 2, 1);
        QCOMPARE(calls(), QStringList());
    }

    void withoutARunningBrowserANewOneIsStarted()
    {
        setBrowserStatus(1);
        CTestTable oTable;
        show(oTable);
        doubleClick(oTable, 0, 2);
        QCOMPARE(calls(),
            (QStringList{u"-remote openURL(http://news.example/4,new-tab)"_s, u"http://news.example/4"_s}));
    }

    void aHiddenAddressOpensNothing()
    {
        CTestTable oTable;
        show(oTable);
        oTable.toggleColumns({u"URL"_s});
        doubleClick(oTable, 2, 0);
        doubleClick(oTable, 2, 1);
        oTable->doubleClickOccured(2, 2, 1, QPoint());
        QCOMPARE(calls(), QStringList());
    }

    void theVisibleColumnCounts()
    {
        CTestTable oTable;
        show(oTable);
        oTable.toggleColumns({u"date"_s});
        doubleClick(oTable, 2, 1);
        QCOMPARE(calls(), QStringList{u"-remote openURL(http://news.example/1,new-tab)"_s});
    }

    void returnOnTheAddressCellOpensTheBrowser()
    {
        CTestTable oTable;
        show(oTable);
        QTest::mouseClick(oTable.viewport(), Qt::LeftButton, {}, oTable.cell(1, 2).center());
        QTest::keyClick(&*oTable, Qt::Key_Return);
        QCOMPARE(calls(), QStringList{u"-remote openURL(http://news.example/5,new-tab)"_s});
    }

    void withoutAnAddressTheNodeStandsIn()
    {
        oServer.sql(u"CREATE OR REPLACE TABLE news.urlless AS SELECT id, date, title FROM news.document"_s);
        CTestTable oTable;
        oTable.setTables(u"urlless"_s);
        oTable->selection(1);
        oTable.show();
        doubleClick(oTable, 0, 0);
        QCOMPARE(calls(), QStringList());
        oTable.toggleColumns({u"node"_s});
        doubleClick(oTable, 0, 0);
        QCOMPARE(calls(), QStringList{u"-remote openURL(1,new-tab)"_s});
    }

    void anAddressBesideTheRowsIsEmpty()
    {
        CTestTable oTable;
        show(oTable);
        oTable->doubleClickOccured(-1, 2, 1, QPoint());
        QCOMPARE(calls(), QStringList{u"-remote openURL(,new-tab)"_s});
    }

    void aTableWithoutColumnsOpensNothing()
    {
        CTestTable oTable;
        oTable->doubleClickOccured(0, 0, 1, QPoint());
        QCOMPARE(calls(), QStringList());
    }

private:
    static void show(CTestTable& oTable)
    {
        oTable.setTables();
        oTable->selection(1);
        oTable.toggleColumns({u"URL"_s});
        oTable.show();
    }

    static void doubleClick(CTestTable& oTable, int iRow, int iColumn)
    {
        const QPoint oPlace = oTable.cell(iRow, iColumn).center();
        QTest::mouseClick(oTable.viewport(), Qt::LeftButton, {}, oPlace);
        QTest::mouseDClick(oTable.viewport(), Qt::LeftButton, {}, oPlace);
    }

    void setBrowserStatus(int iStatus) const
    {
        QFile oProgram(oFolder.filePath(u"firefox"_s));
        QVERIFY(oProgram.open(QIODevice::WriteOnly));
        oProgram.write("#!/bin/sh\necho \"$@\" >> '" + oFolder.filePath(u"calls"_s).toUtf8() + "'\nexit "
            + QByteArray::number(iStatus) + '\n');
        oProgram.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QStringList calls() const
    {
        QFile oFile(oFolder.filePath(u"calls"_s));
        const bool bCalled = oFile.open(QIODevice::ReadOnly);
        return bCalled ? QString::fromUtf8(oFile.readAll()).split(u'\n', Qt::SkipEmptyParts) : QStringList();
    }

    QTemporaryDir oFolder;
    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestTableLinks, CPrivateDisplay::Manager::Running)
#include "tst_table_links.moc"
