// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// The text panel.
class TestModuleText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        oServer.sql(QStringLiteral(
            "CREATE DATABASE textless; CREATE TABLE textless.document AS SELECT id, date, title "
            "FROM news.document;"
            "CREATE DATABASE rich; CREATE TABLE rich.document (id INT, date INT, title VARCHAR(9), Text "
            "TEXT);"
            "INSERT INTO rich.document VALUES"
            " (0, 0, 'plain', 'plain text'),"
            " (1, 1, 'rich', '<b style=\"background-color:#00ff00\">bold and green</b> text'),"
            " (2, 2, 'first', 'first line\\n<b>second</b> line'),"
            " (3, 3, 'less', 'a < b and c > d'),"
            " (4, 4, 'empty', ''),"
            " (5, 5, 'null', NULL),"
            " (6, 6, 'signs', 'Fish &amp; chips: 5 < 7'),"
            " (7, 7, 'blanks', '  two  blanks\\tand a tab ');"
            "CREATE VIEW som.rich_train AS SELECT 1 node, 0.5 dist, id item FROM rich.document"));
    }

    void thePanelFollowsTheCurrentRow()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        QCOMPARE(oAnalyst.text("texteditor"), "no article selected");
        // when, then
        oAnalyst.clickCell(2, "title");
        QCOMPARE(oAnalyst.text("texteditor"), "Es schneit in Zürich.");
        oAnalyst.press({"Down"});
        QCOMPARE(oAnalyst.text("texteditor"), "Die Wahl ist vorbei.");
        oAnalyst.press({"Home"});
        QCOMPARE(oAnalyst.text("texteditor"), "Niemand wurde verletzt.");
        oAnalyst.click(oAnalyst.cell(4, "date"), 3);
        QCOMPARE(oAnalyst.text("texteditor"), "Ein Apfel kostet mehr.");
        oAnalyst.click(leftOf(oAnalyst.cell(1, "date")));
        QCOMPARE(oAnalyst.text("texteditor"), "Die Brücke ist offen.");
        QCOMPARE(oAnalyst.currentCell(), "1 0");
    }

    void aMarkedRowIsShown_data()
    {
        QTest::addColumn<bool>("bHidden");
        QTest::newRow("in sight") << false;
        QTest::newRow("while the window is hidden") << true;
    }

    void aMarkedRowIsShown()
    {
        // given
        QFETCH(bool, bHidden);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        if (bHidden)
            hide(oAnalyst);
        // when
        oHost.call("markRow", {"k:2005-03-12 00:00:00", "i:0"});
        // then
        QCOMPARE(oAnalyst.text("texteditor"), "Die Wahl ist vorbei.");
        // when
        oAnalyst.showWindow();
        oAnalyst.clickCell(1, "title");
        oHost.call("markRow", {"k:2005-03-12 00:00:00", "i:0"});
        // then
        QCOMPARE(oAnalyst.text("texteditor"), "Die Wahl ist vorbei.");
    }

    void aMarkWithoutARowLeavesThePanel()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.clickCell(2, "title");
        oHost.call("markRow", {"k:2009-01-01 00:00:00", "i:1"});
        oHost.call("markRow", {"null", "i:1"});
        QCOMPARE(oAnalyst.text("texteditor"), "Es schneit in Zürich.");
    }

    void focusAloneChoosesNoRow()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        // when
        for (int i = 0; i < 9 && oAnalyst.focus() != "table"; i++)
            oAnalyst.press({"Tab"});
        // then
        QCOMPARE(oAnalyst.focus(), "table");
        QCOMPARE(oAnalyst.text("texteditor"), "no article selected");
        oAnalyst.press({"Down"});
        QCOMPARE(oAnalyst.text("texteditor"), "Niemand wurde verletzt.");
    }

    void thePanelKeepsItsTextOverASelection()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.clickCell(2, "title");
        const auto keeps = [&] {
            return oAnalyst.text("texteditor") == "Es schneit in Zürich." && oAnalyst.currentCell() == "none";
        };
        // when, then
        oHost.call("select", {"i:2"});
        QVERIFY(keeps());
        oAnalyst.click(oAnalyst.item(1));
        QCOMPARE(oHost.numRows(), 5);
        QVERIFY(keeps());
        oAnalyst.choose("Sort", "title");
        QVERIFY(keeps());
        oAnalyst.choose("Show", "author");
        QVERIFY(keeps());
        oAnalyst.click(leftPart(oAnalyst.part("checkdate")));
        QVERIFY(keeps());
        oHost.announceErrors({"CNodeBrowser: Changed Table to nothing"});
        oHost.call("setSOMTable", {"t:nothing"});
        oHost.call("select", {"i:1"});
        QVERIFY(keeps());
        hide(oAnalyst);
        oAnalyst.showWindow();
        QVERIFY(keeps());
    }

    void aRowWithoutATextFieldSaysSo()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst, "textless", "news_train");
        oAnalyst.clickCell(0, "title");
        QCOMPARE(oAnalyst.text("texteditor"), "no text available");
    }

    void aTextIsShownAsItsBeginningSays_data()
    {
        QTest::addColumn<int>("iRow");
        QTest::addColumn<QByteArray>("oText");
        QTest::newRow("plain") << 0 << QByteArray("plain text");
        QTest::newRow("tags") << 1 << QByteArray("bold and green text");
        QTest::newRow("tags in the second line") << 2 << QByteArray("first line\n<b>second</b> line");
        QTest::newRow("less and greater look like a tag") << 3 << QByteArray("a d");
        QTest::newRow("empty") << 4 << QByteArray("");
        QTest::newRow("null") << 5 << QByteArray("");
        QTest::newRow("no tag") << 6 << QByteArray("Fish &amp; chips: 5 < 7");
        QTest::newRow("blanks") << 7 << QByteArray("  two  blanks\tand a tab ");
    }

    // The field's name is "Text" here. A viewer gets the text as it was given.
    void aTextIsShownAsItsBeginningSays()
    {
        QFETCH(int, iRow);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst, "rich", "rich_train");
        oAnalyst.doubleClickCell(iRow, "title");
        QTEST(oAnalyst.text("texteditor"), "oText");
        QTEST(oAnalyst.text("0/fullEdit"), "oText");
    }

    void richTextLeavesNoFormatBehind()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst, "rich", "rich_train");
        oAnalyst.clickCell(0, "title");
        QCOMPARE(oAnalyst.text("texteditor"), "plain text");
        const QRect oPanel = oAnalyst.part("texteditor");
        const QImage oPlain = oScreen.picture().copy(oPanel);
        QCOMPARE(oScreen.pixels(Green, oPanel), 0);
        // when
        oAnalyst.clickCell(1, "title");
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(Green, oPanel) > 100);
        // when: the cursor is in the green word
        oScreen.click(oPanel.topLeft() + QPoint(40, 12));
        oAnalyst.clickCell(0, "title");
        // then
        QCOMPARE(oAnalyst.text("texteditor"), "plain text");
        QTUTILS_WAIT_FOR(oScreen.picture().copy(oPanel) == oPlain);
    }

    void theTextCantBeChanged()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.clickCell(2, "title");
        const QRect oPanel = oAnalyst.part("texteditor");
        // when
        oScreen.doubleClick(oPanel.topLeft() + QPoint(12, 12));
        QCOMPARE(oAnalyst.selectedText("texteditor"), "0-2: Es");
        QCOMPARE(oAnalyst.focus(), "texteditor");
        oAnalyst.press({"ctrl+c", "x", "Delete", "BackSpace", "Return", "ctrl+v", "ctrl+x", "ctrl+z"});
        oScreen.click(oPanel.center(), 2); // would paste what is selected
        // then
        QCOMPARE(oAnalyst.text("texteditor"), "Es schneit in Zürich.");
        QCOMPARE(oAnalyst.viewers(), QByteArrayList());
    }

    void theTextCanBeSelectedByMouse()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.clickCell(2, "title");
        const QRect oPanel = oAnalyst.part("texteditor");
        // when
        oScreen.drag(oPanel.topLeft() + QPoint(3, 12), oPanel.topRight() + QPoint(-20, 12));
        // then
        QCOMPARE(oAnalyst.selectedText("texteditor"), "0-21: Es schneit in Zürich.");
        // when
        oAnalyst.clickCell(3, "title");
        // then
        QCOMPARE(oAnalyst.selectedText("texteditor"), "0-0: ");
    }

private:
    static constexpr QRgb Green = qRgb(0, 255, 0);

    /// Node 1 of another source database.
    static void show(CAnalyst& oAnalyst, const QByteArray& oSource, const QByteArray& oTable)
    {
        oAnalyst.host().load();
        oAnalyst.host().call("setSOMTable", {"t:" + oTable});
        oAnalyst.host().call("CNodeBrowser", {"t:som", "t:" + oSource});
        oAnalyst.showWindow();
        oAnalyst.host().call("select", {"i:1"});
    }

    void hide(CAnalyst& oAnalyst) const
    {
        oAnalyst.press({"alt+f", "q"});
        QTUTILS_WAIT_FOR(!oScreen.isShown("Ombrel"));
    }

    /// The number of the row.
    static QRect leftOf(const QRect& oCell) { return oCell.translated(-oCell.width() / 2 - 8, 0); }
    static QRect leftPart(const QRect& oPlace) { return {oPlace.topLeft(), QSize(30, oPlace.height())}; }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleText)
#include "tst_module_text.moc"
