// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

using namespace Qt::StringLiterals;

/// Names of tables and databases that no server has, or that say more than a name.
class TestModuleBadInputNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        oServer.sql(u"CREATE TABLE som.`k\u00f6ln_train` AS SELECT * FROM som.news_train; "
                    "CREATE TABLE som.`k\u00f6ln_som` AS SELECT * FROM som.news_som; "
                    "CREATE TABLE som.`a ``b` AS SELECT * FROM som.news_train"_s);
    }

    // The name in the line of the debug channel is UTF-8, with a sign of its own for what is none.
    void aTableOfNoServerIsSaidAndLeavesNoRows_data() { names(); }

    void aTableOfNoServerIsSaidAndLeavesNoRows()
    {
        // given
        QFETCH(QByteArray, oArgument);
        QFETCH(QByteArray, oSaid);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.start();
        // when
        oHost.announceErrors(linesOf("CNodeBrowser: Changed Table to " + oSaid));
        oHost.call("setSOMTable", {oArgument});
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oAnalyst.menu("ShowMenu"), QByteArrayList{""});
        // when
        oHost.announceErrors(QByteArrayList{"Database is open. Commencing."} + linesOf(warning(oSaid)));
        oHost.passHierarchy();
        // then
        QCOMPARE(oAnalyst.tree(), Bare);
        // when
        oHost.announceErrors({"CNodeBrowser: Changed Table to news_train", "Database is open. Commencing."});
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.passHierarchy();
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oAnalyst.tree().first(), "v 0 | alles, viel, mehr");
        QCOMPARE(documents(), AllDocuments);
    }

    void aTableOfNoServerMayBeNamedBeforeTheConstruction_data() { names(); }

    void aTableOfNoServerMayBeNamedBeforeTheConstruction()
    {
        // given
        QFETCH(QByteArray, oArgument);
        QFETCH(QByteArray, oSaid);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.call("setSOMTable", {oArgument});
        // when
        QCOMPARE(oHost.construct(), "window");
        // then
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 0);
        oHost.announceErrors(QByteArrayList{"Database is open. Commencing."} + linesOf(warning(oSaid)));
        oHost.passHierarchy();
        QCOMPARE(oAnalyst.tree(), Bare);
        QCOMPARE(documents(), AllDocuments);
    }

    void aTableMayBeNamedInManyWays_data()
    {
        QTest::addColumn<QByteArray>("oName");
        QTest::newRow("umlaut") << "k\xc3\xb6ln_train"_ba;
        QTest::newRow("in quotes") << "`a ``b`"_ba;
        QTest::newRow("with its database, in quotes") << "`som`.`news_train`"_ba;
        QTest::newRow("blanks around") << "  news_train "_ba;
        QTest::newRow("a comment in front") << "/* of\nnews */ news_train"_ba;
    }

    void aTableMayBeNamedInManyWays()
    {
        QFETCH(QByteArray, oName);
        CPlainHost oHost;
        oHost.start();
        oHost.announceErrors(linesOf("CNodeBrowser: Changed Table to " + oName));
        oHost.call("setSOMTable", {"h:" + oName.toHex()});
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
    }

    void aSourceDatabaseOfNoServerLeavesTheTreeOnly_data() { names(); }

    void aSourceDatabaseOfNoServerLeavesTheTreeOnly()
    {
        // given
        QFETCH(QByteArray, oArgument);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.call("setSOMTable", {"t:news_train"});
        // when
        QCOMPARE(oHost.call("CNodeBrowser", {"t:som", oArgument}), "window");
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oAnalyst.menu("SortMenu"), QByteArrayList{""});
        oHost.announceErrors({"Database is open. Commencing."});
        oHost.passHierarchy();
        QCOMPARE(oAnalyst.tree().first(), "v 0 | alles, viel, mehr");
        QCOMPARE(documents(), AllDocuments);
    }

    void aDatabaseOfNoServerIsSaidInABox_data() { names(); }

    void aDatabaseOfNoServerIsSaidInABox()
    {
        // given
        QFETCH(QByteArray, oArgument);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.announceOutput({"show error"});
        // when
        oHost.command({"start", "1", "call", "CNodeBrowser", oArgument, "t:news"});
        // then
        QTUTILS_WAIT_FOR(oScreen.isActive("SQL Error"));
        QVERIFY(oAnalyst.dialog().startsWith("SQL Error: Could not open SOM Database!\n\n"));
        oScreen.press({"Return"});
        QCOMPARE(oHost.command({"join", "1"}), "window");
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 0);
    }

private:
    static void names()
    {
        QTest::addColumn<QByteArray>("oArgument");
        QTest::addColumn<QByteArray>("oSaid");
        const auto row = [](const char* pcName, const QByteArray& oName) {
            QTest::newRow(pcName) << QByteArray("h:" + oName.toHex()) << oName;
        };
        row("a quote", "news'train");
        row("a double quote", "news\"train");
        row("a backquote", "`news_train");
        row("blanks", "news train x");
        row("a blank alone", " ");
        row("a semicolon", "news_train;");
        row("a further statement", "news_train; DELETE FROM news.document; SELECT 1 FROM news_som");
        row("a comment", "news_train -- ");
        row("an open comment", "news_train /*");
        row("formats", "%s%n%1%2$s");
        row("an umlaut", "k\xc3\xb6ln");
        row("a line break", "news\n\ntrain");
        row("a tab and a bell", "news\ttrain\a");
        QTest::newRow("not UTF-8") << "h:6eff80"_ba
                                   << "n\xef\xbf\xbd\xef\xbf\xbd"_ba;
        QTest::newRow("10,000 letters") << "r:10000xa"_ba << QByteArray(10000, 'a');
        QTest::newRow("1,000,000 letters") << "r:1000000xa"_ba << QByteArray(1000000, 'a');
    }

    static QByteArrayList linesOf(const QByteArray& oText)
    {
        QByteArrayList lLines = oText.split('\n');
        lLines.removeAll({});
        return lLines;
    }

    static QByteArray warning(const QByteArray& oTable)
    {
        return "CListView: WARNING: Could not connect to Database, using               select-statement: "
               "SELECT _assigned_topic, _keywords FROM "
            + (oTable.endsWith("train") ? oTable.chopped(5) + "som" : oTable) + ' ';
    }

    QStringList documents() const { return oServer.sql(u"SELECT COUNT(*) FROM news.document"_s); }

    static inline const QStringList AllDocuments{u"7"_s};
    static inline const QByteArrayList Bare{"v 0 | ", "  - 1 | ", "  - 2 | ", "  - 3 | "};
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleBadInputNames)
#include "tst_module_badinput_names.moc"
