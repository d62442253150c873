// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "data/CStoredRows.h"

#include "CStoreTest.h"
#include "tests/support/testmain.h"

#include <QSqlQuery>

using namespace Qt::StringLiterals;

/// The database driver's own reading of a result is the judge.
class TestStoredRows : public CStoreTest
{
    Q_OBJECT

private Q_SLOTS:
    void aValueIsThatOfTheDriver_data()
    {
        QTest::addColumn<QString>("sType");
        QTest::addColumn<QStringList>("slValues");
        add("BOOL", {u"0"_s, u"1"_s});
        add("TINYINT", {u"-128"_s, u"127"_s});
        add("TINYINT UNSIGNED", {u"255"_s});
        add("SMALLINT", {u"-32768"_s});
        add("SMALLINT UNSIGNED", {u"65535"_s});
        add("MEDIUMINT", {u"-8388608"_s});
        add("INT", {u"-2147483648"_s, u"2147483647"_s});
        add("INT UNSIGNED", {u"4294967295"_s});
        add("INT(8) ZEROFILL", {u"7"_s});
        add("BIGINT", {u"-9223372036854775808"_s});
        add("BIGINT UNSIGNED", {u"18446744073709551615"_s});
        add("DECIMAL(10,3)", {u"12.5"_s, u"-0.001"_s});
        add("DECIMAL(65,30)", {u"12345678901234567890123456789012345.123456789012345678901234567891"_s});
        add("FLOAT", {u"0.1"_s, u"-1e30"_s});
        add("DOUBLE", {u"0.1"_s, u"1e300"_s});
        add("BIT(1)", {u"b'1'"_s, u"b'0'"_s});
        add("BIT(20)", {u"b'10101010101010101010'"_s});
        add("DATE", {u"'2006-05-10'"_s, u"'0000-00-00'"_s, u"'9999-12-31'"_s});
        add("TIME", {u"'12:30:15'"_s, u"'838:59:59'"_s, u"'-838:59:59'"_s});
        add("TIME(6)", {u"'12:30:15.000001'"_s});
        add("DATETIME", {u"'2006-05-10 11:12:13'"_s, u"'0000-00-00'"_s, u"'1000-01-01'"_s});
        add("DATETIME(6)", {u"'2006-05-10 11:12:13.999999'"_s});
        add("TIMESTAMP", {u"'2006-05-10 11:12:13'"_s, u"'2005-03-27 03:30:00'"_s});
        add("YEAR", {u"1901"_s, u"0"_s});
        add("CHAR(10)", {u"''"_s, u"'Köln'"_s});
        add("VARCHAR(10)", {u"'a\\0b'"_s, u"'😀'"_s});
        add("VARCHAR(10) CHARACTER SET latin1", {u"'Köln'"_s});
        add("TEXT", {u"'line\nline'"_s});
        add("LONGTEXT", {u"REPEAT('x', 100000)"_s});
        add("BINARY(4)", {u"X'00FF'"_s});
        add("VARBINARY(4)", {u"X'C3'"_s});
        add("BLOB", {u"X'C3A400FF'"_s});
        add("ENUM('a','b')", {u"'b'"_s});
        add("SET('a','b')", {u"'a,b'"_s});
        add("JSON", {u"'{\"a\": 1}'"_s});
        add("UUID", {u"'123e4567-e89b-12d3-a456-426655440000'"_s});
        add("INET6", {u"'::1'"_s});
        add("POINT", {u"POINT(1,2)"_s});
    }

