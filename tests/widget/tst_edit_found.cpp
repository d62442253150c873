// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "viewer/CEdit.h"

#include "tests/support/CDialogs.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QInputDialog>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>

using namespace Qt::StringLiterals;

/// The places of a text that was searched for: their marks, and the caption that counts them.
class TestEditFound : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        CStrictTest::init();
        pViewer = std::make_unique<CEdit>();
        pViewer->resize(500, 400);
        pViewer->setText(u"One qt and two QT\nand three Qt."_s);
        pViewer->show();
        QVERIFY(QTest::qWaitForWindowActive(pViewer.get()));
    }

    void cleanup() { pViewer.reset(); }

    void byItselfAViewerHasNoCaption() { QCOMPARE(pViewer->windowTitle(), u""_s); }

    void everyPlaceIsMarked()
    {
        find(u"qt"_s);
        QCOMPARE(marks(), (QStringList{u"4: qt"_s, u"15: QT"_s, u"28: Qt"_s}));
    }

    void theCaptionCounts()
    {
        pViewer->setTitle(u"a letter"_s);
        QStringList slCaptions{pViewer->windowTitle()};
        for (int i = 0; i < 4; i++) {
            find(u"qt"_s);
            slCaptions << pViewer->windowTitle();
        }
        QCOMPARE(slCaptions,
            (QStringList{u"a letter"_s, u"1 of 3 - a letter"_s, u"2 of 3 - a letter"_s,
                u"3 of 3 - a letter"_s, u"3 of 3 - a letter"_s}));
    }

    void placesBeforeTheCursorCountToo()
    {
        setCursor(20);
        find(u"two"_s);
        QCOMPARE(pViewer->windowTitle(), u"0 of 1"_s);
        QCOMPARE(marks(), QStringList{u"11: two"_s});
    }

    void aTextThatIsNowhereLeavesNoMarks()
    {
        find(u"qt"_s);
        find(u"nowhere"_s);
        QCOMPARE(marks(), QStringList());
        QCOMPARE(pViewer->windowTitle(), u""_s);
    }

    void cancellingTakesTheMarksAway()
    {
        find(u"qt"_s);
        const CDialogs dialogs([](QDialog& oDialog) { oDialog.reject(); });
        QTest::keyClick(&text(), Qt::Key_F3);
        QCOMPARE(marks(), QStringList());
        QCOMPARE(pViewer->windowTitle(), u""_s);
    }

    void anotherTextTakesTheMarksAway()
    {
        find(u"qt"_s);
        pViewer->setText(u"other qt"_s);
        QCOMPARE(marks(), QStringList());
        QCOMPARE(pViewer->windowTitle(), u""_s);
    }

    void placesAreThoseThatTheSearchFinds_data()
    {
        QTest::addColumn<QString>("sText");
        QTest::addColumn<QString>("sSought");
        QTest::newRow("one behind the other") << u"aaaa"_s << u"aa"_s;
        QTest::newRow("hard blank") << u"a\u00A0b, a b"_s << u"a b"_s;
        QTest::newRow("rich text") << u"<p>Es <b>schn</b>eit, schneit</p><p>schneit</p>"_s << u"schneit"_s;
        QTest::newRow("not across lines") << u"ab\nab"_s << u"b\na"_s;
        QTest::newRow("signs") << u"a.c abc a.c"_s << u"a.c"_s;
        QTest::newRow("emoji") << u"x \U0001F600 y \U0001F600"_s << u"\U0001F600"_s;
    }

    void placesAreThoseThatTheSearchFinds()
    {
        QFETCH(QString, sText);
        QFETCH(QString, sSought);
        pViewer->setText(sText);
        const QStringList slFound = walk(sSought);
        find(sSought);
        QCOMPARE(marks(), slFound);
    }

    void onlyWhatIsInSightIsMarked()
    {
        // given a text of many screens with a place in every line
        pViewer->setText(u"needle\n"_s.repeated(10000));
        find(u"needle"_s);
        QCOMPARE(pViewer->windowTitle(), u"1 of 10000"_s);
        QCOMPARE(marks(), placesInSight());
        // when the reader goes to the end
        text().moveCursor(QTextCursor::End);
        QTRY_VERIFY(text().viewport()->rect().contains(text().cursorRect()));
        // then what is there has its marks
        QCOMPARE(marks().last(), u"%1: needle"_s.arg(9999 * 7));
        QCOMPARE(marks(), placesInSight());
    }

    void aHigherWindowMarksItsFurtherLines()
    {
        pViewer->setText(u"needle\n"_s.repeated(1000));
        find(u"needle"_s);
        const qsizetype iBefore = marks().size();
        pViewer->resize(500, 800);
        QTRY_VERIFY(marks().size() > iBefore + 10);
        QTRY_COMPARE(marks(), placesInSight());
    }

    void controlAndTheWheelZoom()
    {
        const double fBefore = text().currentFont().pointSizeF();
        QWheelEvent oWheel(QPointF(50, 50), text().viewport()->mapToGlobal(QPointF(50, 50)), QPoint(),
            QPoint(0, 120), Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(text().viewport(), &oWheel);
        QVERIFY(text().font().pointSizeF() > fBefore);
    }

private:
    QTextEdit& text() { return *pViewer->findChild<QTextEdit*>(u"fullEdit"_s); }

    void setCursor(int iPosition)
    {
        QTextCursor oCursor = text().textCursor();
        oCursor.setPosition(iPosition);
        text().setTextCursor(oCursor);
    }

    /// Asks the viewer for a text; closes any other dialog.
    void find(const QString& sText)
    {
        const CDialogs dialogs([&](QDialog& oDialog) {
            if (auto* pInput = qobject_cast<QInputDialog*>(&oDialog))
                pInput->setTextValue(sText);
            oDialog.accept();
        });
        QTest::keyClick(&text(), Qt::Key_F, Qt::ControlModifier);
    }

    static QString placeText(const QTextCursor& oPlace)
    {
        return u"%1: %2"_s.arg(oPlace.selectionStart()).arg(oPlace.selectedText());
    }

    QStringList marks()
    {
        QStringList slMarks;
        for (const QTextEdit::ExtraSelection& oMark : text().extraSelections())
            slMarks << placeText(oMark.cursor);
        return slMarks;
    }

    /// All places as the editor's own search finds them from the beginning; the cursor is there again then.
    QStringList walk(const QString& sText)
    {
        QStringList slPlaces;
        while (text().find(sText))
            slPlaces << placeText(text().textCursor());
        setCursor(0);
        return slPlaces;
    }

    /// The word "needle" of each line of which something is in sight.
    QStringList placesInSight()
    {
        const QRect oSeen = text().viewport()->rect();
        QStringList slPlaces;
        for (int i = text().cursorForPosition(oSeen.topLeft()).blockNumber();
             i <= text().cursorForPosition(oSeen.bottomLeft()).blockNumber(); i++)
            if (const QTextBlock oLine = text().document()->findBlockByNumber(i); !oLine.text().isEmpty())
                slPlaces << u"%1: needle"_s.arg(oLine.position());
        return slPlaces;
    }

    std::unique_ptr<CEdit> pViewer;
};

QTUTILS_WIDGET_TEST_MAIN(TestEditFound, CPrivateDisplay::Manager::Running)
#include "tst_edit_found.moc"
