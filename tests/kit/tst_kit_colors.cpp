// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CKitTest.h"

#include <QFile>
#include <QSemaphore>
#include <QThread>

#include <functional>

namespace {

constexpr int Ok = QTUTILS_OK;
using Callback = std::function<int(const int* piMinutes, int iNumRows, float* pfColors)>;

/// Hue 1, 2, ... and value as it was.
int paint(const int* /*piMinutes*/, int iNumRows, float* pfColors)
{
    for (int i = 0; i < iNumRows; i++)
        pfColors[3 * i] = float(i + 1);
    return 0;
}

/// Kilobytes of addresses that this process has taken.
qint64 addressSpace()
{
    QFile oFile(QStringLiteral("/proc/self/status"));
    if (!oFile.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray oText = oFile.readAll();
    return oText.mid(oText.indexOf("VmSize:") + 7).simplified().split(' ').first().toLongLong();
}

} // namespace

/// Dates and colours: fillDate is never without its setRowColors, and the module's pointers stay good.
class TestKitColors : public CKitTest
{
    Q_OBJECT

private Q_SLOTS:
    void datesBecomeColors()
    {
        QList<int> lDates;
        const int iError = color([&](const int* piMinutes, int iNumRows, float* pfColors) {
            lDates = QList<int>(piMinutes, piMinutes + iNumRows);
            return paint(piMinutes, iNumRows, pfColors);
        });
        QCOMPARE(iError, Ok);
        QCOMPARE(lDates, QList<int>({0, 10, 20}));
        QCOMPARE(pFake->log(),
            QByteArrayList(
                {"fillDate", "setRowColors", "row 0: 1 0 255", "row 1: 2 0 255", "row 2: 3 0 255"}));
    }

    void aRowWithoutADateIsTold()
    {
        (*pFake)->bNoDateInRow1 = 1;
        int iDate = 0;
        color([&](const int* piMinutes, int /*iNumRows*/, float* /*pfColors*/) {
            iDate = piMinutes[1];
            return 0;
        });
        QCOMPARE(iDate, QTUTILS_NO_DATE);
    }

    void aFailedCallbackLeavesRowsWhite()
    {
        const int iError = color([](const int* piMinutes, int iNumRows, float* pfColors) {
            paint(piMinutes, iNumRows, pfColors);
            return -7;
        });
        QCOMPARE(iError, int(QTUTILS_ERROR_CALLBACK));
        QCOMPARE(pFake->log(),
            QByteArrayList(
                {"fillDate", "setRowColors", "row 0: 0 0 255", "row 1: 0 0 255", "row 2: 0 0 255"}));
        QCOMPARE(numRows(), 3); // the window isn't blocked
    }

    void anEmptyTableIsColoredToo()
    {
        (*pFake)->iRows = 0;
        QCOMPARE(color(paint), Ok);
        QCOMPARE(pFake->log(), QByteArrayList({"fillDate", "setRowColors"}));
    }

    void rowsThatBecomeMoreAreAskedAgain_data()
    {
        QTest::addColumn<int>("rows");
        QTest::newRow("more") << 100'000;
        QTest::newRow("fewer") << 1;
    }
    void rowsThatBecomeMoreAreAskedAgain()
    {
        QFETCH(int, rows);
        QList<int> lRows;
        pFake->setAnswers({3, rows, rows});
        const int iError = color([&](const int*, int iNumRows, float*) {
            lRows << iNumRows;
            return 0;
        });
        QCOMPARE(iError, Ok);
        QCOMPARE(lRows, QList<int>({3, rows}));
    }

    void moreRowsThanAskedForFindRoom()
    {
        // given: another node is chosen between the number of rows and their dates
        pFake->setAnswers({3});
        const int iError = color([&](const int* piMinutes, int iNumRows, float* pfColors) {
            (*pFake)->iRows = 1'000'000; // what the window shows when it reads the colours
            return paint(piMinutes, iNumRows, pfColors);
        });
        // then
        QCOMPARE(iError, Ok); // in the second round
        QCOMPARE(numRows(), 1'000'000);
    }

    void rowsThatNeverStayTheSameAreGivenUp()
    {
        int iRounds = 0;
        pFake->setAnswers({1, 2, 3, 4, 5, 6, 7, 8});
        const int iError = color([&](const int*, int, float*) {
            iRounds++;
            return 0;
        });
        QCOMPARE(iError, int(QTUTILS_ERROR_ROWS));
        QCOMPARE(iRounds, 3);
        QCOMPARE(pFake->log().count("fillDate"), 3);
    }

    void aCallbackMayNotCallBack()
    {
        QList<int> lErrors;
        int iMinutes = 0;
        qtutils_browser* pOther = nullptr;
        color([&](const int*, int, float* pfColors) {
            lErrors << qtutils_select(pBrowser, 1) << qtutils_get_num_rows(pBrowser, &iMinutes)
                    << qtutils_set_row_colors(pBrowser, pfColors, 3) << color(paint)
                    << qtutils_close(pBrowser) << qtutils_open(QTUTILS_FAKE_MODULE, "a", "b", &pOther)
                    << qtutils_mark_row(pBrowser, "2005-03-01 13:00:00", 1);
            return qtutils_date_to_int(pBrowser, "2005-03-01 13:00:00", &iMinutes);
        });
        QCOMPARE(lErrors, QList<int>(7, QTUTILS_ERROR_BUSY));
        QCOMPARE(iMinutes, 19);
        QCOMPARE(qtutils_select(pBrowser, 1), Ok);
    }

