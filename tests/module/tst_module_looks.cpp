// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"
#include "CScreen.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <QColor>
#include <QDir>

#include <cmath>

namespace {

/// A part of the window that shows text, in shares of the window's size.
struct Part
{
    const char* pcName;
    QRectF oShare;
};

const QList<Part> Parts{
    {"menu bar", {0.0, 0.0, 0.2, 0.025}},
    {"tree", {0.0, 0.05, 0.4, 0.1}},
    {"headings", {0.5, 0.045, 0.4, 0.02}},
    {"table", {0.5, 0.07, 0.4, 0.1}},
    {"text", {0.5, 0.62, 0.4, 0.1}},
    {"check box", {0.5, 0.94, 0.15, 0.04}},
    {"date", {0.75, 0.94, 0.15, 0.04}},
};

/// Relative luminance. Source: WCAG 2.1.
double luminance(const QColor& oColor)
{
    const auto part = [](double f) { return f <= 0.03928 ? f / 12.92 : std::pow((f + 0.055) / 1.055, 2.4); };
    return 0.2126 * part(oColor.redF()) + 0.7152 * part(oColor.greenF()) + 0.0722 * part(oColor.blueF());
}

double contrast(double fOne, double fOther)
{
    return (std::max(fOne, fOther) + 0.05) / (std::min(fOne, fOther) + 0.05);
}

/// The colour that most pixels have.
QRgb ground(const QImage& oPicture)
{
    QHash<QRgb, int> hCounts;
    for (int iY = 0; iY < oPicture.height(); iY++)
        for (int iX = 0; iX < oPicture.width(); iX++)
            hCounts[oPicture.pixel(iX, iY)]++;
    return std::max_element(hCounts.keyValueBegin(), hCounts.keyValueEnd(), [](auto oOne, auto oOther) {
        return oOne.second < oOther.second;
    })->first;
}

/// The contrast of the ground to the pixel that differs most from it.
double textContrast(const QImage& oPicture)
{
    const double fGround = luminance(ground(oPicture));
    double fBest = 1;
    for (int iY = 0; iY < oPicture.height(); iY++)
        for (int iX = 0; iX < oPicture.width(); iX++)
            fBest = std::max(fBest, contrast(fGround, luminance(oPicture.pixel(iX, iY))));
    return fBest;
}

} // namespace

/// The window on light and dark desktops and on screens of more pixels. With the variable QTUTILS_PICTURES
/// its pictures go into that folder.
class TestModuleLooks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        pDisplay = std::make_unique<CPrivateDisplay>(CPrivateDisplay::Manager::Running, QSize(1600, 1760));
    }

    void everythingIsReadable_data()
    {
        QTest::addColumn<QByteArray>("oStyle");
        QTest::addColumn<QByteArray>("oScale");
        for (const char* pcStyle : {"fusion", "dark"})
            for (const char* pcScale : {"1", "1.25", "1.5", "2"})
                QTest::addRow("%s-%g", pcStyle, 100 * std::atof(pcScale))
                    << QByteArray(pcStyle) << QByteArray(pcScale);
    }

    void everythingIsReadable()
    {
        QFETCH(QByteArray, oStyle);
        QFETCH(QByteArray, oScale);
        // given
        const CScreen oScreen;
        CPlainHost oHost;
        oHost.command({"env", "QT_PLUGIN_PATH", QTUTILS_TEST_PLUGINS});
        oHost.command({"env", "QT_STYLE_OVERRIDE", oStyle});
        oHost.command({"env", "QT_SCALE_FACTOR", oScale});
        oHost.start();
        oHost.call("select", {"i:1"});
        oHost.call("markRow", {"k:2005-02-01 00:00:00", "i:1"});
        // when
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
        // then
        const QRect oWindow = oScreen.place("Ombrel");
        QCOMPARE(oWindow.size(), (QSizeF(732, 800) * oScale.toDouble()).toSize());
        for (const Part& oPart : Parts)
            QTRY_VERIFY2(textContrast(picture(oScreen, oPart)) >= 4.5, oPart.pcName);
        keep(oScreen.picture().copy(oWindow));
        const double fTable = luminance(ground(picture(oScreen, Parts[3])));
        QVERIFY(oStyle == "dark" ? fTable < 0.1 : fTable > 0.9);
        QCOMPARE(oHost.numRows(), 5);
    }

private:
    static QImage picture(const CScreen& oScreen, const Part& oPart)
    {
        const QRect oWindow = oScreen.place("Ombrel");
        const QRectF oPlace(oPart.oShare.x() * oWindow.width(), oPart.oShare.y() * oWindow.height(),
            oPart.oShare.width() * oWindow.width(), oPart.oShare.height() * oWindow.height());
        return oScreen.picture().copy(oPlace.toRect().translated(oWindow.topLeft()));
    }

    static void keep(const QImage& oPicture)
    {
        const QString sFolder = qEnvironmentVariable("QTUTILS_PICTURES");
        if (!sFolder.isEmpty())
            QVERIFY(oPicture.save(QDir(sFolder).filePath(
                QStringLiteral("looks-%1.png").arg(QLatin1String(QTest::currentDataTag())))));
    }

    CPrivateServer oServer;
    std::unique_ptr<CPrivateDisplay> pDisplay;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleLooks)
#include "tst_module_looks.moc"
