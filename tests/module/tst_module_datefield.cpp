// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CDateFilter.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

using namespace Qt::StringLiterals;

/// The field of the date filter: what can be typed into it, and what each change asks for.
class TestModuleDateField : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void theFieldShowsDayAndTimeInFull()
    {
        CDateFilter oFilter(oServer, oScreen);
        QCOMPARE(oFilter.field(), "01.01.2000 00:00:00");
    }

    void fourteenDigitsFillTheFieldAndEveryChangeIsOneStatement()
    {
        CDateFilter oFilter(oServer, oScreen);
        oFilter.fillIn("10052006123045");
        QCOMPARE(oFilter.field(), "10.05.2006 12:30:45");
        QCOMPARE(oFilter.conditions(),
            QStringList({QString(), day(u"2000-01-10"_s), day(u"2000-05-10"_s), day(u"2006-05-10"_s),
                instant(u"2006-05-10T12:00:00"_s), instant(u"2006-05-10T12:30:00"_s),
                instant(u"2006-05-10T12:30:45"_s)}));
    }

    void aSectionThatIsClickedTakesTheDigitsTyped()
    {
        CDateFilter oFilter(oServer, oScreen);
        oFilter.clickBox();
        const QRect oField = oFilter.oAnalyst.part("dateedit");
        oScreen.click(oField.topLeft() + QPoint(10, oField.height() / 2));
        oFilter.oAnalyst.type("12");
        QCOMPARE(oFilter.field(), "12.01.2000 00:00:00");
        oFilter.oAnalyst.type("052006");
        QCOMPARE(oFilter.field(), "12.05.2006 00:00:00");
        QCOMPARE(oFilter.conditions().last(), day(u"2006-05-12"_s));
    }

    void aTimeSetBackToMidnightFiltersTheDayAgain()
    {
        CDateFilter oFilter(oServer, oScreen);
        oFilter.fillIn("01032005130000", {"shift+Tab", "shift+Tab"});
        QCOMPARE(oFilter.conditions().last(), instant(u"2005-03-01T13:00:00"_s));
        oFilter.oAnalyst.type("00");
        QCOMPARE(oFilter.oAnalyst.table().size(), 3);
        QCOMPARE(oFilter.conditions().last(), day(u"2005-03-01"_s));
    }

    void keysStepThroughEverySection()
    {
        CDateFilter oFilter(oServer, oScreen);
        oFilter.fillIn("", {"Up", "Tab", "Up", "Tab", "Up", "Tab", "Up", "Tab", "Up", "Tab", "Up"});
        QCOMPARE(oFilter.field(), "02.02.2001 01:01:01");
        oFilter.oAnalyst.press({"Prior", "Down"});
        QCOMPARE(oFilter.field(), "02.02.2001 01:01:10");
        QCOMPARE(oFilter.conditions(),
            QStringList({QString(), day(u"2000-01-02"_s), day(u"2000-02-02"_s), day(u"2001-02-02"_s),
                instant(u"2001-02-02T01:00:00"_s), instant(u"2001-02-02T01:01:00"_s),
                instant(u"2001-02-02T01:01:01"_s), instant(u"2001-02-02T01:01:11"_s),
                instant(u"2001-02-02T01:01:10"_s)}));
    }

    void theWheelStepsTheSectionThatTheCursorIsIn()
    {
        CDateFilter oFilter(oServer, oScreen);
        oFilter.fillIn("", {"Tab"});
        for (const int iDirection : {WheelUp, WheelUp, WheelDown})
            oFilter.oAnalyst.click(oFilter.oAnalyst.part("dateedit"), iDirection);
        QCOMPARE(oFilter.field(), "01.02.2000 00:00:00");
        QCOMPARE(oFilter.conditions(),
            QStringList({QString(), day(u"2000-02-01"_s), day(u"2000-03-01"_s), day(u"2000-02-01"_s)}));
    }

    void stepsGoOverTheHourThatSummerTimeSkips()
    {
        CDateFilter oFilter(oServer, oScreen);
        oFilter.fillIn("27032005010000", {"shift+Tab", "shift+Tab", "Up"});
        QCOMPARE(oFilter.field(), "27.03.2005 03:00:00");
        oFilter.oAnalyst.press({"Down"});
        QCOMPARE(oFilter.field(), "27.03.2005 01:00:00");
        QCOMPARE(oFilter.conditions().last(), instant(u"2005-03-27T01:00:00"_s));
    }

    void theFilterIsWhatTheFieldMakesOfIt_data()
    {
        QTest::addColumn<QByteArray>("oTyped");
        QTest::addColumn<QByteArrayList>("lKeys");
        QTest::addColumn<QByteArray>("oShown");
        QTest::addColumn<QString>("sCondition");
        const QByteArrayList lNext{"Tab"};
        QTest::newRow("a day that the month doesn't have")
            << "29022006"_ba << lNext << "28.02.2006 00:00:00"_ba << day(u"2006-02-28"_s);
        QTest::newRow("day 32") << "32"_ba << lNext << "03.01.2000 00:00:00"_ba << day(u"2000-01-03"_s);
        QTest::newRow("month 0") << "1200"_ba << lNext << "12.01.2000 00:00:00"_ba << day(u"2000-01-12"_s);
        QTest::newRow("a year too early")
            << "01031700"_ba << lNext << "01.03.2000 00:00:00"_ba << day(u"2000-03-01"_s);
        QTest::newRow("before the first day") << "14091752"_ba << QByteArrayList{"shift+Tab", "Down"}
                                              << "14.09.1752 00:00:00"_ba << day(u"1752-09-14"_s);
        QTest::newRow("after the last day") << "31129999"_ba << QByteArrayList{"shift+Tab", "Up"}
                                            << "31.12.9999 00:00:00"_ba << day(u"9999-12-31"_s);
        QTest::newRow("letters between digits")
            << "1x2a03"_ba << lNext << "12.03.2000 00:00:00"_ba << day(u"2000-03-12"_s);
        QTest::newRow("a section that is left empty")
            << "0502"_ba << QByteArrayList{"shift+Tab", "BackSpace", "Tab"} << "05.02.2000 00:00:00"_ba
            << day(u"2000-02-05"_s);
        QTest::newRow("a time that summer time skips")
            << "27032005023000"_ba << lNext << "27.03.2005 00:00:00"_ba << day(u"2005-03-27"_s);
        QTest::newRow("a time that comes twice")
            << "30102005023000"_ba << QByteArrayList{} << "30.10.2005 02:30:00"_ba
            << instant(u"2005-10-30T02:30:00"_s);
    }

    void theFilterIsWhatTheFieldMakesOfIt()
    {
        QFETCH(QByteArray, oTyped);
        QFETCH(QByteArrayList, lKeys);
        CDateFilter oFilter(oServer, oScreen);
        oFilter.fillIn(oTyped, lKeys);
        QTEST(oFilter.field(), "oShown");
        QTEST(oFilter.conditions().last(), "sCondition");
    }

private:
    static constexpr int WheelUp = 4;
    static constexpr int WheelDown = 5;

    static QString day(const QString& sDay) { return CDateFilter::day(sDay); }
    static QString instant(const QString& sInstant) { return CDateFilter::instant(sInstant); }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleDateField)
#include "tst_module_datefield.moc"
