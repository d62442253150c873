// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestBrowser.h"

#include "binding/commands.h"
#include "table/CTable.h"
#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QDateTimeEdit>
#include <QTextEdit>
#include <QTreeView>

using namespace Qt::StringLiterals;

/// The panes under the keyboard, and the viewers' places and captions.
class TestNodeBrowserPanes : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        oServer.sql(u"CREATE TABLE news.untitled AS SELECT id, date, text FROM news.document;"
                    "UPDATE news.untitled SET text='<p> </p><p>Es  <b>schneit</b></p>' WHERE id=3"_s);
    }

    void init()
    {
        CStrictTest::init();
        pBrowser = std::make_unique<CTestBrowser>();
        pBrowser->setTables();
        pBrowser->select(1);
    }

    void cleanup() { pBrowser.reset(); }

    void f6LeadsRoundThePanes()
    {
        showTree();
        QCOMPARE(walk(Qt::Key_F6, {}, 5),
            (QStringList{u"table"_s, u"texteditor"_s, u"dateedit"_s, u"ListView"_s, u"table"_s}));
        QCOMPARE(walk(Qt::Key_F6, Qt::ShiftModifier, 4),
            (QStringList{u"ListView"_s, u"dateedit"_s, u"texteditor"_s, u"table"_s}));
    }

    void f6FromTheCheckBoxGoesOnBehindTheDate()
    {
        showTree();
        pBrowser->child<QWidget>("checkdate")->setFocus();
        QCOMPARE(walk(Qt::Key_F6, {}, 1), QStringList{u"ListView"_s});
    }

    void f6PassesAPaneThatIsNotThere()
    {
        pBrowser->show(); // the tree takes no room before it is filled
        pBrowser->child<QWidget>("dateedit")->setFocus();
        QCOMPARE(walk(Qt::Key_F6, {}, 2), (QStringList{u"table"_s, u"texteditor"_s}));
        pBrowser->passHierarchy({{1}, {}});
        pBrowser->send(commands::HideTable);
        QCOMPARE(walk(Qt::Key_F6, {}, 2), (QStringList{u"ListView"_s, u"ListView"_s}));
    }

    void otherKeysDoNotMove()
    {
        showTree();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6, Qt::ControlModifier);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F7);
        QCOMPARE(focus(), u"ListView"_s);
    }

    void f6MakesNothingCurrent()
    {
        showTree();
        walk(Qt::Key_F6, {}, 4);
        QVERIFY(!pBrowser->tree().currentIndex().isValid());
        QCOMPARE(pBrowser->table().currentRow(), -1);
    }

    void tabGoesThroughTheWindowInItsOrder()
    {
        showTree();
        QCOMPARE(walk(Qt::Key_Tab, {}, 1), QStringList{u"table"_s});
        pBrowser->child<QWidget>("texteditor")->setFocus();
        QCOMPARE(walk(Qt::Key_Tab, {}, 2), (QStringList{u"checkdate"_s, u"dateedit"_s}));
        // in the date from part to part
        pBrowser->child<QDateTimeEdit>("dateedit")->setSelectedSection(QDateTimeEdit::SecondSection);
        QCOMPARE(walk(Qt::Key_Tab, {}, 1), QStringList{u"ListView"_s});
    }

    void thePaneWithTheKeyboardHasItsFrameInTheHighlightColour_data()
    {
        QTest::addColumn<QByteArray>("oPane");
        for (const char* pcPane : {"ListView", "table", "texteditor"})
            QTest::newRow(pcPane) << QByteArray(pcPane);
    }

    void thePaneWithTheKeyboardHasItsFrameInTheHighlightColour()
    {
        QFETCH(QByteArray, oPane);
        showTree();
        auto* pPane = pBrowser->child<QWidget>(oPane.constData());
        const auto frame = [&] { return pPane->grab().toImage().pixelColor(0, pPane->height() / 2); };
        const QColor oHighlight = pPane->palette().color(QPalette::Highlight);
        pPane->setFocus();
        QCOMPARE(frame(), oHighlight);
        pBrowser->child<QWidget>("dateedit")->setFocus();
        QVERIFY(frame() != oHighlight);
    }

    void aViewersCaptionIsTheTitle()
    {
        pBrowser->show();
        pBrowser->doubleClickCell(2, 1);
        QCOMPARE(captions(), QStringList{pBrowser->table().text(2, 1)});
    }

    void withoutATitleItIsTheFirstLineOfTheText()
    {
        pBrowser->setTables(u"news_train"_s, u"untitled"_s);
        pBrowser->select(1);
        pBrowser->show();
        for (int iRow = 0; iRow < 5; iRow++)
            pBrowser->doubleClickCell(iRow, 0);
        QVERIFY(captions().contains(u"Niemand wurde verletzt."_s));
        QVERIFY(captions().contains(u"Es schneit"_s));
    }

    void withoutADocumentItSaysSo()
    {
        pBrowser->show();
        QTest::mouseDClick(pBrowser->table().viewport(), Qt::LeftButton, {}, QPoint(5, 300));
        QCOMPARE(captions(), QStringList{u"no article selected"_s});
    }

    void eachViewerIsALittleBelowTheOneBefore()
    {
        pBrowser->show();
        QWidget* pBefore = openViewer();
        pBefore->move(100, 100);
        QTRY_COMPARE(pBefore->pos(), QPoint(100, 100));
        for (int i = 0; i < 2; i++) {
            QWidget* pNext = openViewer();
            QTRY_COMPARE(pNext->pos() - pBefore->pos(), QPoint(24, 24));
            pBefore = pNext;
        }
    }

    void noViewerLeavesTheScreen()
    {
        pBrowser->show();
        QWidget* pFirst = openViewer();
        const QRect oScreen = pFirst->screen()->availableGeometry();
        pFirst->move(oScreen.bottomRight() - QPoint(100, 100));
        QTRY_VERIFY(!oScreen.contains(pFirst->frameGeometry()));
        const QWidget* pNext = openViewer();
        QTRY_VERIFY(oScreen.contains(pNext->frameGeometry()));
    }

private:
    void showTree()
    {
        pBrowser->passHierarchy({{1}, {}});
        pBrowser->show();
        pBrowser->tree().setFocus();
        QTRY_COMPARE(focus(), u"ListView"_s);
    }

    static QString focus() { return QApplication::focusWidget()->objectName(); }

    static QStringList walk(Qt::Key eKey, Qt::KeyboardModifiers eModifiers, int iTimes)
    {
        QStringList slPanes;
        for (int i = 0; i < iTimes; i++) {
            QTest::keyClick(QApplication::focusWidget(), eKey, eModifiers);
            slPanes << focus();
        }
        return slPanes;
    }

    QWidget* openViewer()
    {
        const QList<QWidget*> lBefore = CTestBrowser::viewers();
        pBrowser->doubleClickCell(2, 1);
        for (QWidget* pViewer : CTestBrowser::viewers())
            if (!lBefore.contains(pViewer) && QTest::qWaitForWindowExposed(pViewer))
                return pViewer;
        qFatal("no viewer has been opened");
    }

    static QStringList captions()
    {
        QStringList slCaptions;
        for (const QWidget* pViewer : CTestBrowser::viewers())
            slCaptions << pViewer->windowTitle();
        return slCaptions;
    }

    CPrivateServer oServer;
    std::unique_ptr<CTestBrowser> pBrowser;
};

QTUTILS_WIDGET_TEST_MAIN(TestNodeBrowserPanes, CPrivateDisplay::Manager::Running)
#include "tst_nodebrowser_panes.moc"
