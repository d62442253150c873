// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "paintedhost.h"
#include "tests/support/CPrivateServer.h"

/// What becomes of a hue, a saturation and a value of the host.
class TestModuleColorsValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("painted.sql")); }

    void aComponentIsCutTowardZero_data()
    {
        QTest::addColumn<QByteArray>("oHost");
        QTest::addColumn<QColor>("oColor");
        addColor("whole numbers", "210,100,50", QColor::fromHsv(210, 100, 50));
        addColor("not red, green, blue", "120,255,0", Qt::black);
        addColor("just below the next ones", "359.9,255.7,0.9", QColor::fromHsv(359, 255, 0));
        addColor("just below the next ones, bright", "359.9,255.7,254.9", QColor::fromHsv(359, 255, 254));
        addColor("the greatest", "359,255.99,255.99", QColor::fromHsv(359, 255, 255));
        addColor("halves", "29.5,127.5,99.5", QColor::fromHsv(29, 127, 99));
        addColor("the least", "-0.0,-0.0,-0.0", Qt::black);
        addColor("just below zero", "-0.9,-0.9,99", QColor::fromHsv(0, 0, 99));
        addColor("value just below zero", "0,255,-0.9", Qt::black);
        addColor("a full turn", "360,255,255", Qt::red);
        addColor("nearly two turns", "719.9,255,254", QColor::fromHsv(359, 255, 254));
        addColor("more than a turn", "480.5,255,255", Qt::green);
        addColor("very many turns", "2147483520,255,255", Qt::red);
        addColor("no hue", "-1,255,128", QColor(128, 128, 128));
        addColor("hardly no hue", "-1.9,255,128", QColor(128, 128, 128));
        addColor("no saturation", "240,0,200", QColor(200, 200, 200));
    }

    void aComponentIsCutTowardZero()
    {
        QFETCH(QByteArray, oHost);
        QFETCH(QColor, oColor);
        CPlainHost oPlainHost;
        CAnalyst oAnalyst(oPlainHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:1x" + oHost + ";4x0,0,255");
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 1), QByteArrayList({oColor.name().toUtf8(), "#ffffff"}));
    }

    void whatIsNoColorIsBlack_data()
    {
        QTest::addColumn<QByteArray>("oColor");
        for (const char* pcColor : {"-2,255,255", "0,256,255", "0,-1,255", "0,255,256", "0,255,-1",
                 "nan,255,255", "0,nan,255", "0,255,nan", "inf,255,255", "-inf,255,255", "0,inf,255",
                 "0,-inf,255", "0,255,inf", "0,255,-inf", "2147483648,255,255", "-2147483648,255,255",
                 "1e30,255,255", "0,1e30,255", "0,255,-1e30", "0,4294967296,255", "0,255,4294967551"})
            QTest::newRow(pcColor) << QByteArray(pcColor);
    }

    void whatIsNoColorIsBlack()
    {
        QFETCH(QByteArray, oColor);
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:1x" + oColor + ";4x0,0,255");
        // then
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 1), QByteArrayList({"#000000", "#ffffff"}));
        QVERIFY(onlyWarnings(oHost));
    }

    void aSelectedRowWithoutAColorHasABlackFocusRectangle()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:5x-2,255,255");
        // when
        oAnalyst.clickCell(0, "title");
        // then
        const QImage oCell = paintedhost::cell(oAnalyst, 0, "title");
        QCOMPARE(oCell.pixel(oCell.width() / 2, 9), paintedhost::Highlight);
        QVERIFY(oCell.pixel(10, 0) != oCell.pixel(11, 0));
        QVERIFY(oCell.pixel(10, 0) == paintedhost::Text || oCell.pixel(11, 0) == paintedhost::Text);
        QVERIFY(onlyWarnings(oHost));
    }

private:
    static void addColor(const char* pcName, const char* pcHost, const QColor& oColor)
    {
        QTest::newRow(pcName) << QByteArray(pcHost) << oColor;
    }

    // The toolkit warns for each cell that it paints, for the last time before the next selection.
    static bool onlyWarnings(CPlainHost& oHost)
    {
        oHost.call("select", {"i:1"});
        oHost.numRows();
        const QByteArrayList lErrors = oHost.errors();
        return !lErrors.isEmpty()
            && lErrors.count("QColor::setHsv: HSV parameters out of range") == lErrors.size();
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleColorsValues)
#include "tst_module_colors_values.moc"
