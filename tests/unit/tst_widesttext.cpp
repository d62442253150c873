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
        QTest::newRow("numbers") << QStringList{
            u"1"_s, u"22"_s, u"-333"_s, u"4.5"_s, u"6,7"_s, u"11"_s, u"99"_s};
        QTest::newRow("dates") << QStringList{
            u"01.03.05 13:00"_s, u"11.11.11 11:11"_s, u"28.08.88 08:48"_s, u"2005"_s};
        QTest::newRow("dates with words") << QStringList{
            u"1/1/11 1:11 PM"_s, u"8/8/08 8:08 AM"_s, u"9/9/99 9:09 AM"_s, u"1 Jan 2001"_s, u"8 Mar 2008"_s};
        QTest::newRow("digits of another script") << QStringList{u"۱۱"_s, u"۸۸۸"_s, u"111"_s};
        QTest::newRow("wider in threes") << QStringList{u"ffi"_s, u"office"_s, u"ffiffi"_s, u"fffiii"_s};
        QTest::newRow("right to left among left") << QStringList{u"abc اب def"_s, u"abcdefghij"_s};
        QTest::newRow("no character") << QStringList{u"a\xD800"_s, u"\xDC00\xDC00"_s, u"\xFFFF"_s};
        QTest::newRow("controls") << QStringList{u"\x01\x02\x7F"_s, u"a\u00ADb"_s, u"\x0085"_s};
        QTest::newRow("tabs") << QStringList{u"a\tb\tc"_s, u"abcdefghij"_s};
    }

    void theWidthIsThatOfTheWidestText()
    {
        QFETCH(QStringList, slTexts);
        for (const QFont& oFont : {QFont(u"Sans Serif"_s, 8), QFont(u"Serif"_s, 24), QFont(u"Arial"_s, 10)})
            compareWithMeasuringAll(slTexts, QFontMetrics(oFont));
    }

    void bytesAndTextsAreTheSame_data() { theWidthIsThatOfTheWidestText_data(); }

    void bytesAndTextsAreTheSame()
    {
        QFETCH(QStringList, slTexts);
        const QFontMetrics oMetrics(QFont(u"Sans Serif"_s, 9));
        CWidestText oOfTexts(oMetrics, 0);
        CWidestText oOfBytes(oMetrics, 0);
        for (const QString& sText : slTexts) {
            const QByteArray oBytes = sText.toUtf8();
            oOfTexts.add(QString::fromUtf8(oBytes));
            oOfBytes.add(std::string_view(oBytes.constData(), std::size_t(oBytes.size())));
            QCOMPARE(oOfBytes.width(), oOfTexts.width());
        }
    }

    void brokenBytesAreMeasuredAsTheyAreShown()
    {
        const QFontMetrics oMetrics(QFont(u"Sans Serif"_s, 9));
        for (const QByteArray& oBytes :
            {"\xC3"_ba, "a\xFF"_ba, "\xE2\x82"_ba, "\x80\x80"_ba, "\xC3\xC3"_ba, "\xC0\x80"_ba}) {
            CWidestText oWidest(oMetrics, 0);
            oWidest.add(std::string_view(oBytes.constData(), std::size_t(oBytes.size())));
            QCOMPARE(oWidest.width(), oMetrics.horizontalAdvance(QString::fromUtf8(oBytes)));
        }
    }

    void aLongTextIsMeasuredUpToTheWidestColumn_data()
    {
        QTest::addColumn<QString>("sLetters");
        QTest::newRow("Latin") << u"abcdefgh"_s;
        QTest::newRow("ligatures") << u"ffifl"_s;
        QTest::newRow("Cyrillic") << u"Широкий "_s;
        QTest::newRow("Chinese") << u"大雪"_s;
    }

    void aLongTextIsMeasuredUpToTheWidestColumn()
    {
        QFETCH(QString, sLetters);
        const QFontMetrics oMetrics(QFont(u"Sans Serif"_s, 8));
        for (const int iTimes : {3000, 13000, 20000, 60000}) {
            const QString sText = sLetters.repeated(iTimes);
            CWidestText oWidest(oMetrics, 0);
            oWidest.add(sText.toStdString());
            QCOMPARE(oWidest.width(), std::min(oMetrics.horizontalAdvance(sText), CWidestText::Most));
        }
        CWidestText oWidest(oMetrics, 0);
        oWidest.add(sLetters.repeated(5'000'000).toStdString());
        QCOMPARE(oWidest.width(), CWidestText::Most);
    }

    void digitsOfOneWidthAreKnown()
    {
        QVERIFY(CLetterWidths(QFontMetrics(QFont(u"Sans Serif"_s, 9))).areDigitsAlike());
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
            for (int i = 0; i < 10 * iList; i++) {
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
        CWidestText oWidest(oMetrics, 3); // asked after each text
        CWidestText oWidestOfAll(oMetrics, 3); // asked at the end
        for (const QString& sText : slTexts) {
            iExpected = std::max(iExpected, oMetrics.horizontalAdvance(sText));
            oWidest.add(sText);
            QCOMPARE(oWidest.width(), iExpected);
            oWidestOfAll.add(sText);
        }
        QCOMPARE(oWidestOfAll.width(), iExpected);
    }
};

QTUTILS_OFFSCREEN_TEST_MAIN(TestWidestText)
#include "tst_widesttext.moc"
