// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CFakeModule.h"

#include <qtutils/NodeBrowser.h>

#include <QTest>

#include <memory>

using namespace std::chrono_literals;

namespace {

/// The code of the error that is thrown; -1 if nothing is.
template <typename Function> int codeOf(Function function)
{
    try {
        function();
    } catch (const qtutils::Error& e) {
        return e.code();
    }
    return -1;
}

} // namespace

/// The C++ class: types, exceptions, lifetime.
class TestKitCpp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
        tzset();
        pFake = std::make_unique<CFakeModule>();
        pBrowser = std::make_unique<qtutils::NodeBrowser>("som", "texts", QTUTILS_FAKE_MODULE);
    }
    void cleanup()
    {
        pBrowser.reset();
        pFake.reset();
    }

    void anObjectIsAConstructionAsLongAsItLives()
    {
        QCOMPARE(pFake->log(), QByteArrayList({"CNodeBrowser som texts"}));
        qtutils::NodeBrowser oOther("a", "b", QTUTILS_FAKE_MODULE);
        QCOMPARE((*pFake)->iLive, 2);
        oOther = std::move(*pBrowser);
        QCOMPARE((*pFake)->iLive, 1);
        pBrowser.reset();
        QCOMPARE((*pFake)->iLive, 1);
        QCOMPARE(oOther.numRows(), 3);
    }

    void anErrorHasCodeAndText()
    {
        try {
            const qtutils::NodeBrowser oNone("som", "texts", "no/such/module.so");
            QFAIL("opened");
        } catch (const qtutils::Error& e) {
            QCOMPARE(e.code(), int(QTUTILS_ERROR_MODULE));
            QCOMPARE(QByteArray(e.what()),
                QByteArray(
                    "the module can't be loaded: no/such/module.so: cannot open shared object file: No "
                    "such file or directory"));
        }
    }

    void withoutAFileTheModuleComesFromTheUsualPlaces()
    {
        qputenv("QTUTILS_MODULE", QTUTILS_FAKE_MODULE);
        const qtutils::NodeBrowser oBrowser("som", "texts");
        qunsetenv("QTUTILS_MODULE");
        QCOMPARE(oBrowser.numRows(), 3);
    }

    void commandsPassTheirArguments()
    {
        pFake->log();
        pBrowser->setSOMTable("news_train");
        pBrowser->passHierarchy(std::vector<std::vector<int>>{{2, 1}, {}, {}});
        pBrowser->show();
        pBrowser->hideTable();
        pBrowser->select(7);
        QCOMPARE(pFake->log(),
            QByteArrayList({"setSOMTable news_train", "passNodeHierarchy 0 of 3: 2 1",
                "passNodeHierarchy 1 of 3:", "passNodeHierarchy 2 of 3:", "show", "hideTable", "select 7"}));
    }

    void everyRefusalIsThrown()
    {
        const std::vector<int> vWrong{5};
        (*pFake)->pcFirstDate = nullptr;
        QCOMPARE(codeOf([&] { pBrowser->select(-1); }), int(QTUTILS_ERROR_ARGUMENT));
        QCOMPARE(codeOf([&] { pBrowser->passNodeHierarchy(vWrong, 0, 5); }), int(QTUTILS_ERROR_ARGUMENT));
        QCOMPARE(codeOf([&] { pBrowser->setRowColors({}); }), int(QTUTILS_ERROR_ROWS));
        QCOMPARE(codeOf([&] { (void)pBrowser->firstDateInSelection(); }), int(QTUTILS_ERROR_NO_ROWS));
        QCOMPARE(codeOf([&] { (void)pBrowser->dateToInt("yesterday"); }), int(QTUTILS_ERROR_DATE));
        (*pFake)->bAnswers = 0;
        QCOMPARE(codeOf([&] { (void)pBrowser->numRows(); }), int(QTUTILS_ERROR_NO_ANSWER));
        QCOMPARE(codeOf([&] { (void)pBrowser->firstDateInFrame(); }), int(QTUTILS_ERROR_NO_ANSWER));
        QCOMPARE(codeOf([&] { pBrowser->colorRows([](auto, auto) {}); }), int(QTUTILS_ERROR_NO_ANSWER));
    }

    void timesAreTimePoints()
    {
        (*pFake)->iFrameMinutes = 90;
        (*pFake)->pcFirstDate = "2005-03-01T13:00:00";
        QCOMPARE(pBrowser->firstDateInFrame().time_since_epoch(), 90min);
        QCOMPARE(pBrowser->dateToInt("2005-03-01 13:00:00").time_since_epoch(), 19min);
        QCOMPARE(pBrowser->firstDateInSelection(), std::string("2005-03-01T13:00:00"));
    }

    void aMarkIsWrittenInLocalTime()
    {
        using namespace std::chrono;
        pFake->log();
        pBrowser->markRow(sys_days(2005y / March / 1) + 12h, qtutils::TimeFrame(2)); // winter
        pBrowser->markRow(sys_days(2005y / July / 1) + 12h + 5s); // summer
        (void)pBrowser->numRows();
        QCOMPARE(pFake->log(),
            QByteArrayList(
                {"markRow 2", "markRow 0", "marked 2005-03-01 13:00:00", "marked 2005-07-01 14:00:05"}));
    }

    void datesBecomeColors()
    {
        (*pFake)->bNoDateInRow1 = 1;
        pFake->log();
        std::vector<qtutils::RowDate> vDates;
        pBrowser->colorRows([&](std::span<const qtutils::RowDate> oDates, std::span<qtutils::Color> oColors) {
            vDates.assign(oDates.begin(), oDates.end());
            oColors[0] = {120, 80, 200};
        });
        QCOMPARE(vDates, std::vector<qtutils::RowDate>({0min, std::nullopt, 20min}));
        QCOMPARE(pFake->log(),
            QByteArrayList(
                {"fillDate", "setRowColors", "row 0: 120 80 200", "row 1: 0 0 255", "row 2: 0 0 255"}));
    }

    void whatTheFunctionThrowsComesThrough()
    {
        pFake->log();
        QVERIFY_THROWS_EXCEPTION(
            std::logic_error, pBrowser->colorRows([](auto, std::span<qtutils::Color> oColors) {
                oColors[0].fHue = 5;
                throw std::logic_error("no colours");
            }));
        QCOMPARE(pFake->log().mid(1, 2), QByteArrayList({"setRowColors", "row 0: 0 0 255"}));
        QCOMPARE(pBrowser->numRows(), 3); // the window goes on
    }

    void aNodeIsSelectedWithItsColors()
    {
        pFake->log();
        pBrowser->selectColored(5, [](auto, std::span<qtutils::Color> oColors) { oColors[2].fHue = 7; });
        QCOMPARE(pFake->log().mid(6),
            QByteArrayList({"select 5", "setRowColors", "before 255", "row 0: 0 0 255", "row 1: 0 0 255",
                "row 2: 7 0 255"}));
        QVERIFY_THROWS_EXCEPTION(std::logic_error,
            pBrowser->selectColored(5, [](auto, auto) { throw std::logic_error("no colours"); }));
        QCOMPARE(pFake->log().count("select 5"), 1);
        QCOMPARE(
            codeOf([&] { pBrowser->selectColored(-1, [](auto, auto) {}); }), int(QTUTILS_ERROR_ARGUMENT));
    }

    void aFunctionThatCallsBackGetsBusy()
    {
        int iCode = 0;
        pBrowser->colorRows([&](auto, auto) { iCode = codeOf([&] { pBrowser->select(1); }); });
        QCOMPARE(iCode, int(QTUTILS_ERROR_BUSY));
    }

    void colorsAreSet()
    {
        pFake->log();
        pBrowser->setRowColors(std::vector<qtutils::Color>{{1, 2, 3}, {4, 5, 6}, {}});
        QCOMPARE(
            pFake->log(), QByteArrayList({"setRowColors", "row 0: 1 2 3", "row 1: 4 5 6", "row 2: 0 0 255"}));
    }

private:
    std::unique_ptr<CFakeModule> pFake;
    std::unique_ptr<qtutils::NodeBrowser> pBrowser;
};

QTEST_GUILESS_MAIN(TestKitCpp)
#include "tst_kit_cpp.moc"
