// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <memory>

using namespace Qt::StringLiterals;

/// The table under the mouse.
class TestModuleTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        oServer.sql(u"INSERT INTO news.document (id, date, title) SELECT 100 + seq, "
                    "'2007-01-01' + INTERVAL seq DAY, CONCAT('Nr. ', seq) FROM news.seq_1_to_100; "
                    "INSERT INTO som.news_train SELECT 9, 0, 100 + seq FROM news.seq_1_to_100"_s);
    }

    void init()
    {
        pHost = std::make_unique<CPlainHost>();
        pAnalyst = std::make_unique<CAnalyst>(*pHost, oScreen);
        pHost->start();
        pAnalyst->showWindow();
        select("1");
        QCOMPARE(lShown.size(), 6);
    }

    // Whatever the mouse does, the table shows the same, and nobody asks the server for it.
    void cleanup()
    {
        if (!QTest::currentTestFailed()) {
            QCOMPARE(pAnalyst->table(), lShown);
            QCOMPARE(oServer.log(), QStringList());
            QCOMPARE(pAnalyst->openMenu(), QByteArrayList{"none"});
        }
        pAnalyst.reset();
        pHost.reset();
    }

    void aClickMakesItsCellTheCurrentOne_data()
    {
        QTest::addColumn<int>("iButton");
        QTest::newRow("left") << 1;
        QTest::newRow("middle") << 2;
        QTest::newRow("right") << 3;
    }

    void aClickMakesItsCellTheCurrentOne()
    {
        QFETCH(int, iButton);
        pAnalyst->click(pAnalyst->cell(3, "title"), iButton);
        QCOMPARE(pAnalyst->currentCell(), "3 1");
        QCOMPARE(pAnalyst->text("texteditor"), "Die Wahl ist vorbei.");
        pAnalyst->click(pAnalyst->cell(1, "date"), iButton);
        QCOMPARE(pAnalyst->currentCell(), "1 0");
        QCOMPARE(pAnalyst->text("texteditor"), "Die Brücke ist offen.");
        QCOMPARE(pAnalyst->viewers(), QByteArrayList());
    }

    void theCurrentRowIsTheHighlightedOne()
    {
        pAnalyst->clickCell(3, "title");
        QTUTILS_WAIT_FOR(highlightedRows() == "3");
        pAnalyst->clickCell(1, "date");
        QTUTILS_WAIT_FOR(highlightedRows() == "1");
    }

    void severalRowsCannotBeChosen_data()
    {
        QTest::addColumn<QByteArray>("oKey");
        QTest::addColumn<QByteArray>("oRow");
        QTest::newRow("all") << "ctrl+a"_ba
                             << "1"_ba;
        QTest::newRow("down to the next") << "shift+Down"_ba
                                          << "2"_ba;
        QTest::newRow("down to the end") << "shift+End"_ba
                                         << "4"_ba;
    }

    void severalRowsCannotBeChosen()
    {
        QFETCH(QByteArray, oKey);
        QFETCH(QByteArray, oRow);
        pAnalyst->clickCell(1, "title");
        QTUTILS_WAIT_FOR(highlightedRows() == "1");
        pAnalyst->press({oKey});
        QCOMPARE(pAnalyst->currentCell(), oRow + " 1");
        QTUTILS_WAIT_FOR(highlightedRows() == oRow);
    }

    void aClickBesideTheCellsActsOnTheNearestOne_data()
    {
        QTest::addColumn<int>("iButton");
        QTest::addColumn<bool>("bBelow");
        QTest::addColumn<bool>("bRight");
        QTest::addColumn<QByteArray>("oCell");
        for (const int iButton : {1, 3}) {
            QTest::addRow("below, button %d", iButton) << iButton << true << false << "4 0"_ba;
            QTest::addRow("right, button %d", iButton) << iButton << false << true << "0 1"_ba;
            QTest::addRow("both, button %d", iButton) << iButton << true << true << "4 1"_ba;
        }
    }

    void aClickBesideTheCellsActsOnTheNearestOne()
    {
        QFETCH(int, iButton);
        QFETCH(bool, bBelow);
        QFETCH(bool, bRight);
        oScreen.click(beside(bBelow, bRight), iButton);
        QTEST(pAnalyst->currentCell(), "oCell");
        QTUTILS_WAIT_FOR(highlightedRows() == (bBelow ? "4" : "0"));
    }

    void aClickIntoAnEmptyTableDoesNothing()
    {
        select("3");
        oScreen.click(beside(true, false));
        oScreen.doubleClick(beside(true, true), 3);
        QCOMPARE(pAnalyst->currentCell(), "none");
        QCOMPARE(pAnalyst->text("texteditor"), "no article selected");
    }

    void aDoubleClickOpensOneViewer()
    {
        pAnalyst->doubleClickCell(3, "title");
        QTUTILS_WAIT_FOR(pAnalyst->viewers() == QByteArrayList{"shown"});
        QCOMPARE(pAnalyst->currentCell(), "3 1");
        QCOMPARE(pAnalyst->text("0/fullEdit"), "Die Wahl ist vorbei.");
    }

    void aDoubleClickBesideTheCellsOpensAViewerToo_data()
    {
        QTest::addColumn<bool>("bBelow");
        QTest::addColumn<bool>("bRight");
        QTest::addColumn<QByteArray>("oText");
        QTest::newRow("below") << true << false << "Ein Apfel kostet mehr."_ba;
        QTest::newRow("right") << false << true << "Niemand wurde verletzt."_ba;
    }

    void aDoubleClickBesideTheCellsOpensAViewerToo()
    {
        QFETCH(bool, bBelow);
        QFETCH(bool, bRight);
        oScreen.doubleClick(beside(bBelow, bRight));
        QTUTILS_WAIT_FOR(pAnalyst->viewers() == QByteArrayList{"shown"});
        QTEST(pAnalyst->text("0/fullEdit"), "oText");
    }

    void onlyTheLeftButtonDoubleClicks_data()
    {
        QTest::addColumn<int>("iButton");
        QTest::newRow("middle") << 2;
        QTest::newRow("right") << 3;
    }

    void onlyTheLeftButtonDoubleClicks()
    {
        QFETCH(int, iButton);
        pAnalyst->doubleClick(pAnalyst->cell(3, "title"), iButton);
        QCOMPARE(pAnalyst->currentCell(), "3 1");
        QCOMPARE(pAnalyst->viewers(), QByteArrayList());
    }

    void aColumnsHeaderDoesNothing_data()
    {
        QTest::addColumn<int>("iButton");
        QTest::addColumn<bool>("bDouble");
        for (const int iButton : {1, 3})
            for (const bool bDouble : {false, true})
                QTest::addRow("%s, button %d", bDouble ? "double" : "single", iButton) << iButton << bDouble;
    }

    void aColumnsHeaderDoesNothing()
    {
        QFETCH(int, iButton);
        QFETCH(bool, bDouble);
        const QRect oHeader = pAnalyst->tableHeader("title");
        if (bDouble)
            pAnalyst->doubleClick(oHeader, iButton);
        else
            pAnalyst->click(oHeader, iButton);
        QCOMPARE(pAnalyst->currentCell(), "none");
        QCOMPARE(pAnalyst->viewers(), QByteArrayList());
        QCOMPARE(pAnalyst->tableHeader("title"), oHeader);
    }

    void columnsKeepTheirOrderUnderTheMouse()
    {
        const QRect oDate = pAnalyst->tableHeader("date");
        oScreen.drag(pAnalyst->tableHeader("title").center(), oDate.center());
        QCOMPARE(pAnalyst->tableHeader("date"), oDate);
    }

    void aColumnCanBeMadeWiderUntilTheNextSelection()
    {
        // given
        const QRect oDate = pAnalyst->tableHeader("date");
        const QPoint oBorder(oDate.right(), oDate.center().y());
        // when
        oScreen.drag(oBorder, oBorder + QPoint(50, 0));
        // then
        QCOMPARE(pAnalyst->tableHeader("date").width(), oDate.width() + 50);
        // when
        select("1");
        // then
        QCOMPARE(pAnalyst->tableHeader("date"), oDate);
    }

    void aRowsHeaderChoosesItsRow()
    {
        oScreen.click(rowHeader(2));
        QVERIFY(pAnalyst->currentCell().startsWith("2 "));
        QCOMPARE(pAnalyst->text("texteditor"), "Es schneit in Zürich.");
        QTUTILS_WAIT_FOR(highlightedRows() == "2");
        QCOMPARE(pAnalyst->viewers(), QByteArrayList());
    }

    void theWheelScrollsWithoutChoosingARow()
    {
        // given
        select("9");
        const QPoint oPlace = pAnalyst->cell(2, "title").center();
        QVERIFY(pAnalyst->rowsInSight().startsWith("0 "));
        // when
        oScreen.click(oPlace, 5);
        // then, by pixels, it shows a part of a row at the top
        const int iFirst = pAnalyst->rowsInSight().split(' ').first().toInt();
        QVERIFY(iFirst > 0);
        QVERIFY(pAnalyst->cell(iFirst, "title").height() < pAnalyst->cell(iFirst + 1, "title").height());
        QCOMPARE(pAnalyst->currentCell(), "none");
        // when
        oScreen.click(oPlace, 4);
        // then
        QVERIFY(pAnalyst->rowsInSight().startsWith("0 "));
    }

