// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "viewer/CEdit.h"

#include "tests/support/CDialogs.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QClipboard>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTextEdit>

using namespace Qt::StringLiterals;

namespace {

/// Types a text into the find dialog and confirms it; confirms any other dialog.
std::function<void(QDialog&)> typing(const QString& sText)
{
    return [sText](QDialog& oDialog) {
        if (auto* pInput = qobject_cast<QInputDialog*>(&oDialog))
            pInput->setTextValue(sText);
        oDialog.accept();
    };
}

void cancel(QDialog& oDialog)
{
    if (auto* pInput = qobject_cast<QInputDialog*>(&oDialog))
        pInput->setTextValue(u"typed before"_s);
    oDialog.reject();
}

const QString NothingFound = u"Find: Nothing found"_s;

} // namespace

class TestEdit : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        CStrictTest::init();
        pViewer = std::make_unique<CEdit>();
        pViewer->setText(u"One qt and two QT\nand three Qt."_s);
        pViewer->show();
        QVERIFY(QTest::qWaitForWindowActive(pViewer.get()));
    }

    void cleanup() { pViewer.reset(); }

    void aNewViewerHasNoData()
    {
        const CEdit oViewer;
        QCOMPARE(oViewer.findChild<QTextEdit*>(u"fullEdit"_s)->toPlainText(), u"no data recieved"_s);
        QVERIFY(oViewer.isWindow());
    }

    void aViewerWithAParentIsAWindowToo()
    {
        QWidget oParent;
        QVERIFY((new CEdit(&oParent, "viewer"))->isWindow());
    }

    void theTextCannotBeEditedButCopied()
    {
        QTest::keyClicks(&text(), u"x"_s);
        QTest::keyClick(&text(), Qt::Key_Delete);
        QCOMPARE(text().toPlainText(), u"One qt and two QT\nand three Qt."_s);
        QTest::keyClick(&text(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&text(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"One qt and two QT\nand three Qt."_s);
    }

    void exitHidesTheViewerAndKeepsIt()
    {
        QTest::mouseClick(pViewer->findChild<QPushButton*>(u"exit"_s), Qt::LeftButton);
        QVERIFY(!pViewer->isVisible());
        QVERIFY(!pViewer->testAttribute(Qt::WA_DeleteOnClose));
    }

    void theButtonTakesAFifthOfItsRow()
    {
        pViewer->resize(500, 400);
        const auto* pButton = pViewer->findChild<QPushButton*>(u"exit"_s);
        QCOMPARE(pButton->text(), u"Exit"_s);
        QTRY_COMPARE(pButton->width(), 98);
        QCOMPARE(pButton->geometry().right(), pButton->parentWidget()->width() - 1);
    }

    void controlFFindsWhateverTheLetterCase_data()
    {
        QTest::addColumn<QString>("sText");
        QTest::newRow("small") << u"qt"_s;
        QTest::newRow("capital") << u"QT"_s;
        QTest::newRow("mixed") << u"qT"_s;
    }

    void controlFFindsWhateverTheLetterCase()
    {
        QFETCH(QString, sText);
        const CDialogs dialogs(typing(sText));
        QTest::keyClick(&text(), Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(dialogs.texts(), QStringList{u"Find: Find what: []"_s});
        QCOMPARE(found(), u"4: qt"_s);
    }

    void f3WalksThroughTheHitsAndStopsAtTheEnd()
    {
        const CDialogs dialogs(typing(u"qt"_s));
        QTest::keyClick(&text(), Qt::Key_F, Qt::ControlModifier);
        QStringList slFound{found()};
        for (int i = 0; i < 4; i++) {
            QTest::keyClick(&text(), Qt::Key_F3);
            slFound << found();
        }
        QCOMPARE(slFound, (QStringList{u"4: qt"_s, u"15: QT"_s, u"28: Qt"_s, u"28: Qt"_s, u"28: Qt"_s}));
        const QString sAgain = u"Find: Find what: [qt]"_s;
        QCOMPARE(dialogs.texts(),
            (QStringList{
                u"Find: Find what: []"_s, sAgain, sAgain, sAgain, NothingFound, sAgain, NothingFound}));
    }

    void theSearchStartsAtTheCursor()
    {
        QTextCursor oCursor = text().textCursor();
        oCursor.setPosition(10);
        text().setTextCursor(oCursor);
        const CDialogs dialogs(typing(u"qt"_s));
        QTest::keyClick(&text(), Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(found(), u"15: QT"_s);
    }

    void partsOfWordsAreFound()
    {
        const CDialogs dialogs(typing(u"hre"_s));
        QTest::keyClick(&text(), Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(found(), u"23: hre"_s);
    }

    void f3WithoutASearchIsLeftToTheParent()
    {
        const CDialogs dialogs;
        QVERIFY(!accepts(Qt::Key_F3, Qt::NoModifier));
        QCOMPARE(dialogs.texts(), QStringList());
    }

    void f3CountsWithAnyModifier()
    {
        const CDialogs dialogs(typing(u"qt"_s));
        QTest::keyClick(&text(), Qt::Key_F, Qt::ControlModifier);
        QVERIFY(accepts(Qt::Key_F3, Qt::ShiftModifier));
        QCOMPARE(found(), u"15: QT"_s);
    }

    void onlyControlFOpensTheDialog_data()
    {
        QTest::addColumn<int>("iModifiers");
        QTest::newRow("none") << int(Qt::NoModifier);
        QTest::newRow("shift too") << int(Qt::ControlModifier | Qt::ShiftModifier);
        QTest::newRow("alt too") << int(Qt::ControlModifier | Qt::AltModifier);
        QTest::newRow("alt") << int(Qt::AltModifier);
    }

    void onlyControlFOpensTheDialog()
    {
        QFETCH(int, iModifiers);
        const CDialogs dialogs;
        QVERIFY(!accepts(Qt::Key_F, Qt::KeyboardModifiers(iModifiers)));
        QCOMPARE(dialogs.texts(), QStringList());
    }

    void aFindKeyIsAcceptedWhateverTheOutcome()
    {
        const CDialogs dialogs(cancel);
        QVERIFY(accepts(Qt::Key_F, Qt::ControlModifier));
    }

    void cancellingForgetsTheText()
    {
        {
            const CDialogs dialogs(typing(u"qt"_s));
            QTest::keyClick(&text(), Qt::Key_F, Qt::ControlModifier);
        }
        {
            const CDialogs dialogs(cancel);
            QTest::keyClick(&text(), Qt::Key_F3);
        }
        const CDialogs dialogs;
        QVERIFY(!accepts(Qt::Key_F3, Qt::NoModifier));
        QCOMPARE(dialogs.texts(), QStringList());
        QCOMPARE(found(), u"4: qt"_s);
    }

    void anEmptyTextIsNotSearched()
    {
        const CDialogs dialogs(typing(u""_s));
        QTest::keyClick(&text(), Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(dialogs.texts(), QStringList{u"Find: Find what: []"_s});
    }

    void otherKeysAreLeftToTheParent()
    {
        QVERIFY(!accepts(Qt::Key_Escape, Qt::NoModifier));
        QVERIFY(!accepts(Qt::Key_G, Qt::ControlModifier));
        QVERIFY(pViewer->isVisible());
    }

    void aHitIsScrolledIntoSight()
    {
        pViewer->setText(u"line\n"_s.repeated(500) + u"needle\n"_s + u"line\n"_s.repeated(500));
        const CDialogs dialogs(typing(u"needle"_s));
        QTest::keyClick(&text(), Qt::Key_F, Qt::ControlModifier);
        QVERIFY(text().viewport()->rect().intersects(text().cursorRect()));
    }

    void plainTextAfterRichTextIsPlain()
    {
        pViewer->setText(u"<b>bold</b>"_s);
        QCOMPARE(text().toPlainText(), u"bold"_s);
        text().moveCursor(QTextCursor::Right);
        QCOMPARE(text().fontWeight(), int(QFont::Bold));
        pViewer->setText(u"plain"_s);
        text().moveCursor(QTextCursor::Right);
        QCOMPARE(text().fontWeight(), int(QFont::Normal));
    }

private:
    QTextEdit& text() { return *pViewer->findChild<QTextEdit*>(u"fullEdit"_s); }

    /// "position: text" of the selection.
    QString found()
    {
        const QTextCursor oCursor = text().textCursor();
        return u"%1: %2"_s.arg(oCursor.selectionStart()).arg(oCursor.selectedText());
    }

    bool accepts(Qt::Key eKey, Qt::KeyboardModifiers eModifiers)
    {
        QKeyEvent oEvent(QEvent::KeyPress, eKey, eModifiers);
        QCoreApplication::sendEvent(pViewer.get(), &oEvent);
        return oEvent.isAccepted();
    }

    std::unique_ptr<CEdit> pViewer;
};

QTUTILS_WIDGET_TEST_MAIN(TestEdit, CPrivateDisplay::Manager::Running)
#include "tst_edit.moc"
