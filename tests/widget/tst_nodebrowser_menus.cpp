// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestBrowser.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

using namespace Qt::StringLiterals;

/// The Show and Sort menus.
class TestNodeBrowserMenus : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void theMenusAreEmptyUntilThereIsASourceTable()
    {
        CTestBrowser oBrowser;
        QCOMPARE(oBrowser.menuPicture("ShowMenu"), QStringList());
        oBrowser->setSOMTable(u"news_train"_s);
        QCOMPARE(oBrowser.menuPicture("ShowMenu"), QStringList());
        QCOMPARE(oBrowser.menuPicture("SortMenu"), QStringList());
        oBrowser->setSourceTable(u"document"_s);
        QCOMPARE(oBrowser.menuPicture("ShowMenu").size(), 9);
    }

    void titleAndDateAreMarkedFirst()
    {
        CTestBrowser oBrowser;
        oBrowser.setTables();
        QCOMPARE(oBrowser.menuPicture("ShowMenu"), withMarks({u"date"_s, u"title"_s}));
        QCOMPARE(oBrowser.menuPicture("SortMenu"), withMarks({u"date"_s}));
    }

    void aSecondSourceTableLeavesTheMenus()
    {
        CTestBrowser oBrowser;
        oBrowser.setTables();
        oServer.startLog();
        oBrowser->setSourceTable(u"other"_s);
        QCOMPARE(oServer.log(), QStringList());
        QCOMPARE(oBrowser.menuPicture("ShowMenu"), withMarks({u"date"_s, u"title"_s}));
    }

    void aFailingTableEmptiesTheMenus()
    {
        CTestBrowser oBrowser;
        oBrowser.setTables();
        oBrowser->setSOMTable(u"nothing"_s);
        QCOMPARE(oBrowser.menuPicture("ShowMenu"), QStringList());
        QCOMPARE(oBrowser.menuPicture("SortMenu"), QStringList());
    }

    void aShowEntryShowsItsColumnAndIsMarked()
    {
        CTestBrowser oBrowser;
        show(oBrowser);
        oBrowser.click("ShowMenu", u"author"_s);
        QCOMPARE(oBrowser.menuPicture("ShowMenu"), withMarks({u"date"_s, u"title"_s, u"author"_s}));
        QCOMPARE(oBrowser.tablePicture().value(0), u"date | title | author"_s);
        oBrowser.click("ShowMenu", u"author"_s);
        QCOMPARE(oBrowser.menuPicture("ShowMenu"), withMarks({u"date"_s, u"title"_s}));
        QCOMPARE(oBrowser.tablePicture().value(0), u"date | title"_s);
    }

    void aMarkedShowEntryHidesItsColumn()
    {
        CTestBrowser oBrowser;
        show(oBrowser);
        oBrowser.click("ShowMenu", u"date"_s);
        QCOMPARE(oBrowser.menuPicture("ShowMenu"), withMarks({u"title"_s}));
        QCOMPARE(oBrowser.tablePicture().value(0), u"title"_s);
    }

    void aShowEntrySelectsOnce()
    {
        CTestBrowser oBrowser;
        show(oBrowser);
        oServer.startLog();
        oBrowser.click("ShowMenu", u"author"_s);
        QCOMPARE(oServer.log(), QStringList{statement(u"date"_s)});
    }

    void aSortEntryIsTheOnlyOneMarked()
    {
        CTestBrowser oBrowser;
        show(oBrowser);
        oServer.startLog();
        oBrowser.click("SortMenu", u"title"_s);
        QCOMPARE(oBrowser.menuPicture("SortMenu"), withMarks({u"title"_s}));
        oBrowser.click("SortMenu", u"title"_s);
        QCOMPARE(oBrowser.menuPicture("SortMenu"), withMarks({u"title"_s}));
        oBrowser.click("SortMenu", u"rate"_s);
        QCOMPARE(oBrowser.menuPicture("SortMenu"), withMarks({u"rate"_s}));
        QCOMPARE(
            oServer.log(), (QStringList{statement(u"title"_s), statement(u"title"_s), statement(u"rate"_s)}));
        QCOMPARE(oBrowser.tablePicture().value(1), u"27.02.05 23:59 | Zug entgleist"_s);
    }

    void aSortEntryLeavesTheShowMenu()
    {
        CTestBrowser oBrowser;
        show(oBrowser);
        oBrowser.click("SortMenu", u"author"_s);
        QCOMPARE(oBrowser.menuPicture("ShowMenu"), withMarks({u"date"_s, u"title"_s}));
    }

    void theTogglesWorkWithoutAClick()
    {
        CTestBrowser oBrowser;
        oBrowser.setTables();
        oBrowser->toggleShowItem(0);
        oBrowser->toggleShowItem(3);
        oBrowser->toggleShowItem(99);
        oBrowser->toggleSortItem(1);
        QCOMPARE(oBrowser.menuPicture("ShowMenu"), withMarks({u"node"_s, u"title"_s}));
        QCOMPARE(oBrowser.menuPicture("SortMenu"), withMarks({u"dist"_s}));
    }

    void aNewTableMarksTitleAndDateAgain()
    {
        CTestBrowser oBrowser;
        show(oBrowser);
        oBrowser.click("ShowMenu", u"author"_s);
        oBrowser.click("SortMenu", u"title"_s);
        oBrowser->setSOMTable(u"news_train"_s);
        QCOMPARE(oBrowser.menuPicture("ShowMenu"), withMarks({u"date"_s, u"title"_s}));
        QCOMPARE(oBrowser.menuPicture("SortMenu"), withMarks({u"date"_s}));
    }

private:
    static void show(CTestBrowser& oBrowser)
    {
        oBrowser.setTables();
        oBrowser.select(1);
        oBrowser.show();
    }

    static QStringList withMarks(const QStringList& slMarked)
    {
        QStringList slEntries;
        for (const QString& sColumn : {u"node"_s, u"dist"_s, u"id"_s, u"date"_s, u"title"_s, u"URL"_s,
                 u"text"_s, u"author"_s, u"rate"_s})
            slEntries << (slMarked.contains(sColumn) ? u"[x] "_s : u"[ ] "_s) + sColumn;
        return slEntries;
    }

    static QString statement(const QString& sSortColumn)
    {
        return u"SELECT node, dist, document.* FROM news_train, news.document "
               "WHERE news.document.id=news_train.item AND node=1 ORDER BY "_s
            + sSortColumn;
    }

    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestNodeBrowserMenus, CPrivateDisplay::Manager::Running)
#include "tst_nodebrowser_menus.moc"
