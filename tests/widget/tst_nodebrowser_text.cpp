// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestBrowser.h"

#include "binding/commands.h"
#include "table/CTable.h"
#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QDir>
#include <QSqlField>
#include <QTextEdit>

using namespace Qt::StringLiterals;

/// The text panel.
class TestNodeBrowserText : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QDir::setCurrent(QDir::rootPath());
        oServer.load(u"news.sql"_s);
        oServer.sql(u"CREATE TABLE news.rich (id INT, date DATETIME, title VARCHAR(9), text TEXT);"
                    "INSERT INTO news.rich VALUES (6, '2001-01-01', 'rich', '<b>bold</b> text'),"
                    " (7, '2001-01-02', 'plain', 'plain text');"
                    "CREATE TABLE news.textless AS SELECT id, date, title FROM news.document"_s);
    }

    void thePanelFollowsTheCurrentRow()
    {
        CTestBrowser oBrowser;
        showNode(oBrowser, u"document"_s, 1);
        QCOMPARE(oBrowser.panelText(), u"no article selected"_s);
        oBrowser.clickCell(2, 1);
        QCOMPARE(oBrowser.panelText(), u"Es schneit in Zürich."_s);
        QTest::keyClick(&oBrowser.table(), Qt::Key_Down);
        QCOMPARE(oBrowser.panelText(), u"Die Wahl ist vorbei."_s);
    }

    void thePanelKeepsItsTextOverASelection()
    {
        CTestBrowser oBrowser;
        showNode(oBrowser, u"document"_s, 1);
        oBrowser.clickCell(2, 1);
        oBrowser.select(2);
        QCoreApplication::processEvents();
        QCOMPARE(oBrowser.panelText(), u"Es schneit in Zürich."_s);
    }

    void focusLeavesThePanelAlone()
    {
        CTestBrowser oBrowser;
        showNode(oBrowser, u"document"_s, 1);
        oBrowser.table().setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(oBrowser.table().hasFocus());
        QCOMPARE(oBrowser.panelText(), u"no article selected"_s);
    }

    void aRecordWithoutATextSaysSo()
    {
        CTestBrowser oBrowser;
        showNode(oBrowser, u"textless"_s, 1);
        oBrowser.clickCell(0, 0);
        QCOMPARE(oBrowser.panelText(), u"no text available"_s);
    }

    void noRecordIsNoText()
    {
        CTestBrowser oBrowser;
        oBrowser->setText(nullptr);
        QCOMPARE(oBrowser.panelText(), u"no text available"_s);
    }

    void anEmptyTextIsShownAsSuch()
    {
        CTestBrowser oBrowser;
        QSqlRecord oRecord;
        oRecord.append(QSqlField(u"text"_s, QMetaType(QMetaType::QString)));
        oBrowser->setText(&oRecord);
        QCOMPARE(oBrowser.panelText(), u""_s);
    }

    void aMarkedRowIsShown()
    {
        CTestBrowser oBrowser;
        showNode(oBrowser, u"document"_s, 1);
        QByteArray oDate("2005-03-12 00:00:00");
        MarkRequest oRequest{oDate.data(), 0};
        oBrowser.send(commands::MarkRow, &oRequest);
        QCOMPARE(oBrowser.panelText(), u"Die Wahl ist vorbei."_s);
        QCOMPARE(oBrowser.table().currentRow(), 3);
    }

    void markupIsShownAsRichText()
    {
        CTestBrowser oBrowser;
        showNode(oBrowser, u"rich"_s, 2);
        oBrowser.clickCell(0, 0);
        QCOMPARE(oBrowser.panelText(), u"bold text"_s);
        QVERIFY(isBoldAt(*oBrowser.child<QTextEdit>("texteditor"), 1));
        QVERIFY(!isBoldAt(*oBrowser.child<QTextEdit>("texteditor"), 7));
    }

    void plainTextAfterRichTextIsPlain()
    {
        CTestBrowser oBrowser;
        showNode(oBrowser, u"rich"_s, 2);
        auto* pPanel = oBrowser.child<QTextEdit>("texteditor");
        oBrowser.clickCell(0, 0);
        QTest::mouseClick(pPanel->viewport(), Qt::LeftButton, {}, QPoint(12, 12)); // into the bold word
        oBrowser.clickCell(1, 0);
        QCOMPARE(oBrowser.panelText(), u"plain text"_s);
        QVERIFY(!isBoldAt(*pPanel, 1));
    }

    void aViewerShowsTheMarkupToo()
    {
        CTestBrowser oBrowser;
        showNode(oBrowser, u"rich"_s, 2);
        oBrowser.doubleClickCell(0, 0);
        const auto* pText = CTestBrowser::viewers().value(0)->findChild<QTextEdit*>(u"fullEdit"_s);
        QCOMPARE(pText->toPlainText(), u"bold text"_s);
        QVERIFY(isBoldAt(*pText, 1));
    }

private:
    static void showNode(CTestBrowser& oBrowser, const QString& sSourceTable, int iNode)
    {
        oBrowser.setTables(u"news_train"_s, sSourceTable);
        oBrowser.select(iNode);
        oBrowser.show();
    }

    static bool isBoldAt(const QTextEdit& oEdit, int iPosition)
    {
        QTextCursor oCursor(oEdit.document());
        oCursor.setPosition(iPosition);
        return oCursor.charFormat().fontWeight() == QFont::Bold;
    }

    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestNodeBrowserText, CPrivateDisplay::Manager::Running)
#include "tst_nodebrowser_text.moc"
