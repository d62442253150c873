// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "table/excerpt.h"

#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QImage>
#include <QPainter>

using namespace Qt::StringLiterals;

/// What is drawn of an excerpt is what is drawn of the whole text.
class TestExcerpt : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void anExcerptLooksAsTheWholeDoes_data()
    {
        QTest::addColumn<QString>("sText");
        QTest::newRow("empty") << u""_s;
        QTest::newRow("short") << u"snow"_s;
        QTest::newRow("long") << u"snow and ice, "_s.repeated(2000);
        QTest::newRow("narrow letters") << u"i"_s.repeated(20000);
        QTest::newRow("kerning") << u"AVAToTe"_s.repeated(3000);
        QTest::newRow("accents") << u"äöüß Łódź "_s.repeated(3000);
        QTest::newRow("Chinese") << u"大雪纷飞"_s.repeated(3000);
        QTest::newRow("emoji") << u"😀 👩‍👩‍👧 "_s.repeated(3000);
        QTest::newRow("Arabic") << u"الثلج يتساقط "_s.repeated(3000);
        QTest::newRow("Arabic behind Latin") << (u"snow "_s + u"الثلج يتساقط "_s.repeated(1000));
        QTest::newRow("Arabic out of sight") << u"snow "_s.repeated(1000) + u"الثلج يتساقط "_s.repeated(100);
        QTest::newRow("combining marks") << u"a\u0301\u0302\u0303"_s.repeated(3000);
        QTest::newRow("tabs") << u"a\tb"_s.repeated(3000);
        QTest::newRow("NUL") << u"a\0b"_s.repeated(3000);
        for (const int iLines : {2, 3, 4, 5, 6, 7, 100, 101})
            QTest::addRow("%d lines", iLines) << lines(iLines, 1);
        for (const int iLines : {2, 3, 6, 7})
            QTest::addRow("%d long lines", iLines) << lines(iLines, 1000);
        QTest::newRow("line feed at the end") << u"one\ntwo\n"_s;
        QTest::newRow("line feeds only") << u"\n"_s.repeated(999);
        QTest::newRow("Windows line feeds") << u"one\r\ntwo\r\nthree"_s;
    }

    void anExcerptLooksAsTheWholeDoes()
    {
        QFETCH(QString, sText);
        const QString sExcerpt = excerpt::ofText(sText.toStdString(), QFontMetrics(oFont), oSize.width());
        QCOMPARE(picture(sExcerpt), picture(sText));
    }

    void anExcerptIsShort()
    {
        const QFontMetrics oMetrics(oFont);
        for (const QString& sPart : {u"snow and ice, "_s, u"大雪\n"_s, u"الثلج "_s})
            QVERIFY(excerpt::ofText(sPart.repeated(1000000).toStdString(), oMetrics, 200).size() < 100001);
        QVERIFY(excerpt::ofText(u"snow\n"_s.repeated(1000000).toStdString(), oMetrics, 200).size() < 30);
        QVERIFY(excerpt::ofText(u"snow "_s.repeated(1000000).toStdString(), oMetrics, 200).size() < 200);
    }

private:
    static QString lines(int iNumber, int iTimes)
    {
        QStringList slLines;
        for (int i = 0; i < iNumber; i++)
            slLines << u"line %1 "_s.arg(i).repeated(iTimes);
        return slLines.join(u'\n');
    }

    // As the table draws its cells.
    QImage picture(const QString& sText) const
    {
        QImage oImage(oSize, QImage::Format_RGB32);
        oImage.fill(Qt::white);
        QPainter oPainter(&oImage);
        oPainter.setFont(oFont);
        oPainter.drawText(
            oImage.rect().adjusted(2, 2, -2, -2), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, sText);
        return oImage;
    }

    const QFont oFont{u"Sans Serif"_s, 9};
    const QSize oSize{200, 20};
};

QTUTILS_OFFSCREEN_TEST_MAIN(TestExcerpt)
#include "tst_excerpt.moc"
