// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "tests/support/spelling.h"

using namespace Qt::StringLiterals;
using spelling::spelled;

/// What is shown of fields of unusual types and values. The only document has the field as its title and as
/// its text; its date is 2005-03-01 13:05.
class TestModuleBadInputCells : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.sql(u"CREATE DATABASE som; CREATE DATABASE news; "
                    "CREATE TABLE som.news_train AS SELECT 1 node, 0.5 dist, 1 item"_s);
    }

    void aFieldIsShownInCellAndPanel_data()
    {
        QTest::addColumn<QString>("sType");
        QTest::addColumn<QString>("sValue");
        QTest::addColumn<QString>("sShown");
        QTest::addColumn<QString>("sText");
        for (const char* pcType :
            {"BIT(8)", "BLOB", "JSON", "TIME", "ENUM('a')", "SET('a')", "GEOMETRY", "UUID", "INET6"})
            add(pcType, u"NULL"_s, u"NULL"_s, u""_s);
        for (const char* pcType : {"DECIMAL(65,30)", "YEAR", "BIGINT UNSIGNED"})
            add(pcType, u"NULL"_s, u"NULL"_s, u"0"_s);
        for (const char* pcType : {"VARCHAR(9)", "LONGTEXT", "BLOB", "VARBINARY(9)", "SET('a')"})
            add(pcType, u"''"_s, u""_s);
        add("ENUM('a')", u"'b'"_s, u""_s); // what is none of them is stored so
        add("SET('a','b')", u"'b,a,b'"_s, u"a,b"_s);
        add("BIT(1)", u"b'0'"_s, QString(QChar(0)));
        add("BIT(8)", u"b'01000001'"_s, u"A"_s);
        add("BIT(8)", u"b'11111111'"_s, u"\ufffd"_s);
        add("BIT(64)", u"X'4142434445464748'"_s, u"ABCDEFGH"_s);
        add("JSON", u"'{\"a\": [1, null, \"\\\\u00e4\"]}'"_s, u"{\"a\": [1, null, \"\\u00e4\"]}"_s);
        addNumbers();
        add("TIME", u"'838:59:59'"_s, u"838:59:59"_s);
        add("TIME", u"'-838:59:59'"_s, u"-838:59:59"_s);
        add("TIME", u"'-00:00:01'"_s, u"-00:00:01"_s);
        add("TIME(6)", u"'24:00:00.000001'"_s, u"24:00:00.000001"_s);
        add("YEAR", u"0"_s, u"0"_s);
        add("YEAR", u"1901"_s, u"1901"_s);
        add("YEAR", u"2155"_s, u"2155"_s);
        add("GEOMETRY", u"POINT(1, 2)"_s,
            QString(4, QChar(0)) + QChar(1) + QChar(1) + QString(9, QChar(0)) + u"\ufffd?"_s
                + QString(7, QChar(0)) + u'@');
        add("UUID", u"'123E4567-e89b-12d3-a456-426655440000'"_s, u"123e4567-e89b-12d3-a456-426655440000"_s);
        add("INET6", u"'2001:DB8::1'"_s, u"2001:db8::1"_s);
        add("INET6", u"'::ffff:192.0.2.1'"_s, u"::ffff:192.0.2.1"_s);
        for (const char* pcZeros : {"'0000-00-00'", "'2005-00-00'", "'0000-01-01 01:02:03'"})
            add("DATETIME", QString::fromLatin1(pcZeros), u"NULL"_s, u""_s);
        add("DATE", u"'0000-00-00'"_s, u"NULL"_s, u""_s);
        add("DATE", u"'0001-01-01'"_s, u"01.01.01"_s, u"0001-01-01"_s);
        add("DATE", u"'9999-12-31'"_s, u"31.12.99"_s, u"9999-12-31"_s);
        add("TIMESTAMP NULL", u"'0000-00-00'"_s, u"NULL"_s, u""_s);
    }

    void aFieldIsShownInCellAndPanel()
    {
        // given
        QFETCH(QString, sType);
        QFETCH(QString, sValue);
        QFETCH(QString, sShown);
        QFETCH(QString, sText);
        CPlainHost oHost;
        choose(oHost, sType, sValue);
        QCOMPARE(oHost.ask({"spell", "table"}).first(), table(sShown));
        QCOMPARE(oHost.numRows(), 1);
        // when
        oHost.call("markRow", {"k:2005-03-01 00:00:00", "i:0"});
        // then
        QCOMPARE(oHost.ask({"spell", "text", "texteditor"}).first(), spelled(sText));
    }

    void aNumberOrDateIsShownInItsCell_data()
    {
        QTest::addColumn<QString>("sType");
        QTest::addColumn<QString>("sValue");
        QTest::addColumn<QString>("sShown");
        const auto add = [](const char* pcType, const QString& sValue, const QString& sShown) {
            QTest::addRow("%s %s", pcType, qPrintable(sValue))
                << QString::fromLatin1(pcType) << sValue << sShown;
        };
        add("DOUBLE", u"1.7976931348623157e308"_s, u"1.79769313486232e+308"_s);
        add("DOUBLE", u"-1.7976931348623157e308"_s, u"-1.79769313486232e+308"_s);
        add("DOUBLE", u"5e-324"_s, u"4.94065645841247e-324"_s);
        add("DOUBLE", u"123456789012345678"_s, u"1.23456789012346e+17"_s);
        add("DOUBLE(65,30)", u"1"_s, u"1.000000000000000000000000000000"_s);
        add("FLOAT", u"16777217"_s, u"16777200"_s);
        add("FLOAT", u"3.4e38"_s, u"3.4e+38"_s);
        add("FLOAT", u"1e-45"_s, u"1.4013e-45"_s);
        add("DATETIME", u"'0001-01-01 01:02:03'"_s, u"01.01.01 01:02"_s);
        add("DATETIME", u"'1000-01-01 00:00:00'"_s, u"01.01.00 00:00"_s);
        add("DATETIME", u"'9999-12-31 23:59:59'"_s, u"31.12.99 23:59"_s);
    }

    void aNumberOrDateIsShownInItsCell()
    {
        QFETCH(QString, sType);
        QFETCH(QString, sValue);
        QFETCH(QString, sShown);
        CPlainHost oHost;
        choose(oHost, sType, sValue);
        QCOMPARE(oHost.ask({"spell", "table"}).first(), table(sShown));
    }