    void anotherThreadWaitsForTheColors()
    {
        QSemaphore oStarted;
        std::unique_ptr<QThread> pThread(QThread::create([&] {
            oStarted.release();
            qtutils_select(pBrowser, 9);
        }));
        color([&](const int*, int, float*) {
            pThread->start();
            oStarted.acquire();
            // wait-reason: the other thread may do something wrong in this time
            pThread->wait(50);
            return 0;
        });
        pThread->wait();
        const QByteArrayList lLog = pFake->log();
        QVERIFY(lLog.indexOf("select 9") > lLog.indexOf("setRowColors"));
    }

    void withoutAnAnswerTheWindowIsReleasedAllTheSame()
    {
        const int iError = color([&](const int*, int, float*) {
            (*pFake)->bAnswers = 0;
            return 0;
        });
        QCOMPARE(iError, int(QTUTILS_ERROR_NO_ANSWER));
        QCOMPARE(pFake->log(), QByteArrayList({"fillDate", "setRowColors"}));
    }

    void colorsAreCopiedAndStay()
    {
        QList<float> lColors({10, 20, 30, 40, 50, 60, 70, 80, 90});
        QCOMPARE(qtutils_set_row_colors(pBrowser, lColors.constData(), 3), Ok);
        lColors.fill(0);
        QCOMPARE(pFake->log(),
            QByteArrayList({"setRowColors", "row 0: 10 20 30", "row 1: 40 50 60", "row 2: 70 80 90"}));
        // The module reads the colours until it has others.
        QCOMPARE(qtutils_set_row_colors(pBrowser, lColors.constData(), 3), Ok);
        QCOMPARE(pFake->log().mid(0, 2), QByteArrayList({"setRowColors", "before 30"}));
    }

    void colorsForAnotherNumberOfRowsAreRefused()
    {
        const QList<float> lColors(9, 0);
        QCOMPARE(qtutils_set_row_colors(pBrowser, lColors.constData(), 2), int(QTUTILS_ERROR_ROWS));
        QCOMPARE(pFake->log(), QByteArrayList());
        pFake->setAnswers({3, 4});
        QCOMPARE(qtutils_set_row_colors(pBrowser, lColors.constData(), 3), int(QTUTILS_ERROR_ROWS));
        (*pFake)->iRows = QTUTILS_MOST_ROWS + 1;
        QCOMPARE(color(paint), int(QTUTILS_ERROR_ROWS));
    }

    void wrongArgumentsAreRefused()
    {
        const float fColor = 0;
        QCOMPARE(qtutils_color_rows(pBrowser, nullptr, nullptr), int(QTUTILS_ERROR_ARGUMENT));
        QCOMPARE(qtutils_set_row_colors(pBrowser, nullptr, 3), int(QTUTILS_ERROR_ARGUMENT));
        QCOMPARE(qtutils_set_row_colors(pBrowser, &fColor, -1), int(QTUTILS_ERROR_ARGUMENT));
        QCOMPARE(qtutils_set_row_colors(nullptr, &fColor, 0), int(QTUTILS_ERROR_ARGUMENT));
        QCOMPARE(pFake->log(), QByteArrayList());
    }

    void colorsTakeNoMoreMemoryWithTime()
    {
        QCOMPARE(color(paint), Ok);
        const qint64 iBefore = addressSpace();
        for (int i = 0; i < 20; i++)
            QCOMPARE(color(paint), Ok);
        QVERIFY(addressSpace() < iBefore + 500'000); // less than one more
    }

    void colorsOutliveTheirBrowser()
    {
        // given: the window goes away a little later than its last object
        QCOMPARE(color(paint), Ok);
        CFakeModule oStays;
        qtutils_close(pBrowser);
        pBrowser = nullptr;
        // when
        QCOMPARE(qtutils_open(QTUTILS_FAKE_MODULE, "som", "texts", &pBrowser), Ok);
        pFake->log();
        QCOMPARE(color(paint), Ok);
        // then
        QVERIFY(pFake->log().contains("before 255"));
    }

private:
    static int run(const int* piMinutes, int iNumRows, float* pfColors, void* pUser)
    {
        return (*static_cast<Callback*>(pUser))(piMinutes, iNumRows, pfColors);
    }
    int color(Callback callback) { return qtutils_color_rows(pBrowser, run, &callback); }
    int numRows()
    {
        int iRows = -1;
        qtutils_get_num_rows(pBrowser, &iRows);
        return iRows;
    }
};

QTEST_GUILESS_MAIN(TestKitColors)
#include "tst_kit_colors.moc"
