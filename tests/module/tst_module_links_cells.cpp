// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "CFakeBrowser.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

using State = CFakeBrowser::State;

/// Which clicks and keys open which address. Node 1's documents by date: 4, 5, 1, 2, 3.
class TestModuleLinksCells : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        oServer.sql(QStringLiteral(
            "CREATE DATABASE urlless; CREATE TABLE urlless.document AS SELECT id, date, title FROM "
            "news.document;"
            "CREATE DATABASE small; CREATE TABLE small.document AS SELECT id, date, title, URL url FROM "
            "news.document;"
            "CREATE DATABASE first; CREATE TABLE first.document AS SELECT URL, title, date, id FROM "
            "news.document;"
            "CREATE DATABASE dated; CREATE TABLE dated.document AS SELECT id, date URL FROM news.document;"
            "CREATE DATABASE holes; CREATE TABLE holes.document AS SELECT * FROM news.document;"
            "UPDATE holes.document SET URL=NULL WHERE id=4"));
    }

    void onlyTheAddressCellOpensTheBrowser_data()
    {
        QTest::addColumn<QByteArray>("oDatabase");
        QTest::addColumn<QByteArrayList>("lToggled");
        QTest::addColumn<QByteArray>("oHeader");
        QTest::addColumn<QByteArray>("oAddressColumn");
        QTest::newRow("behind date and title") << QByteArray("news") << QByteArrayList{"URL"}
                                               << QByteArray("date | title | URL") << QByteArray("URL");
        QTest::newRow("alone") << QByteArray("news") << QByteArrayList{"URL", "date", "title"}
                               << QByteArray("URL") << QByteArray("URL");
        QTest::newRow("behind the node too")
            << QByteArray("news") << QByteArrayList{"author", "title", "node", "URL"}
            << QByteArray("node | date | URL | author") << QByteArray("URL");
        QTest::newRow("hidden") << QByteArray("news") << QByteArrayList{"node"}
                                << QByteArray("node | date | title") << QByteArray();
        QTest::newRow("hidden again") << QByteArray("news") << QByteArrayList{"URL", "author", "URL"}
                                      << QByteArray("date | title | author") << QByteArray();
        QTest::newRow("first in the source table")
            << QByteArray("first") << QByteArrayList{"URL", "dist"} << QByteArray("dist | URL | title | date")
            << QByteArray("URL");
    }

    void onlyTheAddressCellOpensTheBrowser()
    {
        QFETCH(QByteArray, oDatabase);
        QFETCH(QByteArrayList, lToggled);
        QFETCH(QByteArray, oHeader);
        QFETCH(QByteArray, oAddressColumn);
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst, lToggled, oDatabase);
        QCOMPARE(oAnalyst.table().first(), oHeader);
        int iViewers = 0;
        for (const QByteArray& oColumn : oHeader.replace(" | ", "|").split('|')) {
            // when
            const qsizetype iCalls = oBrowser.calls().size();
            oAnalyst.doubleClickCell(2, oColumn);
            // then
            QCOMPARE(oAnalyst.viewers().size(), ++iViewers);
            QCOMPARE(oBrowser.calls().mid(iCalls),
                oColumn == oAddressColumn ? opened("http://news.example/1") : QByteArrayList());
        }
    }

    void withoutAnAddressColumnTheNodeStandsIn_data()
    {
        QTest::addColumn<QByteArray>("oDatabase");
        QTest::newRow("no such column") << QByteArray("urlless");
        QTest::newRow("its name in small letters") << QByteArray("small");
    }

    void withoutAnAddressColumnTheNodeStandsIn()
    {
        QFETCH(QByteArray, oDatabase);
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst, {}, oDatabase);
        // when the node is hidden
        oAnalyst.doubleClickCell(2, "date");
        oAnalyst.doubleClickCell(2, "title");
        // then
        QCOMPARE(oAnalyst.viewers().size(), 2);
        QCOMPARE(oBrowser.calls(), QByteArrayList());
        // when it is shown
        oAnalyst.choose("Show", "node");
        oAnalyst.doubleClickCell(2, "title");
        oAnalyst.doubleClickCell(2, "node");
        // then
        QCOMPARE(oAnalyst.viewers().size(), 4);
        QCOMPARE(oBrowser.calls(), opened("1"));
    }

    void theAddressIsTheValueNotWhatTheCellShows_data()
    {
        QTest::addColumn<QByteArray>("oDatabase");
        QTest::addColumn<QByteArrayList>("lToggled");
        QTest::addColumn<QByteArray>("oShown");
        QTest::addColumn<QByteArray>("oAddress");
        QTest::newRow("no value") << QByteArray("holes") << QByteArrayList{"URL", "date", "title"}
                                  << QByteArray("NULL") << QByteArray("");
        QTest::newRow("date") << QByteArray("dated") << QByteArrayList{"URL"} << QByteArray("27.02.05 23:59")
                              << QByteArray("2005-02-27T23:59:59");
    }

    void theAddressIsTheValueNotWhatTheCellShows()
    {
        QFETCH(QByteArray, oDatabase);
        QFETCH(QByteArrayList, lToggled);
        QFETCH(QByteArray, oShown);
        QFETCH(QByteArray, oAddress);
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst, lToggled, oDatabase);
        if (oDatabase == "dated")
            oAnalyst.choose("Sort", "URL");
        QCOMPARE(oAnalyst.table().value(1), oShown);
        // when
        oAnalyst.doubleClickCell(0, "URL");
        // then
        QCOMPARE(oAnalyst.viewers().size(), 1);
        QCOMPARE(oBrowser.calls(), opened(oAddress));
    }

    void theAddressIsThatOfTheRowInSight()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst);
        // when
        oAnalyst.choose("Sort", "title");
        oAnalyst.doubleClickCell(0, "URL");
        oHost.call("select", {"i:2"});
        oAnalyst.doubleClickCell(1, "URL");
        // then
        QCOMPARE(oAnalyst.viewers().size(), 2);
        QCOMPARE(oBrowser.calls(), opened("http://news.example/3") + opened("http://news.example/6"));
    }

    void onlyTheLeftButtonOpens_data()
    {
        QTest::addColumn<int>("iButton");
        QTest::newRow("middle") << 2;
        QTest::newRow("right") << 3;
        QTest::newRow("wheel") << 4;
    }

    void onlyTheLeftButtonOpens()
    {
        QFETCH(int, iButton);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst);
        oAnalyst.doubleClick(oAnalyst.cell(2, "URL"), iButton);
        QCOMPARE(oAnalyst.viewers(), QByteArrayList());
        QCOMPARE(oBrowser.calls(), QByteArrayList());
    }

    void aSingleClickOpensNothing()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst);
        oAnalyst.clickCell(2, "URL");
        QCOMPARE(oAnalyst.currentCell(), "2 2");
        QCOMPARE(oAnalyst.viewers(), QByteArrayList());
        QCOMPARE(oBrowser.calls(), QByteArrayList());
    }

    void besideTheCellsNoRowsAddressIsOpened_data()
    {
        QTest::addColumn<QPoint>("oBeside");
        QTest::addColumn<QByteArrayList>("lCalls");
        QTest::newRow("below the addresses: the empty address") << QPoint(0, 45) << opened("");
        QTest::newRow("below the titles") << QPoint(-150, 45) << QByteArrayList();
        QTest::newRow("right of the addresses") << QPoint(250, 0) << QByteArrayList();
        QTest::newRow("below and right") << QPoint(250, 45) << QByteArrayList();
    }

    void besideTheCellsNoRowsAddressIsOpened()
    {
        QFETCH(QPoint, oBeside);
        QFETCH(QByteArrayList, lCalls);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst);
        oAnalyst.doubleClick(oAnalyst.cell(4, "URL").translated(oBeside));
        QCOMPARE(oAnalyst.viewers(), QByteArrayList{"shown"});
        QCOMPARE(oBrowser.calls(), lCalls);
    }

private:
    static QByteArrayList opened(const QByteArray& oAddress)
    {
        return {"<-remote> <openURL(" + oAddress + ",new-tab)>"};
    }

    // Node 1's documents; without a tree, so that all columns are in sight.
    void show(CAnalyst& oAnalyst, const QByteArrayList& lToggled = {"URL"},
        const QByteArray& oDatabase = "news") const
    {
        CPlainHost& oHost = oAnalyst.host();
        oHost.load();
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.call("CNodeBrowser", {"t:som", "t:" + oDatabase});
        oAnalyst.showWindow();
        oHost.call("select", {"i:1"});
        for (const QByteArray& oColumn : lToggled)
            oAnalyst.choose("Show", oColumn);
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleLinksCells)
#include "tst_module_links_cells.moc"
