// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "tests/support/spelling.h"

using namespace Qt::StringLiterals;
using spelling::spelled;

/// Texts of megabytes. Each document is alone in its node, which has its number.
class TestModuleBadInputCellsLong : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.sql(u"SET GLOBAL max_allowed_packet=1073741824; CREATE DATABASE som; CREATE DATABASE news"_s);
        oServer.sql(u"CREATE TABLE news.document (id INT, date DATETIME, title LONGTEXT, text LONGTEXT) "
                    u"ENGINE=MyISAM; "
                    "INSERT INTO news.document VALUES (1, NULL, 'lines', REPEAT('%1', %2)), "
                    "(2, NULL, 'line', CONCAT(REPEAT('%3', %4), 'end')), (3, NULL, CONCAT(REPEAT('%3', %4), "
                    "'end'), 'text'); "
                    "CREATE TABLE som.news_train AS SELECT id node, 0.5 dist, id item FROM news.document; "
                    "CREATE TABLE som.news_som AS SELECT 0 _assigned_topic, 'all' _keywords"_s
                        .arg(QString(Line).replace(u'\n', u"\\n"_s))
                        .arg(ManyLines)
                        .arg(Word)
                        .arg(ManyWords));
    }

    void aTextOf64MegabytesIsReadInPanelAndViewer()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        QCOMPARE(oAnalyst.table(), QByteArrayList({"date | title", "NULL | lines"}));
        // when
        oAnalyst.openViewer(0);
        // then
        const QByteArray oText = spelled(Line.repeated(ManyLines));
        QCOMPARE(oHost.ask({"spell", "text", "texteditor"}).first(), oText);
        QCOMPARE(oHost.ask({"spell", "text", "0/fullEdit"}).first(), oText);
        // and the window goes on
        oHost.call("select", {"i:2"});
        QCOMPARE(oHost.numRows(), 1);
    }

    void aLineOfAMillionLettersIsReadAndSearched()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(2);
        // when
        oAnalyst.openViewer(0);
        oAnalyst.find("end");
        // then
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "1000000-1000003: end");
        QCOMPARE(
            oHost.ask({"spell", "text", "texteditor"}).first(), spelled(Word.repeated(ManyWords) + u"end"_s));
    }

    void aTitleOfAMillionLettersIsShown()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(3);
        // when
        oAnalyst.clickCell(0, "title");
        // then
        QCOMPARE(oAnalyst.currentCell(), "0 1");
        QCOMPARE(oAnalyst.text("texteditor"), "text");
        QCOMPARE(oHost.ask({"spell", "table"}).first(),
            spelled(u"date | title\nNULL | "_s + Word.repeated(ManyWords) + u"end"_s));
    }

private:
    const QString Line = u"A line of 64 letters, of which some are blanks, as in any text.\n"_s;
    static constexpr int ManyLines = 1 << 20;
    const QString Word = u"word "_s;
    static constexpr int ManyWords = 200000;

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleBadInputCellsLong)
#include "tst_module_badinput_cells_long.moc"
