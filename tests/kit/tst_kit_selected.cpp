// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CKitTest.h"

namespace {

constexpr int Ok = QTUTILS_OK;

/// Hue 1, 2, ... and value as it was.
int paint(const int* /*piMinutes*/, int iNumRows, float* pfColors, void* /*pUser*/)
{
    for (int i = 0; i < iNumRows; i++)
        pfColors[3 * i] = float(i + 1);
    return 0;
}

int fail(const int* /*piMinutes*/, int /*iNumRows*/, float* /*pfColors*/, void* /*pUser*/)
{
    return 1;
}

/// Paints; the calling thread is held up as often as the user's int says.
int paintSlowly(const int* piMinutes, int iNumRows, float* pfColors, void* pUser)
{
    CFakeModule oModule;
    oModule->iHoldUps = *static_cast<int*>(pUser);
    oModule->iSelects = 0;
    return paint(piMinutes, iNumRows, pfColors, nullptr);
}

} // namespace

/// A node is selected with its colours, so that they are there when it is painted.
class TestKitSelected : public CKitTest
{
    Q_OBJECT

private Q_SLOTS:
    void aNodeIsSelectedAgainWithItsColors()
    {
        QCOMPARE(qtutils_select_colored(pBrowser, 5, paint, nullptr), Ok);
        QCOMPARE(pFake->log(),
            QByteArrayList({"select 5", "fillDate", "setRowColors", "row 0: 1 0 255", "row 1: 2 0 255",
                "row 2: 3 0 255", "select 5", "setRowColors", "before 255", "row 0: 1 0 255",
                "row 1: 2 0 255", "row 2: 3 0 255"}));
        QCOMPARE(qtutils_color_rows(pBrowser, paint, nullptr), Ok); // these colours were kept once
    }

    void aThreadThatIsHeldUpSelectsOnceMore()
    {
        // when: meanwhile the window may paint the rows, which have no colours yet
        int iHoldUps = 2;
        QCOMPARE(qtutils_select_colored(pBrowser, 5, paintSlowly, &iHoldUps), Ok);
        // then: a busy machine may hold it up still more often
        QVERIFY((*pFake)->iSelects > 2);
        QCOMPARE(pFake->log().count("select 5"), 2); // the repeated ones are in the log once
    }

    void aThreadThatIsAlwaysHeldUpGivesUp()
    {
        int iHoldUps = 1'000'000;
        QCOMPARE(qtutils_select_colored(pBrowser, 5, paintSlowly, &iHoldUps), Ok);
        QVERIFY((*pFake)->iSelects > 1);
        QVERIFY((*pFake)->iHoldUps > 0);
        QCOMPARE(pFake->log().last(), "row 2: 3 0 255");
    }

    void aNodeWhoseColorsFailIsShownAllTheSame()
    {
        QCOMPARE(qtutils_select_colored(pBrowser, 5, fail, nullptr), int(QTUTILS_ERROR_CALLBACK));
        QCOMPARE(pFake->log().count("select 5"), 1);
        pFake->setAnswers({1, 2, 3, 4, 5, 6, 7, 8});
        QCOMPARE(qtutils_select_colored(pBrowser, 5, paint, nullptr), int(QTUTILS_ERROR_ROWS));
        QCOMPARE(qtutils_select_colored(pBrowser, -1, paint, nullptr), int(QTUTILS_ERROR_ARGUMENT));
        int iRows = -1;
        QCOMPARE(qtutils_get_num_rows(pBrowser, &iRows), Ok);
        QCOMPARE(iRows, 7);
    }
};

QTEST_GUILESS_MAIN(TestKitSelected)
#include "tst_kit_selected.moc"
