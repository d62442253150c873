// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestBrowser.h"

#include "binding/commands.h"
#include "tests/support/CDialogs.h"
#include "tests/support/CPrivateServer.h"
#include "tests/support/CStandardOutput.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/pictures.h"
#include "tests/support/testmain.h"

#include <QCheckBox>
#include <QDir>
#include <QGroupBox>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextLayout>
#include <QTreeView>

using namespace Qt::StringLiterals;

class TestNodeBrowser : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QDir::setCurrent(QDir::rootPath()); // no signs there
        oServer.load(u"news.sql"_s);
    }

    void aNewWindowIsHiddenAndHasNoArticle()
    {
        CTestBrowser oBrowser;
        QVERIFY(!oBrowser->isVisible());
        QCOMPARE(oBrowser.panelText(), u"no article selected"_s);
        QVERIFY(oBrowser.child<QTextEdit>("texteditor")->isReadOnly());
        QCOMPARE(oBrowser->objectName(), u"NodeBrowser"_s);
        QCOMPARE(oBrowser->windowTitle(), QString());
    }

    void theWindowHasItsParts()
    {
        CTestBrowser oBrowser;
        const QWidget* pRightSide = oBrowser.child<QWidget>("RightSide");
        QVERIFY(pRightSide->isAncestorOf(oBrowser.child<QGroupBox>("TableGroup")));
        QVERIFY(pRightSide->isAncestorOf(oBrowser.child<QGroupBox>("EditorGroup")));
        QVERIFY(!pRightSide->isAncestorOf(&oBrowser.tree()));
        QVERIFY(
            oBrowser.child<QWidget>("EditorGroup")->isAncestorOf(oBrowser.child<QWidget>("DateEditGroup")));
        QCOMPARE(oBrowser.child<QGroupBox>("DateEditGroup")->title(), u"Date Selection"_s);
        QCOMPARE(oBrowser.child<QCheckBox>("checkdate")->text(), u"select by date"_s);
        QVERIFY(!oBrowser.child<QCheckBox>("checkdate")->isChecked());
    }

    void theMenuBarHoldsFileShowAndSort()
    {
        CTestBrowser oBrowser;
        QStringList slTitles;
        for (const QAction* pAction : oBrowser.child<QMenuBar>("mainBar")->actions())
            slTitles << pAction->text();
        QCOMPARE(slTitles, (QStringList{u"&File"_s, u"&Show"_s, u"&Sort"_s}));
        QCOMPARE(oBrowser.menuPicture("MenuFile"), QStringList{u"&Quit"_s});
    }

    void aWrongPasswordIsSaidOnceAndTheWindowCanBeShown()
    {
        CDialogs dialogs;
        CStandardOutput output;
        CTestBrowser oBrowser(u"wrong"_s);
        oBrowser.setTables();
        oBrowser.select(1);
        QCOMPARE(output.lines(), QStringList{u"show error"_s});
        QCOMPARE(dialogs.texts().size(), 1);
        QVERIFY(dialogs.texts()[0].startsWith(u"SQL Error: Could not open SOM Database!\n\n"_s));
        oBrowser.show();
        QVERIFY(oBrowser->isVisible());
        QCOMPARE(oBrowser.tablePicture(), QStringList{u""_s});
        QCOMPARE(oBrowser.menuPicture("ShowMenu"), QStringList());
    }

    void theFirstShowHasTheLeastSize()
    {
        CTestBrowser oBrowser;
        oBrowser.show();
        QCOMPARE(oBrowser->size(), QSize(732, 800));
        QCOMPARE(oBrowser->minimumSize(), QSize(732, 800));
    }

    void theTreeTakesNoRoomUntilItIsFilled()
    {
        CTestBrowser oBrowser;
        oBrowser.setTables();
        oBrowser.show();
        QVERIFY(oBrowser.tree().width() <= 1);
        QCOMPARE(oBrowser.child<QWidget>("RightSide")->width(), 732 - 5);
        oBrowser.passHierarchy({{1}, {}});
        QTRY_COMPARE(oBrowser.tree().width(), 340);
        QTRY_COMPARE(oBrowser.child<QWidget>("RightSide")->width(), 732 - 340 - 5);
    }

    void tableAndTextShareTheRightSide()
    {
        CTestBrowser oBrowser;
        oBrowser.show();
        const int iTable = oBrowser.child<QWidget>("TableGroup")->height();
        const int iText = oBrowser.child<QWidget>("EditorGroup")->height();
        QVERIFY(iTable > iText && iText > 200);
        QCOMPARE(iTable + 5 + iText, oBrowser.child<QWidget>("RightSide")->height());
    }

    void theTextTakesTheHeightAndTheDateFieldsShareTheWidth()
    {
        CTestBrowser oBrowser;
        oBrowser.show();
        const QWidget* pDates = oBrowser.child<QWidget>("DateEditGroup");
        QVERIFY(oBrowser.child<QWidget>("texteditor")->height() > pDates->height());
        const int iDifference =
            oBrowser.child<QWidget>("checkdate")->width() - oBrowser.child<QWidget>("dateedit")->width();
        QVERIFY(std::abs(iDifference) <= 1);
        QVERIFY(oBrowser.child<QWidget>("checkdate")->x() < oBrowser.child<QWidget>("dateedit")->x());
    }

    void quitHidesTheWindow()
    {
        CTestBrowser oBrowser;
        oBrowser.show();
        oBrowser.click("MenuFile", u"&Quit"_s);
        QVERIFY(!oBrowser->isVisible());
        oBrowser.show();
        QVERIFY(oBrowser->isVisible());
    }

    void theWindowComesBackWhereAndAsLargeAsItWas()
    {
        CTestBrowser oBrowser;
        oBrowser.show();
        oBrowser->move(120, 90);
        oBrowser->resize(900, 850);
        QTRY_COMPARE(oBrowser->pos(), QPoint(120, 90));
        QTRY_COMPARE(oBrowser->size(), QSize(900, 850));
        for (int i = 0; i < 3; i++) {
            oBrowser->hide();
            oBrowser.show();
            QTRY_COMPARE(oBrowser->pos(), QPoint(120, 90));
            QTRY_COMPARE(oBrowser->size(), QSize(900, 850));
        }
    }

    void aSizeSetWhileTheWindowIsHiddenDoesNotCount()
    {
        CTestBrowser oBrowser;
        oBrowser.show();
        oBrowser->move(120, 90);
        oBrowser->resize(900, 850);
        QTRY_COMPARE(oBrowser->pos(), QPoint(120, 90));
        QTRY_COMPARE(oBrowser->size(), QSize(900, 850));
        oBrowser->hide();
        oBrowser->move(10, 10);
        oBrowser->resize(1000, 900);
        oBrowser.show();
        QTRY_COMPARE(oBrowser->size(), QSize(900, 850));
    }

    void theRightSideStaysHidden()
    {
        CTestBrowser oBrowser;
        oBrowser.setTables();
        oBrowser.passHierarchy({{1}, {}});
        oBrowser.show();
        oBrowser.send(commands::HideTable);
        QVERIFY(!oBrowser.child<QWidget>("table")->isVisible());
        QVERIFY(!oBrowser.child<QWidget>("checkdate")->isVisible());
        QVERIFY(oBrowser.tree().isVisible());
        QTRY_COMPARE(oBrowser.tree().width(), 732);
        oBrowser->hide();
        oBrowser.show();
        QVERIFY(!oBrowser.child<QWidget>("RightSide")->isVisible());
        QVERIFY(oBrowser.tree().isVisible());
    }

    void everyDoubleClickOpensAFurtherViewer()
    {
        CTestBrowser oBrowser;
        showNode(oBrowser);
        oBrowser.doubleClickCell(2, 1);
        oBrowser.doubleClickCell(3, 1);
        const QList<QWidget*> lViewers = CTestBrowser::viewers();
        QStringList slTexts;
        for (const QWidget* pViewer : lViewers) {
            QVERIFY(pViewer->isVisible());
            slTexts << pViewer->findChild<QTextEdit*>(u"fullEdit"_s)->toPlainText();
        }
        slTexts.sort();
        QCOMPARE(slTexts, (QStringList{u"Die Wahl ist vorbei."_s, u"Es schneit in Zürich."_s}));
        // closing hides one and keeps it
        QTest::mouseClick(lViewers[0]->findChild<QPushButton*>(u"exit"_s), Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(CTestBrowser::viewers().size(), 2);
        QVERIFY(!lViewers[0]->isVisible());
        QVERIFY(lViewers[1]->isVisible());
    }

    void aViewerHasRoomForLinesOf80Letters()
    {
        const QString sLine =
            u"The viewer opens so wide that a line of a letter or a message stays in one line."_s;
        QCOMPARE(sLine.size(), 80);
        CTestBrowser oBrowser;
        showNode(oBrowser);
        oBrowser.doubleClickCell(2, 1);
        auto* pText = CTestBrowser::viewers()[0]->findChild<QTextEdit*>(u"fullEdit"_s);
        pText->setText(sLine);
        QTRY_COMPARE(pText->document()->firstBlock().layout()->lineCount(), 1);
    }

    void returnOpensAViewerToo()
    {
        CTestBrowser oBrowser;
        showNode(oBrowser);
        oBrowser.clickCell(2, 1);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(CTestBrowser::viewers().size(), 1);
    }

    void aDoubleClickBesideTheRowsOpensAViewerToo()
    {
        CTestBrowser oBrowser;
        showNode(oBrowser);
        QTest::mouseDClick(
            oBrowser.child<QAbstractScrollArea>("table")->viewport(), Qt::LeftButton, {}, QPoint(5, 300));
        QCOMPARE(CTestBrowser::viewers().size(), 1);
        QCOMPARE(
            CTestBrowser::viewers()[0]->findChild<QTextEdit*>()->toPlainText(), u"no article selected"_s);
    }

private:
    static void showNode(CTestBrowser& oBrowser)
    {
        oBrowser.setTables();
        oBrowser.select(1);
        oBrowser.show();
    }

    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestNodeBrowser, CPrivateDisplay::Manager::Running)
#include "tst_nodebrowser.moc"
