// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CFakeModule.h"

#include <qtutils/NodeBrowser.h>
#include <qtutils/Recipes.h>

#include <QTest>

#include <memory>

namespace {

const QByteArray Pale = "48 38 255";
const QByteArray Middle = "95 115 208";
const QByteArray Strong = "208 150 180";
const QByteArray None = "0 0 255";

} // namespace

/// The recipes for row colours, in C++ and so in C, with the three rows of the fake module (0, 10, 20
/// minutes).
class TestKitRecipes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        pFake = std::make_unique<CFakeModule>();
        pBrowser = std::make_unique<qtutils::NodeBrowser>("som", "texts", QTUTILS_FAKE_MODULE);
    }
    void cleanup()
    {
        pBrowser.reset();
        pFake.reset();
    }

    void datesGoFromPaleToStrong()
    {
        QCOMPARE(colors(qtutils::colorByDate()), QByteArrayList({Pale, Middle, Strong}));
    }

    void aRowWithoutADateStaysWhite()
    {
        (*pFake)->bNoDateInRow1 = 1;
        QCOMPARE(colors(qtutils::colorByDate()), QByteArrayList({Pale, None, Strong}));
    }

    void nearRowsAreStrong()
    {
        QCOMPARE(colors(qtutils::colorByDistance({2, 1.5, 1})), QByteArrayList({Pale, Middle, Strong}));
        QCOMPARE(colors(qtutils::colorByDistance({1, INFINITY, 1})), QByteArrayList({Strong, None, Strong}));
    }

    void hitsAreOrange()
    {
        QCOMPARE(colors(qtutils::colorByHit({0, 1, -1})), QByteArrayList({None, "36 140 255", "36 140 255"}));
    }

    void groupsHaveTheirColors()
    {
        const QByteArrayList lColors = colors(qtutils::colorByGroup({3, -1, 3 + QTUTILS_NUM_GROUP_COLORS}));
        QCOMPARE(lColors, QByteArrayList({"280 140 255", None, "280 140 255"}));
    }

    void valuesOfOtherRowsAreRefused()
    {
        for (const auto& fnRecipe :
            {qtutils::colorByDistance({1}), qtutils::colorByHit({1}), qtutils::colorByGroup({1})})
            try {
                pBrowser->colorRows(fnRecipe);
                QFAIL("no error");
            } catch (const qtutils::Error& e) {
                QCOMPARE(e.code(), int(QTUTILS_ERROR_ROWS));
            }
    }

private:
    /// The colours of the rows as the module gets them.
    QByteArrayList colors(const qtutils::ColorRows& fnRecipe)
    {
        pFake->log();
        pBrowser->colorRows(fnRecipe);
        QByteArrayList lColors;
        for (const QByteArray& oLine : pFake->log())
            if (oLine.startsWith("row "))
                lColors << oLine.mid(oLine.indexOf(':') + 2);
        return lColors;
    }

    std::unique_ptr<CFakeModule> pFake;
    std::unique_ptr<qtutils::NodeBrowser> pBrowser;
};

QTEST_GUILESS_MAIN(TestKitRecipes)
#include "tst_kit_recipes.moc"
