// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "paintedhost.h"
#include "tests/support/CPrivateServer.h"

using namespace Qt::StringLiterals;

/// Arguments as hosts may have them: each ends where its memory ends, can't be written to, is gone after the
/// call, is null, or makes no sense.
class TestModuleBadInputCalls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void noCallGoesBeyondItsArguments_data()
    {
        QTest::addColumn<QByteArrayList>("lCall");
        QTest::addColumn<QByteArray>("oResult");
        const auto row = [](const QByteArrayList& lCall, const QByteArray& oResult = {}) {
            QTest::addRow("%s %s", lCall[0].constData(), lCall[1].constData()) << lCall << oResult;
        };
        row({"CNodeBrowser", "t:som", "t:news"}, "same window");
        row({"select", "i:1"});
        row({"getNumRows", "oi:1"}, "5");
        row({"fillDate", "oi:5"}, "0 2010 2220 3376 4320");
        row({"dateToInt", "t:1970-01-01 01:02:00", "oi:1"}, "2");
        row({"dateToInt", "t:1970-01-01 01:02:0", "oi:1"}, "2");
        row({"dateToInt", "t:1", "oi:1"}, "-1035594780"); // the last day of the year 0
        row({"dateToInt", "t:", "oi:1"}, "-36817980"); // a day before 1900
        row({"setRowColors", "c:5x0,0,0"});
        row({"markRow", "k:2005-03-01 10:30:59", "i:1"});
        row({"markRow", "k:2005-03-0", "i:1"});
        row({"markRow", "k:", "i:1"});
        row({"getFirstDateInFrame", "oi:1"}, "0");
        row({"getFirstDateInSelection", "ot:20"}, "2005-02-27T23:59:59");
        row({"passNodeHierarchy", "n:2,3", "i:2", "i:1", "i:4"});
        row({"passNodeHierarchy", "n:", "i:0", "i:1", "i:4"});
        row({"setSOMTable", "t:news_train"});
        row({"setSOMTable", "t:"});
    }

    void noCallGoesBeyondItsArguments()
    {
        QFETCH(QByteArrayList, lCall);
        QFETCH(QByteArray, oResult);
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        if (lCall[0] == "setSOMTable")
            oHost.announceErrors({"CNodeBrowser: Changed Table to " + lCall[1].mid(2)});
        QCOMPARE(oHost.call(lCall[0], lCall.mid(1)), oResult);
        oHost.call("setRowColors", {"c:5x0,0,0"});
        QCOMPARE(oHost.numRows(), 5);
    }

    void aNameIsCopiedWhereverItEnds_data()
    {
        QTest::addColumn<int>("iLength");
        for (const int iLength : {1, 7, 15, 16, 4094, 4095, 4096, 4097})
            QTest::addRow("%d", iLength) << iLength;
    }

    void aNameIsCopiedWhereverItEnds()
    {
        QFETCH(int, iLength);
        CPlainHost oHost;
        oHost.start();
        oHost.announceErrors({"CNodeBrowser: Changed Table to " + QByteArray(iLength, 'b')});
        oHost.call("setSOMTable", {"r:" + QByteArray::number(iLength) + "xb"});
        QCOMPARE(oHost.numRows(), 0);
    }

    void oneNullAmongTheArgumentsIsEnoughToDropTheCall_data()
    {
        QTest::addColumn<QByteArrayList>("lCall");
        QTest::newRow("number of children")
            << QByteArrayList{"passNodeHierarchy", "n:2", "null", "i:3", "i:4"};
        QTest::newRow("node") << QByteArrayList{"passNodeHierarchy", "n:2", "i:1", "null", "i:4"};
        QTest::newRow("number of nodes") << QByteArrayList{"passNodeHierarchy", "n:2", "i:1", "i:3", "null"};
        QTest::newRow("date to convert") << QByteArrayList{"dateToInt", "null", "null"};
        QTest::newRow("date to mark") << QByteArrayList{"markRow", "null", "null"};
    }

    void oneNullAmongTheArgumentsIsEnoughToDropTheCall()
    {
        QFETCH(QByteArrayList, lCall);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.start();
        oHost.call("select", {"i:1"});
        const QByteArrayList lTree = oAnalyst.tree();
        QCOMPARE(oHost.call(lCall[0], lCall.mid(1)), "");
        QCOMPARE(oAnalyst.tree(), lTree);
        QCOMPARE(oAnalyst.currentCell(), "none");
    }

    void aDatabaseWithoutANameLeavesTheOtherOneInUse()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.call("setSOMTable", {"t:som.news_train"});
        // when
        QCOMPARE(oHost.call("CNodeBrowser", {"null", "t:news"}), "window");
        // then
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
        // when
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        oHost.call("setSOMTable", {"t:news_train"});
        QVERIFY(
            oHost.call("CNodeBrowser", {"t:som", "null"}).endsWith("window")); // perhaps where the other was
        // then
        oHost.announceErrors({"Database is open. Commencing."});
        oHost.passHierarchy();
        QCOMPARE(oAnalyst.tree().first(), "v 0 | alles, viel, mehr");
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 0);
    }

    void aTextThatIsNoDateMarksByWhatCanBeReadOfIt_data()
    {
        QTest::addColumn<QByteArray>("oText");
        QTest::addColumn<QByteArray>("oCurrent"); ///< of rows from 27 February to 3 March 2005
        QTest::newRow("empty") << "k:"_ba
                               << "0 0"_ba;
        QTest::newRow("a megabyte of letters") << "kr:1000000xa"_ba
                                               << "0 0"_ba;
        QTest::newRow("a megabyte of digits") << "kr:1000000x9"_ba
                                              << "none"_ba; // the year 9999
        QTest::newRow("a megabyte of blanks") << "kr:1000000x "_ba
                                              << "0 0"_ba;
        QTest::newRow("a megabyte behind a date") << "kr:50000x2005-03-02 00:00:00 "_ba
                                                  << "3 0"_ba;
        QTest::newRow("no UTF-8") << "kh:fffe80"_ba
                                  << "0 0"_ba;
        QTest::newRow("formats") << "k:%s%n%Y"_ba
                                 << "0 0"_ba;
        QTest::newRow("great numbers") << "k:99999999999-99999999999-99999999999"_ba
                                       << "none"_ba;
    }

    void aTextThatIsNoDateMarksByWhatCanBeReadOfIt()
    {
        QFETCH(QByteArray, oText);
        QFETCH(QByteArray, oCurrent);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.start();
        oHost.call("select", {"i:1"});
        oHost.call("markRow", {oText, "i:1"});
        QCOMPARE(oAnalyst.currentCell(), oCurrent);
    }

    void aTextOfAMegabyteIsConverted_data()
    {
        QTest::addColumn<QByteArray>("oText");
        QTest::addColumn<QByteArray>("oMinutes");
        QTest::newRow("letters") << "r:1000000xa"_ba
                                 << "-36817980"_ba;
        QTest::newRow("blanks") << "r:1000000x "_ba
                                << "-36817980"_ba;
        QTest::newRow("dates") << "r:50000x1970-01-01 01:02:00 "_ba
                               << "2"_ba;
    }

    void aTextOfAMegabyteIsConverted()
    {
        QFETCH(QByteArray, oText);
        CPlainHost oHost;
        oHost.load();
        QTEST(oHost.call("dateToInt", {oText, "oi:1"}), "oMinutes");
    }

    void colorsThatNoRowNeedsAreNotRead()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.start();
        // when, then: an array without any number, before a selection and for one without rows
        oHost.call("setRowColors", {"c:"});
        oAnalyst.showWindow();
        oHost.call("select", {"i:3"});
        oHost.call("setRowColors", {"c:"});
        paintedhost::repaint(oAnalyst);
        QCOMPARE(oHost.numRows(), 0);
    }

    void colorsMayGoWhenOthersHaveBeenSetOrAnotherNodeIsSelected()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oHost.call("setRowColors", {"c:5x0,255,255"});
        paintedhost::repaint(oAnalyst);
        QTUTILS_WAIT_FOR(isSeen(oAnalyst, paintedhost::Red));
        // when
        oHost.call("setRowColors", {"c:5x120,255,255"});
        QCOMPARE(oHost.numRows(), 5);
        oHost.command({"drop colors before"});
        paintedhost::repaint(oAnalyst);
        // then
        QTUTILS_WAIT_FOR(isSeen(oAnalyst, paintedhost::Green));
        // when
        oHost.call("select", {"i:2"});
        QCOMPARE(oHost.numRows(), 2);
        oHost.command({"drop colors"});
        paintedhost::repaint(oAnalyst);
        // then
        QTUTILS_WAIT_FOR(isSeen(oAnalyst, paintedhost::Base) && !isSeen(oAnalyst, paintedhost::Green));
        oAnalyst.clickCell(1, "title");
        QCOMPARE(oAnalyst.currentCell(), "1 1");
    }

private:
    // In the first row.
    bool isSeen(CAnalyst& oAnalyst, QRgb uColor) const
    {
        return oScreen.pixels(uColor, oAnalyst.cell(0, "title")) > 100;
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleBadInputCalls)
#include "tst_module_badinput_calls.moc"
