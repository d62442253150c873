// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

using namespace Qt::StringLiterals;

/// The table's columns: which ones, in which order, and how wide.
class TestModuleColumns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void allColumnsStandInTheOrderOfTheResult()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(2);
        for (const char* pcColumn : {"rate", "node", "URL", "text", "id", "author", "dist"})
            oAnalyst.choose("Show", pcColumn);
        QCOMPARE(oAnalyst.table(),
            QByteArrayList({"node | dist | id | date | title | URL | text | author | rate",
                "2 | 0.1 | 6 | 10.05.06 12:00 | Sommer | http://news.example/6 | Es ist warm. | Anna | 3.333",
                "2 | 0.2 | 7 | 11.05.06 12:00 | Herbst | http://news.example/7 | Es ist kühl. | Cora | "
                "4.000"}));
    }

    void shownColumnsStandSideBySide()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(2);
        const QRect oDate = oAnalyst.tableHeader("date");
        QCOMPARE(oAnalyst.tableHeader("title").left(), oDate.right() + 1);
        QVERIFY(oAnalyst.tableHeader("author").isEmpty());
        // when
        oAnalyst.choose("Show", "date");
        // then
        QVERIFY(oAnalyst.tableHeader("date").isEmpty());
        QCOMPARE(oAnalyst.tableHeader("title").left(), oDate.left());
        // when
        oAnalyst.choose("Show", "date");
        // then
        QCOMPARE(oAnalyst.tableHeader("date"), oDate);
    }

    void theOrderIsThatOfTheDocumentsTable()
    {
        setDocuments(u"id INT, title TEXT, date DATETIME"_s, u"(1, 'Anfang', '2005-03-01')"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        start(oAnalyst);
        QCOMPARE(oAnalyst.table(), QByteArrayList({"title | date", "Anfang | 01.03.05 00:00"}));
    }

    void titleAndDateAreFoundInTheirLetterCaseOnly()
    {
        // given
        setDocuments(u"id INT, Title TEXT, Date DATETIME"_s, u"(1, 'Anfang', '2005-03-01')"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        start(oAnalyst);
        // then
        QCOMPARE(oAnalyst.table().first(), "");
        QCOMPARE(oHost.numRows(), 1);
        // when
        oAnalyst.choose("Show", "Title");
        // then
        QCOMPARE(oAnalyst.table(), QByteArrayList({"Title", "Anfang"}));
    }

    void aHeaderIsTheNameWhateverItIs()
    {
        setDocuments(u"id INT, date DATETIME, `Größe & <b>Gewicht</b>` INT"_s, u"(1, '2005-03-01', 7)"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        start(oAnalyst);
        oAnalyst.choose("Show", "Größe  <b>Gewicht</b>");
        QCOMPARE(oAnalyst.table(), QByteArrayList({"date | Größe & <b>Gewicht</b>", "01.03.05 00:00 | 7"}));
    }

    void aColumnIsTenPixelsWiderThanItsWidestText()
    {
        // given twenty letters and forty
        setDocuments(u"id INT, date DATETIME, title TEXT"_s,
            u"(1, '2005-03-01', REPEAT('W', 20)), (2, '2005-03-02', REPEAT('W', 40))"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        start(oAnalyst, "1");
        const int iTwenty = width(oAnalyst, "title");
        oHost.call("select", {"i:2"});
        const int iForty = width(oAnalyst, "title");
        // then
        QCOMPARE(iTwenty, iForty - iTwenty + 10);
        // and is measured anew each time
        oHost.call("select", {"i:1"});
        QCOMPARE(width(oAnalyst, "title"), iTwenty);
    }

    void theWidestTextMayBeThatOfTheLastRow()
    {
        // given
        setDocuments(u"id INT, date DATETIME, title TEXT"_s,
            u"(1, '2005-03-01', REPEAT('W', 30)), (2, '2005-03-02', REPEAT('W', 30)), (2, '2005-03-01', 'i')"_s);
        oServer.sql(u"INSERT INTO texts.document SELECT 2, '2005-03-01', 'i' FROM news.seq_1_to_1500"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        start(oAnalyst, "1");
        const int iAlone = width(oAnalyst, "title");
        oHost.call("select", {"i:2"});
        // then
        QCOMPARE(oHost.numRows(), 1502);
        QCOMPARE(width(oAnalyst, "title"), iAlone);
    }

    void theHeaderAndAnotherLetterAreTheLeast()
    {
        // given
        setDocuments(u"id INT, date DATETIME, title TEXT"_s,
            u"(1, '2005-03-01', 'titleW'), (2, '2005-03-01', 'i'), (3, '2005-03-01', 'title')"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        start(oAnalyst, "1");
        const int iText = width(oAnalyst, "title");
        // then
        for (const char* pcNode : {"i:2", "i:3", "i:4"}) {
            oHost.call("select", {pcNode});
            QCOMPARE(width(oAnalyst, "title"), iText - 10);
        }
    }

    void whatACellShowsIsMeasuredNotItsValue()
    {
        setDocuments(
            u"id INT, date DATETIME, title TEXT"_s, u"(1, '2005-03-01 13:00:00', '01.03.05 13:00')"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        start(oAnalyst, "1");
        QCOMPARE(width(oAnalyst, "date"), width(oAnalyst, "title"));
    }

    void rowsAreTwentyPixelsHigh()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        QCOMPARE(oAnalyst.cell(0, "date").top(), oAnalyst.tableHeader("date").bottom() + 1);
        for (int iRow = 1; iRow < 5; iRow++)
            QCOMPARE(oAnalyst.cell(iRow, "date").top() - oAnalyst.cell(iRow - 1, "date").top(), 20);
    }

    void aSelectionBeginsAtTheLeft()
    {
        // given
        setDocuments(u"id INT, date DATETIME, title TEXT"_s, u"(1, '2005-03-01', REPEAT('W', 300))"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        start(oAnalyst, "1");
        const QRect oDate = oAnalyst.tableHeader("date");
        oAnalyst.clickCell(0, "date");
        oAnalyst.press({"Right"});
        QVERIFY(oAnalyst.tableHeader("date") != oDate);
        // when
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oAnalyst.tableHeader("date"), oDate);
    }

private:
    /// Makes the table of documents in the database "texts". A document's number is its node's, too.
    void setDocuments(const QString& sColumns, const QString& sRows)
    {
        oServer.sql(u"CREATE DATABASE IF NOT EXISTS texts; "
                    "CREATE OR REPLACE TABLE texts.document (%1) CHARSET utf8mb4; "
                    "INSERT INTO texts.document VALUES %2; "
                    "CREATE OR REPLACE VIEW som.texts AS SELECT seq node, 0.5 dist, seq item "
                    "FROM som.seq_1_to_3"_s.arg(sColumns, sRows));
    }

    static void start(CAnalyst& oAnalyst, const QByteArray& oNode = "1")
    {
        oAnalyst.host().load();
        oAnalyst.host().call("setSOMTable", {"t:texts"});
        oAnalyst.host().call("CNodeBrowser", {"t:som", "t:texts"});
        oAnalyst.showWindow();
        oAnalyst.host().call("select", {"i:" + oNode});
    }

    static int width(CAnalyst& oAnalyst, const QByteArray& oColumn)
    {
        return oAnalyst.tableHeader(oColumn).width();
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleColumns)
#include "tst_module_columns.moc"
