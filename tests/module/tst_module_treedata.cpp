// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

namespace {

const QByteArrayList TwoNodes{"1", ""};
const QByteArrayList Bare{"v 0 | ", "  - 1 | "};

} // namespace

/// What the tree reads from the keyword table, and what it does without one.
class TestModuleTreeData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        oServer.sql(QStringLiteral("CREATE TABLE som.empty LIKE som.news_som"));
    }

    void ofTheKeywordsTheFirstThreeAreShown_data()
    {
        QTest::addColumn<QByteArray>("oKeywords");
        QTest::addColumn<QByteArray>("oShown");
        const auto row = [](const char* pcName, const char* pcKeywords, const char* pcShown) {
            QTest::newRow(pcName) << QByteArray(pcKeywords) << QByteArray(pcShown);
        };
        row("none", "''", "");
        row("null", "NULL", "");
        row("one", "'red'", "red");
        row("two: the first only", "'red\\ngreen'", "red");
        row("three", "'red\\ngreen\\nblue'", "red, green, blue");
        row("four", "'red\\ngreen\\nblue\\ngrey'", "red, green, blue");
        row("six", "'a\\nb\\nc\\nd\\ne\\nf'", "a, b, c");
        row("one, ended", "'red\\n'", "red");
        row("two, ended", "'red\\ngreen\\n'", "red, green, ");
        row("three, ended", "'red\\ngreen\\nblue\\n'", "red, green, blue");
        row("a line feed alone", "'\\n'", "");
        row("two line feeds", "'\\n\\n'", ", , ");
        row("three line feeds", "'\\n\\n\\n'", ", , ");
        row("a line feed first", "'\\nred\\ngreen'", ", red, green");
        row("blanks", "'  a \\nb b\\n c'", "  a , b b,  c");
        row("commas", "'a, b\\nc,d\\n,'", "a, b, c,d, ,");
        row("markup", "'<b>a</b>\\n&amp;\\n%s %1'", "<b>a</b>, &amp;, %s %1");
        row("quotes", "'\\'a\\'\\n\"b\"\\nc\\\\d'", "'a', \"b\", c\\d");
        row("other scripts", "'\u00c4pfel\\n\u0441\u043d\u0435\u0433\\n\u96ea\\nx'",
            "\u00c4pfel, \u0441\u043d\u0435\u0433, \u96ea");
    }

    void ofTheKeywordsTheFirstThreeAreShown()
    {
        // given
        QFETCH(QByteArray, oKeywords);
        QFETCH(QByteArray, oShown);
        oServer.sql(QStringLiteral("USE som; CREATE OR REPLACE TABLE odd_som (_assigned_topic INT, "
                                   "_keywords TEXT) CHARSET utf8mb4; "
                                   "INSERT INTO odd_som VALUES (0, 'x'), (1, %1)")
                        .arg(QString::fromUtf8(oKeywords)));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        treehost::fill(oHost, TwoNodes, "odd_train");
        // then
        QCOMPARE(oAnalyst.tree(), QByteArrayList({"v 0 | x", "  - 1 | " + oShown}));
    }

    void aLongKeywordIsShownWhole()
    {
        oServer.sql(QStringLiteral("CREATE OR REPLACE TABLE som.long_som AS "
                                   "SELECT 1 AS _assigned_topic, REPEAT('m', 3000) AS _keywords"));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::fill(oHost, {""}, "long_train");
        QCOMPARE(oAnalyst.tree(), QByteArrayList({"- 0 | " + QByteArray(3000, 'm')}));
        oAnalyst.showWindow();
        QVERIFY(!oAnalyst.header("Keywords").isEmpty());
    }

    void theKeywordTablesNameIsMadeOfTheTables_data()
    {
        QTest::addColumn<QByteArray>("oTable");
        QTest::addColumn<QByteArray>("oQueried");
        QTest::newRow("train at the end") << QByteArray("docs_train") << QByteArray("docs_som");
        QTest::newRow("train alone") << QByteArray("train") << QByteArray("som");
        QTest::newRow("another word") << QByteArray("docs_training") << QByteArray("docs_training");
        QTest::newRow("train in front") << QByteArray("train_docs") << QByteArray("train_docs");
        QTest::newRow("a capital") << QByteArray("docs_Train") << QByteArray("docs_Train");
        QTest::newRow("twice") << QByteArray("traintrain") << QByteArray("trainsom");
        QTest::newRow("in another database") << QByteArray("som.docs_train") << QByteArray("som.docs_som");
    }

    void theKeywordTablesNameIsMadeOfTheTables()
    {
        // given
        QFETCH(QByteArray, oTable);
        QFETCH(QByteArray, oQueried);
        oServer.sql(
            QStringLiteral("USE som; CREATE OR REPLACE TABLE %1 (_assigned_topic INT, _keywords TEXT); "
                           "INSERT INTO %1 VALUES (0, 'found'), (1, 'too')")
                .arg(QString::fromUtf8(oQueried)));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.call("setSOMTable", {"t:" + oTable});
        oHost.construct();
        oServer.startLog();
        // when
        treehost::pass(oHost, TwoNodes);
        // then
        QCOMPARE(oAnalyst.tree(), QByteArrayList({"v 0 | found", "  - 1 | too"}));
        QCOMPARE(oServer.log(),
            QStringList(
                {QStringLiteral("SELECT _assigned_topic, _keywords FROM ") + QString::fromUtf8(oQueried)}));
    }

    void withoutKeywordsTheNodesHaveNumbersOnly_data()
    {
        QTest::addColumn<QByteArray>("oTable");
        QTest::addColumn<QByteArray>("oQueried");
        QTest::newRow("missing table") << QByteArray("x_train") << QByteArray("x_som");
        QTest::newRow("empty table") << QByteArray("empty") << QByteArray("empty");
        QTest::newRow("missing columns") << QByteArray("news_train_") << QByteArray("news_train_");
        QTest::newRow("other columns") << QByteArray("news.document") << QByteArray("news.document");
        QTest::newRow("no name") << QByteArray() << QByteArray();
    }

    void withoutKeywordsTheNodesHaveNumbersOnly()
    {
        // given
        QFETCH(QByteArray, oTable);
        QFETCH(QByteArray, oQueried);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        treehost::fill(oHost, TwoNodes, oTable);
        oHost.announceErrors({warning(oQueried)});
        // then
        QCOMPARE(oAnalyst.tree(), Bare);
        // when
        oAnalyst.showWindow();
        oAnalyst.chooseAt(oAnalyst.item(1), "expand all");
        // then
        QCOMPARE(oAnalyst.currentNode(), "1");
    }

    void withoutATableNothingIsAsked()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.construct();
        oServer.startLog();
        oHost.passHierarchy(TwoNodes);
        QCOMPARE(oAnalyst.tree(), Bare);
        QCOMPARE(oServer.log(), QStringList());
    }

    void anotherTablesKeywordsComeWithTheNextHierarchy()
    {
        // given
        oServer.sql(QStringLiteral("CREATE OR REPLACE TABLE som.other_som AS "
                                   "SELECT 1 AS _assigned_topic, 'other' AS _keywords"));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::fill(oHost, TwoNodes);
        // when
        oHost.announceErrors({"CNodeBrowser: Changed Table to other_train"});
        oHost.call("setSOMTable", {"t:other_train"});
        // then
        QCOMPARE(oAnalyst.tree(), QByteArrayList({"v 0 | alles, viel, mehr", "  - 1 | red, green, blue"}));
        // when
        treehost::pass(oHost, TwoNodes);
        // then
        QCOMPARE(oAnalyst.tree(), QByteArrayList({"v 0 | other", "  - 1 | "}));
        // when
        oHost.announceErrors({"CNodeBrowser: Changed Table to empty"});
        oHost.call("setSOMTable", {"t:empty"});
        treehost::pass(oHost, TwoNodes);
        oHost.announceErrors({warning("empty")});
        // then
        QCOMPARE(oAnalyst.tree(), Bare);
    }

    void nodesBeyondTheKeywordTableHaveANumberOnly()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::fill(oHost, {"3,4,99", "", "", "", ""});
        QCOMPARE(oAnalyst.tree(),
            QByteArrayList(
                {"v 0 | alles, viel, mehr", "  - 3 | leer, nichts, keiner", "  - 4 | ", "  - 99 | "}));
    }

    void rowsBeyondTheHierarchyAreLeftOut()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::fill(oHost, {"1"});
        QCOMPARE(oAnalyst.tree(), QByteArrayList({"v 0 | alles, viel, mehr", "  - 1 | red, green, blue"}));
    }

    void aLostServerLeavesTheNumbers()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::fill(oHost, TwoNodes);
        QCOMPARE(oAnalyst.tree().first(), "v 0 | alles, viel, mehr");
        // when
        oServer.kill();
        treehost::pass(oHost, TwoNodes);
        oHost.announceErrors({warning("news_som")});
        // then
        QCOMPARE(oAnalyst.tree(), Bare);
        oServer.restart();
    }

    void withoutADatabaseThereIsABoxAndTheNumbers()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.command({"env", "MYSQL_PWD", "wrong"});
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.command({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"});
        closeErrorBox();
        QCOMPARE(oHost.command({"join", "1"}), "window");
        // when
        oHost.passHierarchy(TwoNodes);
        // then
        closeErrorBox();
        QCOMPARE(oAnalyst.tree(), Bare);
        QCOMPARE(oHost.output(), QByteArrayList({"show error", "show error"}));
    }

private:
    static QByteArray warning(const QByteArray& oTable)
    {
        return "CListView: WARNING: Could not connect to Database, using               select-statement: "
               "SELECT _assigned_topic, _keywords FROM "
            + oTable + ' ';
    }

    void closeErrorBox() const
    {
        QTUTILS_WAIT_FOR(oScreen.isActive("SQL Error"));
        oScreen.press({"Return"});
        QTUTILS_WAIT_FOR(!oScreen.isShown("SQL Error"));
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleTreeData)
#include "tst_module_treedata.moc"
