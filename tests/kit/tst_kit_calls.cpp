// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CKitTest.h"

#include <climits>

namespace {

constexpr int Ok = QTUTILS_OK;
constexpr int Argument = QTUTILS_ERROR_ARGUMENT;

} // namespace

/// The typed functions: what the module gets, what comes back, what is refused.
class TestKitCalls : public CKitTest
{
    Q_OBJECT

private Q_SLOTS:
    void commandsPassTheirArguments()
    {
        const int aiChildren[] = {2, 1};
        QCOMPARE(qtutils_set_som_table(pBrowser, "news_train"), Ok);
        QCOMPARE(qtutils_pass_node_hierarchy(pBrowser, aiChildren, 2, 0, 3), Ok);
        QCOMPARE(qtutils_pass_node_hierarchy(pBrowser, nullptr, 0, 2, 3), Ok);
        QCOMPARE(qtutils_show(pBrowser), Ok);
        QCOMPARE(qtutils_hide_table(pBrowser), Ok);
        QCOMPARE(qtutils_select(pBrowser, 7), Ok);
        QCOMPARE(pFake->log(),
            QByteArrayList({"setSOMTable news_train", "passNodeHierarchy 0 of 3: 2 1",
                "passNodeHierarchy 2 of 3:", "show", "hideTable", "select 7"}));
    }

    void questionsGiveTheAnswers()
    {
        int iAnswer = 0;
        (*pFake)->iFrameMinutes = -1234;
        QCOMPARE(qtutils_get_num_rows(pBrowser, &iAnswer), Ok);
        QCOMPARE(iAnswer, 3);
        QCOMPARE(qtutils_get_first_date_in_frame(pBrowser, &iAnswer), Ok);
        QCOMPARE(iAnswer, -1234);
        QCOMPARE(qtutils_date_to_int(pBrowser, "2005-03-01 13:00:00", &iAnswer), Ok);
        QCOMPARE(iAnswer, 19); // the fake's answer: the length
    }

    void theFirstDateComesInItsBuffer()
    {
        char acDate[20] = "before";
        QCOMPARE(firstDate(acDate, sizeof acDate), int(QTUTILS_ERROR_NO_ROWS));
        QCOMPARE(acDate, "before");
        (*pFake)->pcFirstDate = "2005-03-01T13:00:00";
        QCOMPARE(firstDate(acDate, 19), int(QTUTILS_ERROR_SPACE));
        QCOMPARE(acDate, "before");
        QCOMPARE(firstDate(acDate, 20), Ok);
        QCOMPARE(acDate, "2005-03-01T13:00:00");
        (*pFake)->pcFirstDate = "";
        QCOMPARE(firstDate(acDate, 1), Ok);
        QCOMPARE(acDate, "");
    }

    void aFirstDateMayBeAnyText()
    {
        const QByteArray oLong(10'000'000, 'x');
        QByteArray oDate(oLong.size() + 1, ' ');
        (*pFake)->pcFirstDate = oLong.constData();
        QCOMPARE(firstDate(oDate.data(), std::size_t(oDate.size())), Ok);
        QVERIFY(oLong == oDate.constData());
    }

    void aMarksDateIsKeptUntilItIsHandled()
    {
        QByteArray oDate("2005-03-01 13:00:00");
        QCOMPARE(qtutils_mark_row(pBrowser, oDate.constData(), 5), Ok);
        oDate.fill('?');
        QCOMPARE(qtutils_mark_row(pBrowser, "2006-01-01 00:00:00", -1), Ok);
        QCOMPARE(pFake->log(), QByteArrayList({"markRow 5", "markRow -1"}));
        askRows();
        QCOMPARE(pFake->log(), QByteArrayList({"marked 2005-03-01 13:00:00", "marked 2006-01-01 00:00:00"}));
    }

    void manyMarksTakeNoMoreMemory()
    {
        for (int i = 0; i < 1000; i++)
            QCOMPARE(qtutils_mark_row(pBrowser, "2005-03-01 13:00:00", 1), Ok);
        askRows();
        const QByteArrayList lLog = pFake->log();
        QCOMPARE(lLog.count("marked 2005-03-01 13:00:00"), 1000);
        QCOMPARE(lLog.indexOf("marked 2005-03-01 13:00:00"), 64);
    }

    void marksThatAreNotHandledKeepTheirDates()
    {
        (*pFake)->bAnswers = 0;
        for (int i = 0; i < 64; i++)
            QCOMPARE(qtutils_mark_row(pBrowser, "2005-03-01 13:00:00", 1), Ok);
        QCOMPARE(qtutils_mark_row(pBrowser, "2005-03-01 13:00:00", 1), int(QTUTILS_ERROR_NO_ANSWER));
        pFake->log();
        (*pFake)->bAnswers = 1;
        askRows();
        QCOMPARE(pFake->log().count("marked 2005-03-01 13:00:00"), 64);
    }

