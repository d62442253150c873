// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTable.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

using namespace Qt::StringLiterals;

class TestTableFields : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void aFieldOfTheServerHasTwoTexts_data()
    {
        QTest::addColumn<QString>("sType");
        QTest::addColumn<QString>("sValue");
        QTest::addColumn<QString>("sShown");
        QTest::addColumn<QString>("sValueText");
        addRow("DATETIME", u"'2005-03-01 13:05:07'"_s, u"01.03.05 13:05"_s, u"2005-03-01T13:05:07"_s);
        addRow("DATETIME(3)", u"'2005-03-01 13:05:07.123'"_s, u"01.03.05 13:05"_s, u"2005-03-01T13:05:07"_s);
        addRow("TIMESTAMP NULL", u"'2005-03-01 13:05:07'"_s, u"01.03.05 13:05"_s, u"2005-03-01T13:05:07"_s);
        addRow("DATETIME", u"'2005-03-27 02:30:00'"_s, u"27.03.05 02:30"_s, u"2005-03-27T02:30:00"_s);
        addRow("DATETIME", u"'0000-00-00'"_s, u"NULL"_s, u""_s);
        addRow("DATETIME", u"NULL"_s, u"NULL"_s, u""_s);
        addRow("DATE", u"'2005-03-01'"_s, u"01.03.05"_s, u"2005-03-01"_s);
        addRow("DATE", u"NULL"_s, u"NULL"_s, u""_s);
        addRow("TIME", u"'12:30:05'"_s, u"12:30:05"_s, u"12:30:05"_s);
        addRow("DECIMAL(8,3)", u"12.5"_s, u"12.500"_s, u"12.500"_s);
        addRow("DECIMAL(8,0)", u"7"_s, u"7"_s, u"7"_s);
        addRow("DECIMAL(30,20)", u"0.12345678901234567890"_s, u"0.12345678901234567890"_s,
            u"0.12345678901234567890"_s);
        addRow("DECIMAL(8,3)", u"NULL"_s, u"NULL"_s, u""_s);
        addRow("DOUBLE", u"0.1"_s, u"0.1"_s, u"0.1"_s);
        addRow("DOUBLE", u"1/3e0"_s, u"0.333333333333333"_s, u"0.333333333333333"_s);
        addRow("DOUBLE", u"0.1e0+0.2e0"_s, u"0.3"_s, u"0.3"_s);
        addRow("DOUBLE", u"12.5"_s, u"12.5"_s, u"12.5"_s);
        addRow("DOUBLE", u"NULL"_s, u"NULL"_s, u""_s);
        addRow("FLOAT", u"0.5"_s, u"0.5"_s, u"0.5"_s);
        addRow("INT", u"-7"_s, u"-7"_s, u"-7"_s);
        addRow("INT", u"NULL"_s, u"NULL"_s, u"0"_s);
        addRow("BIGINT UNSIGNED", u"18446744073709551615"_s, u"18446744073709551615"_s,
            u"18446744073709551615"_s);
        addRow("BOOL", u"TRUE"_s, u"1"_s, u"1"_s);
        addRow("TINYINT", u"-5"_s, u"-5"_s, u"-5"_s);
        addRow("BIT(1)", u"b'1'"_s, u"\u0001"_s, u"\u0001"_s);
        addRow("VARCHAR(20)", u"'Zürich'"_s, u"Zürich"_s, u"Zürich"_s);
        addRow("VARCHAR(20)", u"''"_s, u""_s, u""_s);
        addRow("VARCHAR(20)", u"NULL"_s, u"NULL"_s, u""_s);
        addRow("TEXT", u"'снег 雪 😀'"_s, u"снег 雪 😀"_s, u"снег 雪 😀"_s);
        addRow("BLOB", u"'bytes'"_s, u"bytes"_s, u"bytes"_s);
        addRow("ENUM('a','b')", u"'b'"_s, u"b"_s, u"b"_s);
    }

    void aFieldOfTheServerHasTwoTexts()
    {
        QFETCH(QString, sType);
        QFETCH(QString, sValue);
        oServer.sql(u"SET sql_mode=''; SET time_zone='SYSTEM';"
                    "CREATE OR REPLACE TABLE news.typed (id INT, field %1) CHARSET utf8mb4;"
                    "INSERT INTO news.typed VALUES (1, %2)"_s.arg(sType, sValue));
        CTestTable oTable;
        oTable.setTables(u"typed"_s);
        oTable->changeSort(2);
        oTable.toggleColumns({u"field"_s});
        QCOMPARE(oTable->selection(0), 1);
        QTEST(oTable.picture().value(1), "sShown");
        QTEST(oTable->text(0, 0), "sValueText");
    }

    void rowsOfOneColumnKeepTheirOwnDigits()
    {
        oServer.sql(u"CREATE OR REPLACE TABLE news.digits (id INT, d DECIMAL(8,3), f DOUBLE);"
                    "INSERT INTO news.digits VALUES (6, 1, 1), (7, NULL, 0.25)"_s);
        CTestTable oTable;
        oTable.setTables(u"digits"_s);
        oTable->changeSort(2);
        oTable.toggleColumns({u"d"_s, u"f"_s});
        oTable->selection(2);
        QCOMPARE(oTable.picture(), (QStringList{u"d | f"_s, u"1.000 | 1"_s, u"NULL | 0.25"_s}));
    }

    void theDistanceIsAFloatingPointNumber()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable.toggleColumns({u"dist"_s, u"date"_s, u"title"_s});
        oTable->selection(2);
        QCOMPARE(oTable.picture(), (QStringList{u"dist"_s, u"0.1"_s, u"0.2"_s}));
    }

private:
    static void addRow(
        const char* pcType, const QString& sValue, const QString& sShown, const QString& sValueText)
    {
        QTest::addRow("%s %s", pcType, qPrintable(sValue))
            << QString::fromLatin1(pcType) << sValue << sShown << sValueText;
    }

    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestTableFields, CPrivateDisplay::Manager::None)
#include "tst_table_fields.moc"
