// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <memory>

using namespace Qt::StringLiterals;

/// Where the texts of cells stand. Each document is alone in its node, which has its number.
class TestModuleTableTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.sql(u"CREATE DATABASE som; CREATE DATABASE news; "
                    "CREATE TABLE news.document (id INT, date DATETIME, title TEXT); "
                    "INSERT INTO news.document VALUES (1, '2005-03-01', 'HHHHHHHH'), "
                    "(2, '2005-03-01', 'HHHH\\nHHHH'), (3, '2005-03-01', REPEAT('H', 10000)), "
                    "(4, '2005-03-01', '<b>H</b>'), (5, '2005-03-01', 'H'); "
                    "CREATE VIEW som.news_train AS SELECT id node, 0.5 dist, id item FROM news.document"_s);
    }

    void init()
    {
        pHost = std::make_unique<CPlainHost>();
        pAnalyst = std::make_unique<CAnalyst>(*pHost, oScreen);
        pHost->load();
        pHost->call("setSOMTable", {"t:news_train"});
        pHost->construct();
        pAnalyst->showWindow();
    }

    void cleanup()
    {
        pAnalyst.reset();
        pHost.reset();
    }

    void aTextStandsLeftInTheMiddleOfItsRow()
    {
        const QRect oInk = show("1");
        const QRect oCell = pAnalyst->cell(0, "title");
        QVERIFY(oInk.left() >= oCell.left() + 2 && oInk.left() <= oCell.left() + 5);
        QVERIFY(oCell.right() - oInk.right() >= 5);
        QVERIFY(std::abs(oInk.center().y() - oCell.center().y()) <= 1);
    }

    void aTextThatIsTooLongIsCut()
    {
        // given
        const QRect oWhole = show("1");
        // when
        const QRect oHeader = pAnalyst->tableHeader("title");
        const QPoint oBorder(oHeader.right(), oHeader.center().y());
        oScreen.drag(oBorder, oBorder - QPoint(oWhole.width() / 2, 0));
        QCOMPARE(pAnalyst->tableHeader("title").width(), oHeader.width() - oWhole.width() / 2);
        // then
        const QRect oCell = pAnalyst->cell(0, "title");
        QTUTILS_WAIT_FOR(ink({oCell.right() + 3, oCell.top(), 30, oCell.height()}).isEmpty());
        QVERIFY(ink(oCell).right() >= oCell.right() - 5);
        // and no dots stand for the rest
        const QRect oEnd = oCell.adjusted(oCell.width() - 15, 0, 0, 0);
        QCOMPARE(ink(oEnd).top(), oWhole.top());
        QCOMPARE(ink(oEnd).bottom(), oWhole.bottom());
    }

    void aLineBreakBreaksTheLine()
    {
        // given
        const QRect oOne = show("1");
        // when
        const QRect oTwo = show("2");
        // then
        QVERIFY(oTwo.width() < 3 * oOne.width() / 4);
        // and both are cut, above and below, because the row is as high as the others
        const QRect oCell = pAnalyst->cell(0, "title");
        QCOMPARE(oCell.height(), 19);
        QCOMPARE(oTwo.top(), oCell.top());
        QCOMPARE(oTwo.bottom(), oCell.bottom());
    }

    void aVeryLongTextFillsItsRowAndCanBeScrolled()
    {
        // given
        const QRect oLetter = show("5");
        // when
        const QRect oLong = show("3");
        // then
        const QRect oCell = pAnalyst->cell(0, "title");
        QVERIFY(oLong.width() > oCell.width() - 2 * oLetter.width() - 6);
        QCOMPARE(oLong.height(), oLetter.height());
        // when
        pAnalyst->clickCell(0, "date");
        pAnalyst->press({"Right"});
        // then
        QCOMPARE(pAnalyst->currentCell(), "0 1");
        QVERIFY(pAnalyst->cell(0, "date").isEmpty());
    }

    void markupStaysAsItIs()
    {
        const QRect oLetter = show("5");
        const QRect oMarkup = show("4");
        QVERIFY(oMarkup.width() > 5 * oLetter.width());
    }

private:
    static constexpr int LongestWait = 20000; // milliseconds

    /// Shows a node's document and gives the place of its title's letters on the screen.
    QRect show(const QByteArray& oNode)
    {
        pHost->call("select", {"i:0"}); // has no document, so no letter of the one before is left
        const QRect oFirstTitle(pAnalyst->tableHeader("title").bottomLeft() + QPoint(0, 1), QSize(30, 20));
        const bool bCleared = QTest::qWaitFor([&] { return ink(oFirstTitle).isEmpty(); }, LongestWait);
        pHost->call("select", {"i:" + oNode});
        const QRect oCell = pAnalyst->cell(0, "title");
        if (!bCleared || !QTest::qWaitFor([&] { return !ink(oCell).isEmpty(); }, LongestWait))
            QTest::qFail("the text doesn't come", __FILE__, __LINE__);
        return ink(oCell);
    }

    /// Where something dark is within a place.
    QRect ink(const QRect& oPlace) const
    {
        constexpr int Dark = 100;
        const QImage oPicture = oScreen.picture();
        QRect oInk;
        for (int y = oPlace.top(); y <= oPlace.bottom(); y++)
            for (int x = oPlace.left(); x <= oPlace.right(); x++)
                if (qGray(oPicture.pixel(x, y)) < Dark)
                    oInk |= QRect(x, y, 1, 1);
        return oInk;
    }

    CPrivateServer oServer;
    CScreen oScreen;
    std::unique_ptr<CPlainHost> pHost;
    std::unique_ptr<CAnalyst> pAnalyst;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleTableTexts)
#include "tst_module_table_texts.moc"