    void aDateOfAnotherFormIsRefused_data()
    {
        QTest::addColumn<QByteArray>("date");
        QTest::newRow("T") << QByteArray("2005-03-01T13:00:00");
        QTest::newRow("no time") << QByteArray("2005-03-01");
        QTest::newRow("more") << QByteArray("2005-03-01 13:00:00.5");
        QTest::newRow("month") << QByteArray("2005-13-01 13:00:00");
        QTest::newRow("empty") << QByteArray();
    }
    void aDateOfAnotherFormIsRefused()
    {
        QFETCH(QByteArray, date);
        int iMinutes = 5;
        QCOMPARE(qtutils_mark_row(pBrowser, date.constData(), 1), int(QTUTILS_ERROR_DATE));
        QCOMPARE(qtutils_date_to_int(pBrowser, date.constData(), &iMinutes), int(QTUTILS_ERROR_DATE));
        QCOMPARE(iMinutes, 5);
        QCOMPARE(pFake->log(), QByteArrayList());
        QCOMPARE(qtutils_select(pBrowser, 1), Ok); // the turn was given back
    }

    void withoutAnAnswerNothingIsWritten()
    {
        int iAnswer = 5;
        char acDate[20] = "before";
        (*pFake)->bAnswers = 0;
        QCOMPARE(qtutils_get_num_rows(pBrowser, &iAnswer), int(QTUTILS_ERROR_NO_ANSWER));
        QCOMPARE(qtutils_get_first_date_in_frame(pBrowser, &iAnswer), int(QTUTILS_ERROR_NO_ANSWER));
        QCOMPARE(firstDate(acDate, sizeof acDate), int(QTUTILS_ERROR_NO_ANSWER));
        QCOMPARE(iAnswer, 5);
        QCOMPARE(acDate, "before");
    }

    void nullIsRefused()
    {
        int iAnswer = 0;
        char cDate = 0;
        QCOMPARE(qtutils_set_som_table(pBrowser, nullptr), Argument);
        QCOMPARE(qtutils_get_num_rows(pBrowser, nullptr), Argument);
        QCOMPARE(qtutils_get_first_date_in_frame(pBrowser, nullptr), Argument);
        QCOMPARE(firstDate(nullptr, 20), Argument);
        QCOMPARE(qtutils_mark_row(pBrowser, nullptr, 1), Argument);
        QCOMPARE(qtutils_date_to_int(pBrowser, nullptr, &iAnswer), Argument);
        QCOMPARE(qtutils_date_to_int(pBrowser, "2005-03-01 13:00:00", nullptr), Argument);
        QCOMPARE(qtutils_show(nullptr), Argument);
        QCOMPARE(qtutils_hide_table(nullptr), Argument);
        QCOMPARE(qtutils_select(nullptr, 1), Argument);
        QCOMPARE(qtutils_get_num_rows(nullptr, &iAnswer), Argument);
        QCOMPARE(qtutils_get_first_date_in_selection(nullptr, &cDate, 1), Argument);
        QCOMPARE(qtutils_date_to_int(nullptr, "2005-03-01 13:00:00", &iAnswer), Argument);
        QCOMPARE(pFake->log(), QByteArrayList());
    }

    void numbersOutOfRangeAreRefused()
    {
        const int aiChildren[] = {1, 3};
        const int iNegative = -1;
        QCOMPARE(qtutils_select(pBrowser, -1), Argument);
        QCOMPARE(qtutils_pass_node_hierarchy(pBrowser, aiChildren, 2, 0, 3), Argument); // child 3 of 3
        QCOMPARE(qtutils_pass_node_hierarchy(pBrowser, &iNegative, 1, 0, 3), Argument);
        QCOMPARE(qtutils_pass_node_hierarchy(pBrowser, nullptr, 1, 0, 3), Argument);
        QCOMPARE(qtutils_pass_node_hierarchy(pBrowser, aiChildren, -1, 0, 3), Argument);
        QCOMPARE(qtutils_pass_node_hierarchy(pBrowser, aiChildren, 1, 3, 3), Argument);
        QCOMPARE(qtutils_pass_node_hierarchy(pBrowser, aiChildren, 1, -1, 3), Argument);
        QCOMPARE(qtutils_pass_node_hierarchy(pBrowser, nullptr, 0, 0, 10'000'001), Argument);
        QCOMPARE(pFake->log(), QByteArrayList());
    }

private:
    int firstDate(char* pcDate, std::size_t uSize)
    {
        return qtutils_get_first_date_in_selection(pBrowser, pcDate, uSize);
    }
    void askRows()
    {
        int iRows = 0;
        QCOMPARE(qtutils_get_num_rows(pBrowser, &iRows), Ok);
    }
};

QTEST_GUILESS_MAIN(TestKitCalls)
#include "tst_kit_calls.moc"
