// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTree.h"

#include "tests/support/CDialogs.h"
#include "tests/support/CPrivateServer.h"
#include "tests/support/CStandardOutput.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

const QStringList Bare{u"v 0 | "_s, u"  - 1 | "_s};
const CNodeLists TwoNodes{{1}, {}};

void expectNoRows(const QString& sQuery)
{
    QTest::ignoreMessage(QtDebugMsg,
        qPrintable(
            u"CListView: WARNING: Could not connect to Database, using               select-statement: "_s
            + sQuery));
}

} // namespace

class TestListViewData : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QDir::setCurrent(QDir::rootPath()); // no signs there
        oServer.load(u"news.sql"_s);
        oServer.sql(u"CREATE TABLE som.empty LIKE som.news_som"_s);
    }

    void withoutADatabaseTheNodesHaveNumbersOnly()
    {
        CTestTree oTree;
        QTest::ignoreMessage(QtDebugMsg,
            "CListView::No Database was set. Please use SetSOMDB to set a              valid database!");
        oTree.fill(TwoNodes, u"news_train"_s);
        QCOMPARE(oTree.picture(), Bare);
    }

    void withoutATableNameNoDatabaseIsNeeded()
    {
        CTestTree oTree;
        oTree.fill(TwoNodes, QString());
        QCOMPARE(oTree.picture(), Bare);
    }

    void theKeywordsAreOneStatement()
    {
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oServer.startLog();
        oTree.fill(TwoNodes, u"news_train"_s);
        QCOMPARE(oServer.log(), QStringList{u"SELECT _assigned_topic, _keywords FROM news_som"_s});
    }

    void aNameWithoutTrainIsAskedAsItStands()
    {
        oServer.sql(
            u"CREATE OR REPLACE TABLE som.news_Train AS SELECT 7 AS _assigned_topic, 'X' AS _keywords"_s);
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oServer.startLog();
        oTree.fill(TwoNodes, u"news_Train"_s);
        QCOMPARE(oServer.log(), QStringList{u"SELECT _assigned_topic, _keywords FROM news_Train"_s});
        QCOMPARE(oTree.picture()[0], u"v 0 | X"_s);
    }

    void aClosedConnectionIsOpened()
    {
        CTestTree oTree;
        oTree.setConnection(qEnvironmentVariable("MYSQL_PWD"), u"som"_s);
        QTest::ignoreMessage(QtDebugMsg, "Database has been opened successfully");
        CStandardOutput output;
        const bool bConnected = oTree->connectToDataBase(u"news_train"_s);
        QCOMPARE(output.lines(), QStringList());
        QVERIFY(bConnected);
        QVERIFY(oTree.database().isOpen());
    }

    void aConnectionThatCannotBeOpenedIsSaidOnce()
    {
        CTestTree oTree;
        oTree.setConnection(u"wrong"_s, u"som"_s);
        CDialogs dialogs;
        CStandardOutput output;
        oTree.fill(TwoNodes, u"news_train"_s);
        QCOMPARE(output.lines(), QStringList{u"show error"_s});
        QCOMPARE(dialogs.texts().size(), 1);
        QVERIFY(dialogs.texts()[0].startsWith(u"SQL Error: Could not open SOM Database!\n\n"_s));
        QCOMPARE(oTree.picture(), Bare);
    }

    void aQueryWithoutRowsIsSaid_data()
    {
        QTest::addColumn<QString>("sSOMTable");
        QTest::addColumn<QString>("sQuery");
        QTest::newRow("missing table") << u"x_train"_s << u"SELECT _assigned_topic, _keywords FROM x_som "_s;
        QTest::newRow("empty table") << u"empty"_s << u"SELECT _assigned_topic, _keywords FROM empty "_s;
        QTest::newRow("missing columns")
            << u"news_train_"_s << u"SELECT _assigned_topic, _keywords FROM news_train_ "_s;
        QTest::newRow("empty name") << u""_s << u"SELECT _assigned_topic, _keywords FROM  "_s;
    }

    void aQueryWithoutRowsIsSaid()
    {
        QFETCH(QString, sSOMTable);
        QFETCH(QString, sQuery);
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        expectNoRows(sQuery);
        oTree.fill(TwoNodes, sSOMTable);
        QCOMPARE(oTree.picture(), Bare);
    }

    void aQueryWithoutRowsForgetsTheKeywordsBefore()
    {
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill(TwoNodes, u"news_train"_s);
        QCOMPARE(oTree.picture()[1], u"  - 1 | red, green, blue"_s);
        expectNoRows(u"SELECT _assigned_topic, _keywords FROM empty "_s);
        oTree.fill(TwoNodes, u"empty"_s);
        QCOMPARE(oTree.picture(), Bare);
        oTree.fill(TwoNodes, QString());
        QCOMPARE(oTree.picture(), Bare);
    }

    void withoutATableNameTheResultBeforeIsUsedAgain()
    {
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill(TwoNodes, u"news_train"_s);
        oServer.startLog();
        oTree.fill({{3}, {}, {}, {}}, QString());
        QCOMPARE(oServer.log(), QStringList());
        QCOMPARE(
            oTree.picture(), (QStringList{u"v 0 | alles, viel, mehr"_s, u"  - 3 | leer, nichts, keiner"_s}));
    }

    void aFailureToOpenKeepsTheResultBefore()
    {
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill(TwoNodes, u"news_train"_s);
        oTree->pSOMDB = nullptr;
        QTest::ignoreMessage(QtDebugMsg,
            "CListView::No Database was set. Please use SetSOMDB to set a              valid database!");
        oTree->fillList(&TwoNodes, u"news_train"_s);
        QCOMPARE(oTree.picture()[1], u"  - 1 | red, green, blue"_s);
    }

    void aNullTopicOrKeywordIsNone()
    {
        oServer.sql(u"CREATE OR REPLACE TABLE som.nulls (_assigned_topic INT, _keywords TEXT);"
                    "INSERT INTO som.nulls VALUES (NULL, NULL), (NULL, NULL)"_s);
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill(TwoNodes, u"nulls"_s);
        QCOMPARE(oTree.picture(), Bare);
    }

    void aTipHasAllKeywordsOfItsNode_data()
    {
        QTest::addColumn<QString>("sKeywords");
        QTest::addColumn<QString>("sTip");
        QTest::newRow("more than are shown")
            << u"'one\\ntwo\\nthree\\nfour\\nfive'"_s << u"<qt>one, two, three, four, five</qt>"_s;
        QTest::newRow("two, of which one is shown") << u"'one\\ntwo\\n'"_s << u"<qt>one, two</qt>"_s;
        QTest::newRow("signs") << u"'a < b\\n<img src=x>'"_s << u"<qt>a &lt; b, &lt;img src=x&gt;</qt>"_s;
        QTest::newRow("none") << u"''"_s << u""_s;
        QTest::newRow("null") << u"NULL"_s << u""_s;
        QTest::newRow("very long") << u"REPEAT('a', 10000000)"_s
                                   << u"<qt>"_s + QString(4000, u'a') + u"</qt>"_s;
    }

    void aTipHasAllKeywordsOfItsNode()
    {
        QFETCH(QString, sKeywords);
        QFETCH(QString, sTip);
        oServer.sql(u"CREATE OR REPLACE TABLE som.tips (_assigned_topic INT, _keywords LONGTEXT);"
                    "INSERT INTO som.tips VALUES (0, 'root'), (0, %1)"_s.arg(sKeywords));
        CTestTree oTree;
        oTree.connectTo(u"som"_s);
        oTree.fill(CNodeLists{{1, 2}, {}, {}}, u"tips"_s);
        for (const int iColumn : {0, 1})
            QCOMPARE(oTree->find(1).siblingAtColumn(iColumn).data(Qt::ToolTipRole).toString(), sTip);
        QCOMPARE(oTree->find(2).data(Qt::ToolTipRole).toString(), u""_s); // no row for this node
    }

private:
    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestListViewData, CPrivateDisplay::Manager::None)
#include "tst_listview_data.moc"