private:
    static constexpr QRgb Highlight = qRgb(48, 140, 198); // of the widgets' style

    void select(const QByteArray& oNode)
    {
        pHost->call("select", {"i:" + oNode});
        lShown = pAnalyst->table();
        oServer.startLog();
    }

    /// A place in the table where no cell is.
    QPoint beside(bool bBelow, bool bRight) const
    {
        const QRect oTable = pAnalyst->part("table");
        const QPoint oFirst = pAnalyst->tableHeader("date").center() + QPoint(0, 20);
        return {bRight ? oTable.right() - 30 : oFirst.x(), bBelow ? oTable.bottom() - 30 : oFirst.y()};
    }

    QPoint rowHeader(int iRow) const
    {
        return {pAnalyst->part("table").left() + 6, pAnalyst->cell(iRow, "date").center().y()};
    }

    /// The numbers of the rows that are painted as chosen ones.
    QByteArray highlightedRows() const
    {
        const QImage oPicture = oScreen.picture();
        QByteArrayList lRows;
        for (int iRow = 0; iRow < 5; iRow++)
            if (oPicture.pixelColor(pAnalyst->cell(iRow, "date").bottomRight() - QPoint(2, 2)).rgb()
                == Highlight)
                lRows << QByteArray::number(iRow);
        return lRows.join(' ');
    }

    CPrivateServer oServer;
    CScreen oScreen;
    std::unique_ptr<CPlainHost> pHost;
    std::unique_ptr<CAnalyst> pAnalyst;
    QByteArrayList lShown;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleTable)
#include "tst_module_table.moc"
