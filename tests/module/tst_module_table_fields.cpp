// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

using namespace Qt::StringLiterals;

/// What cells show of fields of all types. The title is the field; the only document has the date
/// 2005-03-01 13:05.
class TestModuleTableFields : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.sql(u"CREATE DATABASE som; CREATE DATABASE news; "
                    "CREATE TABLE som.news_train AS SELECT 1 node, 0.5 dist, 1 item"_s);
    }

    void aFieldIsShownByItsType_data()
    {
        QTest::addColumn<QString>("sType");
        QTest::addColumn<QString>("sValue");
        QTest::addColumn<QString>("sShown");
        add("DATETIME", u"'2005-12-31 23:59:59'"_s, u"31.12.05 23:59"_s);
        add("DATETIME(6)", u"'2005-03-01 13:05:59.999000'"_s, u"01.03.05 13:05"_s);
        add("DATETIME", u"'1899-01-02 03:04:05'"_s, u"02.01.99 03:04"_s);
        add("DATETIME", u"'2005-03-27 02:30:00'"_s, u"27.03.05 02:30"_s); // summer time skips it
        add("DATETIME", u"'0000-00-00'"_s, u"NULL"_s);
        add("DATETIME", u"NULL"_s, u"NULL"_s);
        add("TIMESTAMP NULL", u"'2005-07-01 12:00:00'"_s, u"01.07.05 12:00"_s);
        add("TIMESTAMP NULL", u"NULL"_s, u"NULL"_s);
        add("DATE", u"'2005-03-01'"_s, u"01.03.05"_s);
        add("DATE", u"'0000-00-00'"_s, u"NULL"_s);
        add("DATE", u"NULL"_s, u"NULL"_s);
        add("TIME", u"'12:30:05'"_s, u"12:30:05"_s);
        add("TIME", u"NULL"_s, u"NULL"_s);
        add("YEAR", u"2005"_s, u"2005"_s);
        add("DOUBLE", u"0.1"_s, u"0.1"_s);
        add("DOUBLE", u"1/3e0"_s, u"0.333333333333333"_s);
        add("DOUBLE", u"0.1e0+0.2e0"_s, u"0.3"_s);
        add("DOUBLE", u"100000"_s, u"100000"_s);
        add("DOUBLE", u"NULL"_s, u"NULL"_s);
        add("FLOAT", u"0.5"_s, u"0.5"_s);
        add("DECIMAL(8,3)", u"12.5"_s, u"12.500"_s);
        add("DECIMAL(8,3)", u"-0.1"_s, u"-0.100"_s);
        add("DECIMAL(8,3)", u"NULL"_s, u"NULL"_s);
        add("DECIMAL(30,20)", u"0.12345678901234567890"_s, u"0.12345678901234567890"_s);
        add("INT", u"-7"_s, u"-7"_s);
        add("INT", u"NULL"_s, u"NULL"_s);
        add("BIGINT UNSIGNED", u"18446744073709551615"_s, u"18446744073709551615"_s);
        add("BOOL", u"TRUE"_s, u"1"_s);
        add("VARCHAR(99)", u"''"_s, u""_s);
        add("VARCHAR(99)", u"NULL"_s, u"NULL"_s);
        add("VARCHAR(99)", u"'NULL'"_s, u"NULL"_s);
        add("VARCHAR(99)", u"'Äpfel & Öl: <b>süß</b>'"_s, u"Äpfel & Öl: <b>süß</b>"_s);
        add("VARCHAR(99)", u"' blanks  stay '"_s, u" blanks  stay "_s);
        add("VARCHAR(99) CHARSET latin1", u"'Zürich'"_s, u"Zürich"_s);
        add("TEXT", u"'снег 雪 😀'"_s, u"снег 雪 😀"_s);
        add("TEXT", u"REPEAT('lang ', 200)"_s, u"lang "_s.repeated(200));
        add("BLOB", u"'bytes'"_s, u"bytes"_s);
        add("ENUM('a','b')", u"'b'"_s, u"b"_s);
        add("SET('a','b')", u"'a,b'"_s, u"a,b"_s);
    }

    void aFieldIsShownByItsType()
    {
        QFETCH(QString, sType);
        QFETCH(QString, sValue);
        QFETCH(QString, sShown);
        setDocument(sType, sValue);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        start(oHost);
        QCOMPARE(oAnalyst.table(), QByteArrayList({"date | title", "01.03.05 13:05 | " + sShown.toUtf8()}));
    }

    void lineBreaksBelongToTheText()
    {
        setDocument(u"TEXT"_s, u"'oben\\nunten'"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        start(oHost);
        QCOMPARE(oAnalyst.table(), QByteArrayList({"date | title", "01.03.05 13:05 | oben", "unten"}));
        QCOMPARE(oHost.numRows(), 1);
    }

    void aDateWithoutATimeIsShownSo()
    {
        setDocument(u"TEXT"_s, u"'x'"_s);
        oServer.sql(u"ALTER TABLE news.document MODIFY date DATE"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        start(oHost);
        QCOMPARE(oAnalyst.table(), QByteArrayList({"date | title", "01.03.05 | x"}));
    }

    void datesAreGermanWhateverTheHostsLanguageIs_data()
    {
        QTest::addColumn<QByteArray>("oVariable");
        QTest::addColumn<QByteArray>("oLanguage");
        for (const char* pcVariable : {"LC_ALL", "LC_TIME", "LANGUAGE", "LANG"})
            for (const char* pcLanguage : {"C", "C.UTF-8", "en_US.UTF-8"})
                QTest::addRow("%s=%s", pcVariable, pcLanguage)
                    << QByteArray(pcVariable) << QByteArray(pcLanguage);
    }

    void datesAreGermanWhateverTheHostsLanguageIs()
    {
        QFETCH(QByteArray, oVariable);
        QFETCH(QByteArray, oLanguage);
        setDocument(u"DOUBLE"_s, u"1234567.25"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.command({"env", oVariable, oLanguage});
        start(oHost);
        QCOMPARE(oAnalyst.table(), QByteArrayList({"date | title", "01.03.05 13:05 | 1234567.25"}));
    }

private:
    static void add(const char* pcType, const QString& sValue, const QString& sShown)
    {
        QTest::addRow("%s %s", pcType, qPrintable(sValue)) << QString::fromLatin1(pcType) << sValue << sShown;
    }

    void setDocument(const QString& sType, const QString& sValue)
    {
        oServer.sql(u"SET sql_mode=''; CREATE OR REPLACE TABLE news.document "
                    "(id INT, date DATETIME, title %1) CHARSET utf8mb4; "
                    "INSERT INTO news.document VALUES (1, '2005-03-01 13:05:07', %2)"_s.arg(sType, sValue));
    }

    static void start(CPlainHost& oHost)
    {
        oHost.load();
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.construct();
        oHost.call("select", {"i:1"});
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleTableFields)
#include "tst_module_table_fields.moc"
