// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "data/CWidestText.h"

#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <random>

using namespace Qt::StringLiterals;

class TestWidestText : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void theWidthIsThatOfTheWidestText_data()
    {
        QTest::addColumn<QStringList>("slTexts");
        QTest::newRow("none") << QStringList();
        QTest::newRow("empty text") << QStringList{u""_s};
        QTest::newRow("Latin") << QStringList{u"aaaa"_s, u"WWWW"_s, u"iiiiiiii"_s};
        QTest::newRow("kerning") << QStringList{u"AVAVAVAVAVAV"_s, u"ToTeTaTyVo"_s, u"AAAAAAAAAAA"_s};
        QTest::newRow("ligatures") << QStringList{u"ffiffiffiffi"_s, u"flflflflfl"_s, u"nnnnnnnnnn"_s};
        QTest::newRow("accents") << QStringList{u"Äpfel über Äpfel"_s, u"Łódź Ǆ"_s, u"eeeeeeee"_s};
        QTest::newRow("combining marks") << QStringList{u"a\u0301\u0302\u0303bc"_s, u"abcd"_s};
        QTest::newRow("Cyrillic") << QStringList{u"abcdefgh"_s, u"Широкий"_s, u"ы"_s};
        QTest::newRow("Arabic") << QStringList{u"الثلج يتساقط"_s, u"abc"_s, u"ثلج"_s};
        QTest::newRow("Chinese") << QStringList{u"abcd"_s, u"大雪纷飞"_s, u"雪"_s};
        QTest::newRow("emoji") << QStringList{u"ab"_s, u"😀😀😀"_s, u"👩‍👩‍👧"_s};
        QTest::newRow("line breaks") << QStringList{u"one\ntwo\nthree"_s, u"onetwo"_s, u"\n\n\n\n\n\n\n"_s};
        QTest::newRow("tabs") << QStringList{u"a\tb\tc"_s, u"abcdefghij"_s};
    }

    void theWidthIsThatOfTheWidestText()
    {
        QFETCH(QStringList, slTexts);
        for (const QFont& oFont : {QFont(u"Sans Serif"_s, 8), QFont(u"Serif"_s, 24), QFont(u"Arial"_s, 10)})
            compareWithMeasuringAll(slTexts, QFontMetrics(oFont));
    }

    void nothingNarrowerThanTheStartCounts()
    {
        const QFontMetrics oMetrics{QFont()};
        CWidestText oWidest(oMetrics, 5000);
        oWidest.add(u"short"_s);
        QCOMPARE(oWidest.width(), 5000);
    }

    void manyTextsGiveTheSameAsMeasuringAll()
    {
        std::mt19937 oRandom(7);
        std::uniform_int_distribution<int> oLength(0, 40);
        std::uniform_int_distribution<int> oLetter(0x20, 0x24F);
        for (int iList = 0; iList < 40; iList++) {
            QStringList slTexts;
            for (int i = 0; i < 50; i++) {
                QString sText(oLength(oRandom), u' ');
                for (QChar& c : sText)
                    c = QChar(oLetter(oRandom));
                slTexts << sText;
            }
            compareWithMeasuringAll(slTexts, QFontMetrics(QFont(u"Serif"_s, 11)));
        }
    }

private:
    static void compareWithMeasuringAll(const QStringList& slTexts, const QFontMetrics& oMetrics)
    {
        int iExpected = 3;
        CWidestText oWidest(oMetrics, 3);
        for (const QString& sText : slTexts) {
            iExpected = std::max(iExpected, oMetrics.horizontalAdvance(sText));
            oWidest.add(sText);
            QCOMPARE(oWidest.width(), iExpected);
        }
    }
};

QTUTILS_OFFSCREEN_TEST_MAIN(TestWidestText)
#include "tst_widesttext.moc"