private:
    static void addNumbers()
    {
        const QString sNines(65, u'9');
        add("DECIMAL(65,0)", sNines, sNines);
        add("DECIMAL(65,0)", u'-' + sNines, u'-' + sNines);
        const QString sLong = u'-' + QString(27, u'1') + u'.' + QString(38, u'2');
        add("DECIMAL(65,38)", sLong, sLong);
        add("DECIMAL(38,38)", u"1e-38"_s, u"0."_s + QString(37, u'0') + u'1');
        add("DECIMAL(65,30)", u"0"_s, u"0."_s + QString(30, u'0'));
        add("BIGINT", u"-9223372036854775808"_s, u"-9223372036854775808"_s);
        add("BIGINT UNSIGNED", u"18446744073709551615"_s, u"18446744073709551615"_s);
        add("DOUBLE", u"-0.5"_s, u"-0.5"_s);
    }

    static void add(const char* pcType, const QString& sValue, const QString& sShown)
    {
        add(pcType, sValue, sShown, sShown);
    }

    static void add(const char* pcType, const QString& sValue, const QString& sShown, const QString& sText)
    {
        QTest::addRow("%s %s", pcType, qPrintable(sValue))
            << QString::fromLatin1(pcType) << sValue << sShown << sText;
    }

    static QByteArray table(const QString& sShown)
    {
        return spelled(u"date | title\n01.03.05 13:05 | "_s + sShown);
    }

    void choose(CPlainHost& oHost, const QString& sType, const QString& sValue) const
    {
        oServer.sql(
            u"SET sql_mode=''; CREATE OR REPLACE TABLE news.document "
            "(id INT, date DATETIME, title %1, text %1) CHARSET utf8mb4; "
            "INSERT INTO news.document VALUES (1, '2005-03-01 13:05:07', %2, %2)"_s.arg(sType, sValue));
        oHost.load();
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.construct();
        oHost.call("select", {"i:1"});
    }

    CPrivateServer oServer;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleBadInputCells)
#include "tst_module_badinput_cells.moc"
