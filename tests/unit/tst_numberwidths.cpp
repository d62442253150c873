// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "tree/CNumberWidths.h"

#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <limits>
#include <random>

using namespace Qt::StringLiterals;

class TestNumberWidths : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void aNumberIsAsWideAsItsText_data()
    {
        QTest::addColumn<QFont>("oFont");
        QTest::newRow("the tree's") << QFont(u"Sans Serif"_s, 8);
        QTest::newRow("with serifs") << QFont(u"Serif"_s, 24);
        QTest::newRow("one width for all letters") << QFont(u"Monospace"_s, 11);
        QFont oSpaced(u"Sans Serif"_s, 8);
        oSpaced.setLetterSpacing(QFont::AbsoluteSpacing, 0.3);
        QTest::newRow("parts of pixels") << oSpaced;
    }

    void aNumberIsAsWideAsItsText()
    {
        QFETCH(QFont, oFont);
        const QFontMetrics oMetrics(oFont);
        CLetterWidths oLetters(oMetrics);
        CNumberWidths oWidths(oLetters);
        std::mt19937 oRandom(7);
        using Limits = std::numeric_limits<int>;
        for (int iBits = 0; iBits < 31; iBits++) {
            for (int i = 0; i < 20; i++) {
                const int iNumber = std::uniform_int_distribution<int>(0, Limits::max() >> iBits)(oRandom);
                QCOMPARE(oWidths.width(iNumber), oMetrics.horizontalAdvance(QString::number(iNumber)));
                QCOMPARE(oWidths.width(-iNumber), oMetrics.horizontalAdvance(QString::number(-iNumber)));
            }
        }
        for (const int iNumber : {Limits::min(), Limits::max(), 0, -9, 10, -10, 99, 100})
            QCOMPARE(oWidths.width(iNumber), oMetrics.horizontalAdvance(QString::number(iNumber)));
    }
};

QTUTILS_OFFSCREEN_TEST_MAIN(TestNumberWidths)
#include "tst_numberwidths.moc"
