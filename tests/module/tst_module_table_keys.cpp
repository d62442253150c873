// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <memory>

using namespace Qt::StringLiterals;

/// The table under the keyboard. Its node 9 has a hundred documents.
class TestModuleTableKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        oServer.sql(u"INSERT INTO news.document (id, date, title, text) SELECT 100 + seq, "
                    "'2007-01-01' + INTERVAL seq DAY, CONCAT('Nr. ', seq), CONCAT('Text ', seq) "
                    "FROM news.seq_1_to_100; "
                    "INSERT INTO som.news_train SELECT 9, 0, 100 + seq FROM news.seq_1_to_100"_s);
    }

    void init()
    {
        pHost = std::make_unique<CPlainHost>();
        pAnalyst = std::make_unique<CAnalyst>(*pHost, oScreen);
        pAnalyst->startAt(9);
        lShown = pAnalyst->table();
        QCOMPARE(lShown.size(), 101);
        oServer.startLog();
    }

    // Whatever is typed, the table keeps the focus and shows the same, and nobody asks the server for it.
    void cleanup()
    {
        if (!QTest::currentTestFailed()) {
            QCOMPARE(pAnalyst->table(), lShown);
            QCOMPARE(oServer.log(), QStringList());
        }
        pAnalyst.reset();
        pHost.reset();
    }

    void aKeyMovesTheCurrentCell_data()
    {
        QTest::addColumn<int>("iRow");
        QTest::addColumn<QByteArray>("oColumn");
        QTest::addColumn<QByteArrayList>("lKeys");
        QTest::addColumn<QByteArray>("oTo");
        const auto add = [](const char* pcName, int iRow, const char* pcColumn, const QByteArrayList& lKeys,
                             const char* pcTo) {
            QTest::newRow(pcName) << iRow << QByteArray(pcColumn) << lKeys << QByteArray(pcTo);
        };
        add("down", 3, "date", {"Down"}, "4 0");
        add("down, keypad", 3, "title", {"KP_Down"}, "4 1");
        add("down at the end", 0, "title", {"End", "Down"}, "99 1");
        add("up", 3, "title", {"Up"}, "2 1");
        add("up at the beginning", 0, "title", {"Up"}, "0 1");
        add("right", 3, "date", {"Right"}, "3 1");
        add("right at the end", 3, "title", {"Right"}, "3 1");
        add("left", 3, "title", {"Left"}, "3 0");
        add("left at the beginning", 3, "date", {"Left"}, "3 0");
        add("home", 3, "title", {"Home"}, "0 1");
        add("home at the beginning", 0, "date", {"Home"}, "0 0");
        add("end", 3, "date", {"End"}, "99 0");
        add("end at the end", 3, "title", {"End", "End"}, "99 1");
        add("tab", 3, "date", {"Tab"}, "3 1");
        add("tab stops at the last column", 3, "date", {"Tab", "Tab", "Tab"}, "3 1");
        add("back", 3, "title", {"shift+Tab"}, "3 0");
        add("back stops at the first column", 3, "title", {"shift+Tab", "shift+Tab"}, "3 0");
        add("page up at the beginning", 3, "title", {"Prior"}, "0 1");
        add("page down at the end", 3, "title", {"End", "Next"}, "99 1");
        add("all together", 3, "date", {"End", "Up", "Right", "Up", "Left", "Down"}, "98 0");
    }

    void aKeyMovesTheCurrentCell()
    {
        QFETCH(int, iRow);
        QFETCH(QByteArray, oColumn);
        QFETCH(QByteArrayList, lKeys);
        pAnalyst->clickCell(iRow, oColumn);
        pAnalyst->press(lKeys);
        QTEST(pAnalyst->currentCell(), "oTo");
        QCOMPARE(pAnalyst->focus(), "table");
        const QByteArray oRow = pAnalyst->currentCell().split(' ').first();
        QCOMPARE(pAnalyst->text("texteditor"), "Text " + QByteArray::number(oRow.toInt() + 1));
        QVERIFY(!pAnalyst->cell(oRow.toInt(), oColumn).isEmpty());
    }

    void otherKeysDoNothing_data()
    {
        QTest::addColumn<QByteArray>("oKey");
        for (const char* pcKey : {"space", "n", "N", "9", "KP_Enter", "F2", "F3", "F10", "Insert", "Delete",
                 "BackSpace", "Escape", "Menu", "plus", "minus", "asterisk", "ctrl+f", "ctrl+space", "ctrl+c",
                 "ctrl+v", "ctrl+x", "ctrl+Insert"})
            QTest::newRow(pcKey) << QByteArray(pcKey);
    }

    void otherKeysDoNothing()
    {
        QFETCH(QByteArray, oKey);
        pAnalyst->clickCell(3, "date");
        pAnalyst->press({oKey});
        QCOMPARE(pAnalyst->currentCell(), "3 0");
        QCOMPARE(pAnalyst->focus(), "table");
        QCOMPARE(pAnalyst->dialog(), "none");
        QCOMPARE(pAnalyst->openMenu(), QByteArrayList{"none"});
        QCOMPARE(pAnalyst->viewers(), QByteArrayList());
        QVERIFY(oScreen.isActive("Ombrel"));
    }

    void whatIsTypedChangesNothing()
    {
        pAnalyst->clickCell(3, "title");
        for (const char* pcBefore : {"Escape", "F2", "KP_Enter", "space"}) {
            pAnalyst->press({pcBefore});
            pAnalyst->type("Nr. 7");
            QCOMPARE(pAnalyst->currentCell(), "3 1");
            QCOMPARE(pAnalyst->focus(), "table");
        }
    }

    void aPageIsWhatIsInSight()
    {
        // given
        pAnalyst->clickCell(0, "title");
        const int iLast = pAnalyst->rowsInSight().split(' ').last().toInt();
        QVERIFY(iLast > 5 && iLast < 40);
        // when
        pAnalyst->press({"Next"});
        // then
        const int iPage = pAnalyst->currentCell().split(' ').first().toInt();
        QVERIFY(iPage > iLast - 3 && iPage <= iLast);
        // when
        pAnalyst->press({"Next"});
        // then
        QCOMPARE(pAnalyst->currentCell(), QByteArray::number(2 * iPage) + " 1");
        QVERIFY(!pAnalyst->cell(2 * iPage, "title").isEmpty());
        // when
        pAnalyst->press({"Prior", "Prior"});
        // then
        QCOMPARE(pAnalyst->currentCell(), "0 1");
        QVERIFY(pAnalyst->rowsInSight().startsWith("0 "));
    }

    void homeAndEndScroll()
    {
        pAnalyst->clickCell(3, "title");
        pAnalyst->press({"End"});
        QVERIFY(pAnalyst->rowsInSight().endsWith(" 99"));
        QCOMPARE(pAnalyst->cell(99, "title").height(), pAnalyst->cell(98, "title").height());
        // the last row stands at the very end
        QCOMPARE(pAnalyst->part("table").bottom() - pAnalyst->cell(99, "title").bottom(), 2);
        pAnalyst->press({"Home"});
        QVERIFY(pAnalyst->rowsInSight().startsWith("0 "));
        QCOMPARE(pAnalyst->cell(0, "title").height(), pAnalyst->cell(1, "title").height());
    }

    void withoutACurrentRowTheKeysBeginAtTheFirstOrTheLast_data()
    {
        QTest::addColumn<QByteArray>("oKey");
        QTest::addColumn<QByteArray>("oCell");
        QTest::newRow("down") << "Down"_ba
                              << "0 0"_ba;
        QTest::newRow("home") << "Home"_ba
                              << "0 0"_ba;
        QTest::newRow("end") << "End"_ba
                             << "99 0"_ba;
    }

    void withoutACurrentRowTheKeysBeginAtTheFirstOrTheLast()
    {
        QFETCH(QByteArray, oKey);
        pAnalyst->clickCell(0, "title");
        pHost->call("select", {"i:9"});
        QCOMPARE(pAnalyst->currentCell(), "none");
        oServer.startLog();
        pAnalyst->press({oKey});
        QTEST(pAnalyst->currentCell(), "oCell");
    }

    void keysInAnEmptyTableDoNothing()
    {
        pAnalyst->clickCell(0, "title");
        pHost->call("select", {"i:3"});
        lShown = QByteArrayList{"date | title"};
        QCOMPARE(pAnalyst->table(), lShown);
        oServer.startLog();
        pAnalyst->press({"Down", "Up", "Left", "Right", "Home", "End", "Prior", "Next"});
        QCOMPARE(pAnalyst->focus(), "table");
        QCOMPARE(pAnalyst->currentCell(), "none");
        QCOMPARE(pAnalyst->text("texteditor"), "Text 1");
    }

    void everyReturnOpensTheDocument()
    {
        // given
        pAnalyst->clickCell(3, "title");
        // when
        pAnalyst->press({"Return"});
        // then
        QTUTILS_WAIT_FOR(pAnalyst->viewers() == QByteArrayList{"shown"});
        QCOMPARE(pAnalyst->text("0/fullEdit"), "Text 4");
        QCOMPARE(pAnalyst->currentCell(), "3 1");
        // when
        pAnalyst->clickCell(5, "date");
        QTUTILS_WAIT_FOR(pAnalyst->focus() == "table");
        pAnalyst->press({"Return"});
        // then
        QTUTILS_WAIT_FOR(pAnalyst->viewers() == QByteArrayList({"shown", "shown"}));
        QCOMPARE(pAnalyst->text("1/fullEdit"), "Text 6");
        QCOMPARE(pAnalyst->text("0/fullEdit"), "Text 4");
    }

    void theCurrentCellIsScrolledIntoSight()
    {
        // given all columns, which are wider than the window
        pHost->call("select", {"i:1"});
        for (const char* pcColumn : {"node", "dist", "id", "URL", "text", "author", "rate"})
            pAnalyst->choose("Show", pcColumn);
        lShown = pAnalyst->table();
        oServer.startLog();
        QVERIFY(pAnalyst->cell(0, "rate").isEmpty());
        pAnalyst->clickCell(0, "node");
        // when
        for (int i = 0; i < 10; i++)
            pAnalyst->press({"Tab"});
        // then
        QCOMPARE(pAnalyst->currentCell(), "0 8");
        QVERIFY(!pAnalyst->cell(0, "rate").isEmpty());
        QVERIFY(pAnalyst->cell(0, "node").isEmpty());
        QCOMPARE(pAnalyst->focus(), "table");
    }

private:
    CPrivateServer oServer;
    CScreen oScreen;
    std::unique_ptr<CPlainHost> pHost;
    std::unique_ptr<CAnalyst> pAnalyst;
    QByteArrayList lShown;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleTableKeys)
#include "tst_module_table_keys.moc"
