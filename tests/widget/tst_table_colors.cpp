// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTable.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <set>

using namespace Qt::StringLiterals;

namespace {

const QColor Text(Qt::blue);
const QColor HighlightedText(Qt::yellow);
const QColor Base(Qt::white);
const QColor Highlight(Qt::darkGreen);

constexpr int TextColumn = 0;
constexpr int EmptyColumn = 1;

/// Counts the paint events of a widget.
class CPaintCounter : public QObject
{
public:
    explicit CPaintCounter(QWidget* pWidget) { pWidget->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* pEvent) override
    {
        iPaints += pEvent->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int iPaints = 0;
};

} // namespace

class TestTableColors : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        oServer.sql(u"CREATE TABLE news.painted (id INT, title VARCHAR(20), date DATETIME, void VARCHAR(20));"
                    "INSERT INTO news.painted SELECT id, 'HHHHHHHHHH', date, '' FROM news.document"_s);
    }

    void init()
    {
        CStrictTest::init();
        pTable = std::make_unique<CTestTable>();
        pTable->setTables(u"painted"_s);
        pTable->toggleColumns({u"date"_s, u"void"_s});
        QFont oFont(u"Sans Serif"_s, 8);
        oFont.setStyleStrategy(QFont::NoAntialias);
        table().setFont(oFont);
        QPalette oPalette;
        oPalette.setColor(QPalette::Text, Text);
        oPalette.setColor(QPalette::HighlightedText, HighlightedText);
        oPalette.setColor(QPalette::Base, Base);
        oPalette.setColor(QPalette::Highlight, Highlight);
        table().setPalette(oPalette);
        table().selection(1);
        pTable->show();
    }

    void cleanup() { pTable.reset(); }

    void withoutHostColoursACellIsPlain()
    {
        QCOMPARE(colorsOf(paint(0, EmptyColumn)), colors({Base}));
        QCOMPARE(colorsOf(paint(0, TextColumn)), colors({Base, Text}));
    }

    void withoutHostColoursASelectedCellIsHighlighted()
    {
        table().selectRow(0);
        QCOMPARE(colorsOf(paint(0, EmptyColumn)), colors({Highlight}));
        QCOMPARE(colorsOf(paint(0, TextColumn)), colors({Highlight, HighlightedText}));
    }

    void anUnselectedCellIsFilledAndOutlined()
    {
        setColors({{0, 255, 255}});
        const QImage oCell = paint(0, EmptyColumn);
        QCOMPARE(
            differences(oCell, [&](int x, int y) { return isOutline(oCell, x, y) ? Text : Qt::red; }), 0);
    }

    void theTextStandsOnTheRowColour()
    {
        setColors({{0, 255, 255}});
        QCOMPARE(colorsOf(inside(paint(0, TextColumn))), colors({Qt::red, Text}));
    }

    void aSelectedCellHasAFocusRectangleInTheRowColourAndNoFill()
    {
        setColors({{0, 255, 255}});
        table().selectRow(0);
        const QImage oCell = paint(0, EmptyColumn);
        QCOMPARE(colorsOf(inside(oCell)), colors({Highlight}));
        QCOMPARE(colorsOf(oCell), colors({Highlight, Qt::red}));
    }

    void theFocusRectangleSetsEverySecondPixel()
    {
        setColors({{0, 255, 255}});
        table().selectRow(0);
        const QImage oCell = paint(0, EmptyColumn);
        const auto isSet = [&](int x, int y) { return oCell.pixelColor(x, y) == Qt::red; };
        for (const int y : {0, oCell.height() - 1})
            for (int x = 2; x + 2 < oCell.width(); x++)
                QVERIFY2(isSet(x, y) != isSet(x + 1, y), qPrintable(u"%1, %2"_s.arg(x).arg(y)));
        for (const int x : {0, oCell.width() - 1})
            for (int y = 2; y + 2 < oCell.height(); y++)
                QVERIFY2(isSet(x, y) != isSet(x, y + 1), qPrintable(u"%1, %2"_s.arg(x).arg(y)));
    }

    void aSelectedCellHasTheNormalTextColour()
    {
        setColors({{0, 255, 255}});
        table().selectRow(0);
        QCOMPARE(colorsOf(inside(paint(0, TextColumn))), colors({Highlight, Text}));
    }

    void everyRowHasItsOwnColour()
    {
        setColors({{0, 255, 255}, {120, 255, 255}, {240, 255, 255}, {0, 0, 128}, {60, 255, 255}});
        const QColor aoExpected[] = {Qt::red, Qt::green, Qt::blue, QColor(128, 128, 128), Qt::yellow};
        for (int iRow = 0; iRow < 5; iRow++)
            QCOMPARE(fill(iRow), aoExpected[iRow].rgb());
    }

    void aComponentIsCutTowardZero_data()
    {
        QTest::addColumn<float>("fHue");
        QTest::addColumn<float>("fSaturation");
        QTest::addColumn<float>("fValue");
        QTest::addColumn<QColor>("oColor");
        QTest::newRow("just below the next") << 359.9F << 255.7F << 0.9F << QColor::fromHsv(359, 255, 0);
        QTest::newRow("a visible one") << 359.9F << 255.7F << 254.9F << QColor::fromHsv(359, 255, 254);
        QTest::newRow("just below zero") << -0.9F << -0.9F << 99.5F << QColor::fromHsv(0, 0, 99);
        QTest::newRow("a full turn") << 360.0F << 255.0F << 255.0F << QColor(Qt::red);
        QTest::newRow("more than a turn") << 480.5F << 255.0F << 255.0F << QColor(Qt::green);
        QTest::newRow("no hue") << -1.0F << 255.0F << 128.0F << QColor(128, 128, 128);
    }

    void aComponentIsCutTowardZero()
    {
        QFETCH(float, fHue);
        QFETCH(float, fSaturation);
        QFETCH(float, fValue);
        QFETCH(QColor, oColor);
        setColors({{fHue, fSaturation, fValue}});
        QCOMPARE(QColor(fill(0)), QColor(oColor.rgb()));
    }

    void whatIsNoColourIsBlack_data()
    {
        QTest::addColumn<float>("fHue");
        QTest::addColumn<float>("fSaturation");
        QTest::addColumn<float>("fValue");
        QTest::newRow("hue") << -2.0F << 255.0F << 255.0F;
        QTest::newRow("saturation") << 0.0F << 256.0F << 255.0F;
        QTest::newRow("value") << 0.0F << 255.0F << -1.0F;
        QTest::newRow("not a number") << std::numeric_limits<float>::quiet_NaN() << 255.0F << 255.0F;
        QTest::newRow("without an end") << 0.0F << std::numeric_limits<float>::infinity() << 255.0F;
    }

    void whatIsNoColourIsBlack()
    {
        QFETCH(float, fHue);
        QFETCH(float, fSaturation);
        QFETCH(float, fValue);
        setColors({{fHue, fSaturation, fValue}});
        QTest::ignoreMessage(QtWarningMsg, "QColor::setHsv: HSV parameters out of range");
        const QImage oCell = paint(0, EmptyColumn);
        QCOMPARE(inside(oCell).pixelColor(1, 1), QColor(Qt::black));
    }

    void newColoursRepaintNothing()
    {
        QCoreApplication::processEvents();
        const CPaintCounter paints(pTable->viewport());
        setColors({{0, 255, 255}});
        QCoreApplication::processEvents();
        QCOMPARE(paints.iPaints, 0);
    }

    void coloursAreReadAtEachPaint()
    {
        setColors({{0, 255, 255}});
        QCOMPARE(fill(0), QColor(Qt::red).rgb());
        vfColors[0] = 120;
        QCOMPARE(fill(0), QColor(Qt::green).rgb());
    }

    void aNewSelectionPaintsPlainAgain()
    {
        setColors({{0, 255, 255}});
        table().selection(1);
        QCOMPARE(fill(0), Base.rgb());
        table().setRowColors(vfColors.data());
        QCOMPARE(fill(0), QColor(Qt::red).rgb());
    }

    void showingAColumnPaintsPlainAgain()
    {
        setColors({{0, 255, 255}});
        pTable->toggleColumns({u"id"_s, u"id"_s});
        QCOMPARE(fill(0), Base.rgb());
    }

    void aNegativeNodeKeepsTheColours()
    {
        setColors({{0, 255, 255}});
        table().selection(-1);
        QCOMPARE(fill(0), QColor(Qt::red).rgb());
    }

