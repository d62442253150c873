// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "table/fieldtext.h"

#include "tests/support/CStrictTest.h"

#include <QDateTime>
#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;

class TestFieldText : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("TZ", "Europe/Berlin"); }

    void aValueHasTwoTexts_data()
    {
        const QDate oDay(2005, 3, 1);
        QTest::addColumn<QVariant>("oValue");
        QTest::addColumn<QString>("sPlain");
        QTest::addColumn<QString>("sShown");
        addRow(
            "date and time", QDateTime(oDay, QTime(13, 5, 7)), u"2005-03-01T13:05:07"_s, u"01.03.05 13:05"_s);
        addRow("fraction of a second", QDateTime(oDay, QTime(13, 5, 7, 999)), u"2005-03-01T13:05:07"_s,
            u"01.03.05 13:05"_s);
        addRow("midnight", QDateTime(oDay, QTime(0, 0)), u"2005-03-01T00:00:00"_s, u"01.03.05 00:00"_s);
        addRow("skipped by summer time", QDateTime(QDate(2005, 3, 27), QTime(2, 30)),
            u"2005-03-27T02:30:00"_s, u"27.03.05 02:30"_s);
        addRow("zero date and time", QDateTime(), u""_s, u"NULL"_s);
        addRow("date", oDay, u"2005-03-01"_s, u"01.03.05"_s);
        addRow("zero date", QDate(), u""_s, u"NULL"_s);
        addRow("text", u"Zürich"_s, u"Zürich"_s, u"Zürich"_s);
        addRow("empty text", u""_s, u""_s, u""_s);
        addRow("bytes", "\xC3\xA4"_ba, u"ä"_s, u"ä"_s);
        addRow("fixed point", u"12.500"_s, u"12.500"_s, u"12.500"_s);
        addRow("floating point", 0.1, u"0.1"_s, u"0.1"_s);
        addRow("15 digits", 1.0 / 3, u"0.333333333333333"_s, u"0.333333333333333"_s);
        addRow("noise beyond 15 digits", 0.1 + 0.2, u"0.3"_s, u"0.3"_s);
        addRow("great number", 1e20, u"1e+20"_s, u"1e+20"_s);
        addRow("whole number", -7, u"-7"_s, u"-7"_s);
        addRow("greatest number", std::numeric_limits<qulonglong>::max(), u"18446744073709551615"_s,
            u"18446744073709551615"_s);
        addRow("NULL text", QVariant(QMetaType(QMetaType::QString)), u""_s, u"NULL"_s);
        addRow("NULL number", QVariant(QMetaType(QMetaType::Int)), u"0"_s, u"NULL"_s);
        addRow("NULL floating point", QVariant(QMetaType(QMetaType::Double)), u""_s, u"NULL"_s);
        addRow("NULL date and time", QVariant(QMetaType(QMetaType::QDateTime)), u""_s, u"NULL"_s);
        addRow("NULL date", QVariant(QMetaType(QMetaType::QDate)), u""_s, u"NULL"_s);
        addRow("no value", QVariant(), u""_s, u"NULL"_s);
    }

    void aValueHasTwoTexts()
    {
        QFETCH(QVariant, oValue);
        QTEST(fieldtext::plain(oValue), "sPlain");
        QTEST(fieldtext::shown(oValue, QLocale(u"de_DE"_s)), "sShown");
    }

    void theLocaleMakesTheShortForm()
    {
        const QDateTime oDateTime(QDate(2005, 3, 1), QTime(13, 5));
        QCOMPARE(fieldtext::shown(oDateTime, QLocale(u"en_GB"_s)), u"01/03/2005 13:05"_s);
    }

private:
    static void addRow(
        const char* pcName, const QVariant& oValue, const QString& sPlain, const QString& sShown)
    {
        QTest::newRow(pcName) << oValue << sPlain << sShown;
    }
};

QTEST_GUILESS_MAIN(TestFieldText)
#include "tst_fieldtext.moc"