    void aValueIsThatOfTheDriver()
    {
        QFETCH(QString, sType);
        QFETCH(QStringList, slValues);
        QString sTable =
            u"CREATE OR REPLACE TABLE news.typed (id INT, cell %1 NULL); SET sql_mode=''"_s.arg(sType);
        for (int i = 0; i < slValues.size(); i++)
            sTable += u"; INSERT INTO news.typed VALUES (%1, %2)"_s.arg(i).arg(slValues[i]);
        oServer.sql(sTable);
        const QString sStatement = u"SELECT id, cell FROM typed ORDER BY id"_s;
        QSqlQuery oJudge(oDatabase);
        oJudge.setNumericalPrecisionPolicy(QSql::HighPrecision);
        QVERIFY(oJudge.exec(sStatement));
        const CStoredRows oRows = run(sStatement);
        QCOMPARE(oRows.numRows(), slValues.size());
        for (int iRow = 0; iRow < oRows.numRows(); iRow++) {
            QVERIFY(oJudge.next());
            QCOMPARE(oRows.value(iRow, 1), oJudge.value(1));
            QCOMPARE(oRows.value(iRow, 1).metaType(), oJudge.value(1).metaType());
            QCOMPARE(oRows.value(iRow, 1).isNull(), oJudge.value(1).isNull());
            QCOMPARE(oRows.record(iRow), oJudge.record());
        }
    }

    void rowsAreFoundInAnyOrder()
    {
        const CStoredRows oRows = run(u"SELECT id, title FROM document ORDER BY id"_s);
        for (const int iRow : {6, 0, 3, 3, 2, 6, 5, 4})
            QCOMPARE(oRows.value(iRow, 0).toInt(), iRow + 1);
    }

    void theBytesAreThoseOfTheServer()
    {
        const CStoredRows oRows = run(u"SELECT 'a\\0b' AS a, NULL AS b, '' AS c, 'ä' AS d"_s);
        using namespace std::string_view_literals;
        QVERIFY(oRows.bytes(0, 0) == "a\0b"sv);
        QVERIFY(!oRows.bytes(0, 1));
        QVERIFY(oRows.bytes(0, 2) == ""sv);
        QVERIFY(oRows.bytes(0, 3) == "\xC3\xA4"sv);
    }

    void theBytesStayWhileOtherRowsAreRead()
    {
        const CStoredRows oRows = run(u"SELECT title FROM document ORDER BY id"_s);
        const auto oFirst = oRows.bytes(0, 0);
        QCOMPARE(oRows.value(6, 0).metaType(), QMetaType::fromType<QString>());
        QVERIFY(oFirst == "Schnee im März");
    }

    void thereIsNoRecordBesideTheRows()
    {
        const CStoredRows oRows = run(u"SELECT id, title FROM document"_s);
        for (const int iRow : {-1, 7}) {
            QCOMPARE(oRows.record(iRow).count(), 2);
            QVERIFY(oRows.record(iRow).isNull(0));
        }
    }

    void withoutAResultThereIsNothing_data()
    {
        QTest::addColumn<QString>("sStatement");
        QTest::newRow("wrong statement") << u"SELECT nothing"_s;
        QTest::newRow("no result") << u"SET @a=1"_s;
        QTest::newRow("never run") << QString();
    }

    void withoutAResultThereIsNothing()
    {
        QFETCH(QString, sStatement);
        const CStoredRows oRows = run(sStatement);
        QCOMPARE(oRows.numRows(), 0);
        QCOMPARE(oRows.fields().count(), 0);
        QVERIFY(oRows.record(0).isEmpty());
    }

    void anEmptyResultHasFields()
    {
        const CStoredRows oRows = run(u"SELECT id, title FROM document WHERE id=0"_s);
        QCOMPARE(oRows.numRows(), 0);
        QCOMPARE(oRows.fields().fieldName(1), u"title"_s);
    }

private:
    static void add(const char* pcType, const QStringList& slValues)
    {
        QTest::newRow(pcType) << QString::fromLatin1(pcType) << (slValues + QStringList{u"NULL"_s});
    }

    CStoredRows run(const QString& sStatement)
    {
        QSqlQuery oQuery(oDatabase);
        if (!sStatement.isEmpty())
            oQuery.exec(sStatement);
        return CStoredRows(std::move(oQuery));
    }
};

QTUTILS_WIDGET_TEST_MAIN(TestStoredRows, CPrivateDisplay::Manager::None)
#include "tst_storedrows.moc"