private:
    using Colors = std::set<QRgb>;

    CTable& table() { return **pTable; }

    /// Colours for the first rows; the others are black.
    void setColors(const std::vector<std::array<float, 3>>& vColors)
    {
        vfColors.assign(15, 0);
        for (std::size_t i = 0; i < vColors.size(); i++)
            std::copy(vColors[i].begin(), vColors[i].end(), vfColors.begin() + std::ptrdiff_t(3 * i));
        table().setRowColors(vfColors.data());
    }

    QImage paint(int iRow, int iColumn)
    {
        return pTable->viewport()->grab(pTable->cell(iRow, iColumn)).toImage();
    }

    QRgb fill(int iRow) { return paint(iRow, EmptyColumn).pixel(5, 5); }

    static QImage inside(const QImage& oCell) { return oCell.copy(oCell.rect().adjusted(1, 1, -1, -1)); }
    static bool isOutline(const QImage& oCell, int x, int y)
    {
        return x == 0 || y == 0 || x == oCell.width() - 1 || y == oCell.height() - 1;
    }

    static int differences(const QImage& oCell, const std::function<QColor(int, int)>& expected)
    {
        int iDifferences = 0;
        for (int y = 0; y < oCell.height(); y++)
            for (int x = 0; x < oCell.width(); x++)
                iDifferences += oCell.pixelColor(x, y) == expected(x, y) ? 0 : 1;
        return iDifferences;
    }

    static Colors colors(const std::vector<QColor>& vColors)
    {
        Colors oColors;
        for (const QColor& oColor : vColors)
            oColors.insert(oColor.rgb());
        return oColors;
    }

    static Colors colorsOf(const QImage& oImage)
    {
        Colors oColors;
        for (int y = 0; y < oImage.height(); y++)
            for (int x = 0; x < oImage.width(); x++)
                oColors.insert(oImage.pixel(x, y));
        return oColors;
    }

    CPrivateServer oServer;
    std::unique_ptr<CTestTable> pTable;
    std::vector<float> vfColors;
};

QTUTILS_WIDGET_TEST_MAIN(TestTableColors, CPrivateDisplay::Manager::Running)
#include "tst_table_colors.moc"
