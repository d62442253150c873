// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "data/CHeader.h"

#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QProxyStyle>
#include <QStandardItemModel>

using namespace Qt::StringLiterals;

namespace {

class CWideStyle : public QProxyStyle
{
public:
    int pixelMetric(PixelMetric eMetric, const QStyleOption* pOption, const QWidget* pWidget) const override
    {
        return eMetric == PM_HeaderMargin ? 30 : QProxyStyle::pixelMetric(eMetric, pOption, pWidget);
    }
};

} // namespace

/// A header takes as much room as the toolkit's own.
class TestHeader : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        CStrictTest::init();
        for (QHeaderView* pHeader : lpHeaders)
            pHeader->setModel(&oModel);
    }

    void cleanup()
    {
        setFont(QFont());
        oModel.clear();
    }

    void rowNumbersTakeTheirRoom()
    {
        for (const int iRows : {0, 1, 9, 10, 11, 99, 100, 1234, 9, 100000, 100, 1})
            compareWith(iRows);
    }

    void columnNamesTakeTheirRoom()
    {
        oModel.setHorizontalHeaderLabels(
            {u"title"_s, u"1"_s, u"8"_s, u"WWWWWWWW"_s, u""_s, u"Größe"_s, u"٣"_s});
        compareWith(3);
        oModel.setHorizontalHeaderLabels({u"i"_s, u"title"_s});
        compareWith(3);
        QCOMPARE(oColumns.textWidth(u"title"_s), oColumns.fontMetrics().horizontalAdvance(u"title"_s));
    }

    void rowsMayHaveNames()
    {
        oModel.setVerticalHeaderLabels({u"1"_s, u"one"_s, u"10"_s, u"a hundred"_s});
        compareWith(4);
    }

    void everyFontHasItsOwnRoom()
    {
        oModel.setHorizontalHeaderLabels({u"title"_s, u"date"_s});
        compareWith(1000);
        const int iBefore = oColumns.textWidth(u"title"_s);
        for (const QString& sFamily : {u"DejaVu Sans"_s, u"Liberation Serif"_s}) {
            setFont(QFont(sFamily, 30));
            compareWith(1000);
            QCOMPARE(oColumns.textWidth(u"title"_s), oColumns.fontMetrics().horizontalAdvance(u"title"_s));
            QVERIFY(oColumns.textWidth(u"title"_s) > iBefore);
        }
    }

    // The end of the first column, the middle and the end of the second one.
    void aWideColumnLooksAsTheToolkits()
    {
        oModel.setHorizontalHeaderLabels({u"title"_s, u"a rather long label of a column"_s});
        for (QHeaderView* pHeader : {static_cast<QHeaderView*>(&oColumns), &oPlainColumns}) {
            pHeader->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
            pHeader->resize(300, 20);
            pHeader->resizeSection(0, 250);
            pHeader->resizeSection(1, 5000);
        }
        for (const int iOffset : {0, 10, 200, 240, 260, 400, 1000, 4950, 5200}) {
            oColumns.setOffset(iOffset);
            oPlainColumns.setOffset(iOffset);
            QCOMPARE(oColumns.grab().toImage(), oPlainColumns.grab().toImage());
        }
    }

    void everyStyleHasItsOwnRoom()
    {
        compareWith(1000);
        const QSize oBefore = oRows.sizeHint();
        CWideStyle oStyle;
        for (QHeaderView* pHeader : lpHeaders)
            pHeader->setStyle(&oStyle);
        compareWith(2000); // else the toolkit would keep its size, too
        QVERIFY(oRows.sizeHint() != oBefore);
        for (QHeaderView* pHeader : lpHeaders)
            pHeader->setStyle(nullptr);
    }

private:
    void compareWith(int iRows)
    {
        oModel.setRowCount(iRows);
        QCOMPARE(oRows.sizeHint(), oPlainRows.sizeHint());
        QCOMPARE(oColumns.sizeHint(), oPlainColumns.sizeHint());
        for (int i = 0; i < oModel.columnCount(); i++)
            QCOMPARE(oColumns.sectionSizeHint(i), oPlainColumns.sectionSizeHint(i));
    }

    void setFont(const QFont& oFont)
    {
        for (QHeaderView* pHeader : lpHeaders)
            pHeader->setFont(oFont);
    }

    QStandardItemModel oModel;
    CHeader oColumns{Qt::Horizontal, nullptr};
    QHeaderView oPlainColumns{Qt::Horizontal};
    CHeader oRows{Qt::Vertical, nullptr};
    QHeaderView oPlainRows{Qt::Vertical};
    const QList<QHeaderView*> lpHeaders{&oColumns, &oPlainColumns, &oRows, &oPlainRows};
};

QTUTILS_OFFSCREEN_TEST_MAIN(TestHeader)
#include "tst_header.moc"
