// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// What a search in the full text finds.
class TestModuleFind : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        oServer.sql(QStringLiteral(
            "INSERT INTO news.document (id, date, title, text) VALUES"
            " (10, '2001-01-01', 'case', 'One qt and two QT\\nand three Qt.'),"
            " (11, '2001-01-02', 'umlauts', 'Größe in ZÜRICH und Zürich\\nist kein Ärger.'),"
            " (12, '2001-01-03', 'signs', 'abc a.c a*c  end'),"
            " (13, '2001-01-04', 'rich', 'two <b>bold</b> words<p>and more</p>'),"
            " (14, '2001-01-05', 'long', CONCAT(REPEAT('more\\n', 500), 'needle', REPEAT('\\nmore', 30000), "
            "' needle at the end')),"
            " (15, '2001-01-06', 'overlap', 'aaaa');"
            "INSERT INTO som.news_train SELECT 3, 0.5, id FROM news.document WHERE id > 9"));
        // A keyboard with umlauts.
        QCOMPARE(QProcess::execute(QStringLiteral("setxkbmap"), {QStringLiteral("de")}), 0);
    }

    void aTextIsFoundFromTheBeginning_data()
    {
        QTest::addColumn<int>("iRow");
        QTest::addColumn<QByteArray>("oText");
        QTest::addColumn<QByteArray>("oFound");
        QTest::newRow("small letters") << 0 << QByteArray("qt") << QByteArray("4-6: qt");
        QTest::newRow("capital letters") << 0 << QByteArray("QT") << QByteArray("4-6: qt");
        QTest::newRow("both") << 0 << QByteArray("qT") << QByteArray("4-6: qt");
        QTest::newRow("part of a word") << 0 << QByteArray("hre") << QByteArray("23-26: hre");
        QTest::newRow("several words") << 0 << QByteArray("AND Three") << QByteArray("18-27: and three");
        QTest::newRow("a blank") << 0 << QByteArray(" ") << QByteArray("3-4:  ");
        QTest::newRow("small umlauts") << 1 << QByteArray("zürich") << QByteArray("9-15: ZÜRICH");
        QTest::newRow("capital umlauts") << 1 << QByteArray("ÄRGER") << QByteArray("36-41: Ärger");
        QTest::newRow("sharp s") << 1 << QByteArray("ße") << QByteArray("3-5: ße");
        QTest::newRow("point") << 2 << QByteArray("a.c") << QByteArray("4-7: a.c");
        QTest::newRow("asterisk") << 2 << QByteArray("a*C") << QByteArray("8-11: a*c");
        QTest::newRow("two blanks") << 2 << QByteArray("  ") << QByteArray("11-13:   ");
        QTest::newRow("over markup") << 3 << QByteArray("o bold w") << QByteArray("2-10: o bold w");
    }

    void aTextIsFoundFromTheBeginning()
    {
        QFETCH(int, iRow);
        QFETCH(QByteArray, oText);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst, iRow);
        oAnalyst.find(oText);
        QTEST(oAnalyst.selectedText("0/fullEdit"), "oFound");
        QCOMPARE(oAnalyst.dialog(), "none");
    }

    void whatIsNotThereIsNotFound_data()
    {
        QTest::addColumn<int>("iRow");
        QTest::addColumn<QByteArray>("oText");
        QTest::newRow("no such word") << 0 << QByteArray("four");
        QTest::newRow("over the end of a line") << 0 << QByteArray("two QT and");
        QTest::newRow("over the end of a line, joined") << 0 << QByteArray("two QTand");
        QTest::newRow("vowel for umlaut") << 1 << QByteArray("zurich");
        QTest::newRow("double s for sharp s") << 1 << QByteArray("grösse");
        QTest::newRow("pattern") << 2 << QByteArray("a.*");
        QTest::newRow("three blanks") << 2 << QByteArray("   ");
        QTest::newRow("tag") << 3 << QByteArray("<b>");
        QTest::newRow("over the end of a paragraph") << 3 << QByteArray("words and");
    }

    void whatIsNotThereIsNotFound()
    {
        QFETCH(int, iRow);
        QFETCH(QByteArray, oText);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst, iRow);
        oAnalyst.find(oText);
        QCOMPARE(oAnalyst.dialog(), "Find: Nothing found");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "0-0: ");
    }

    void furtherSearchesGoOnBehindTheHitAndStopAtTheEnd()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst, 0);
        oAnalyst.find("qt");
        for (const char* pcFound : {"15-17: QT", "28-30: Qt"}) {
            // when
            findAgain(oAnalyst);
            // then
            QCOMPARE(oAnalyst.dialog(), "none");
            QCOMPARE(oAnalyst.selectedText("0/fullEdit"), pcFound);
        }
        for (int i = 0; i < 2; i++) {
            // when
            findAgain(oAnalyst);
            // then
            QCOMPARE(oAnalyst.dialog(), "Find: Nothing found");
            QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "28-30: Qt");
            closeBox(oAnalyst);
        }
        // when: a text that is there, but before
        oAnalyst.find("one");
        // then
        QCOMPARE(oAnalyst.dialog(), "Find: Nothing found");
    }

    void overlappingHitsCountOnce()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst, 5);
        oAnalyst.find("aa");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "0-2: aa");
        findAgain(oAnalyst);
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "2-4: aa");
        findAgain(oAnalyst);
        QCOMPARE(oAnalyst.dialog(), "Find: Nothing found");
    }

    void aSearchForAnotherTextGoesOnBehindTheHit()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst, 0);
        oAnalyst.find("two");
        oAnalyst.find("and");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "18-21: and");
    }

    void aClickIntoTheTextMovesTheStart()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst, 0);
        const QPoint oOrigin = oAnalyst.part("0/fullEdit").topLeft();
        // when: the end of the first line
        oScreen.click(oOrigin + QPoint(400, 12));
        oAnalyst.find("qt");
        // then
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "28-30: Qt");
        // when: the beginning
        oScreen.click(oOrigin + QPoint(2, 12));
        oAnalyst.find("qt");
        // then
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "4-6: qt");
    }

    void aSearchStartsBehindWhatIsSelected()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst, 0);
        oScreen.doubleClick(oAnalyst.part("0/fullEdit").topLeft() + QPoint(12, 12));
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "0-3: One");
        oAnalyst.find("ne");
        QCOMPARE(oAnalyst.dialog(), "Find: Nothing found");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "0-3: One");
    }

    void aHitIsScrolledIntoSight()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst, 4);
        const QRect oText = oAnalyst.part("0/fullEdit");
        QCOMPARE(oScreen.pixels(Selection, oText), 0);
        // when
        oAnalyst.find("needle");
        // then
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "2500-2506: needle");
        QTUTILS_WAIT_FOR(oScreen.pixels(Selection, oText) > 100);
        // when
        findAgain(oAnalyst);
        // then
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "152507-152513: needle");
        QTUTILS_WAIT_FOR(oScreen.pixels(Selection, oText) > 100);
        // when: the reader goes elsewhere, and the hit stays where it is
        oAnalyst.press({"Prior", "Prior"});
        QTUTILS_WAIT_FOR(oScreen.pixels(Selection, oText) == 0);
        findAgain(oAnalyst);
        // then
        QCOMPARE(oAnalyst.dialog(), "Find: Nothing found");
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "152507-152513: needle");
    }

    void everyViewerSearchesItsOwnText()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        openViewer(oAnalyst, 0);
        oAnalyst.find("qt");
        oAnalyst.openViewer(2);
        // when: F3 without a search in this one
        oAnalyst.press({"F3"});
        // then
        QCOMPARE(oAnalyst.dialog(), "none");
        // when
        oAnalyst.find("end");
        // then
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "4-6: qt");
        QCOMPARE(oAnalyst.selectedText("1/fullEdit"), "13-16: end");
        // when
        oAnalyst.click(oAnalyst.part("1/exit"));
        QCOMPARE(oAnalyst.viewers(), QByteArrayList({"shown", "hidden"}));
        oAnalyst.click(oAnalyst.part("0/fullEdit"));
        QTUTILS_WAIT_FOR(oAnalyst.focus() == "0/fullEdit");
        oAnalyst.press({"F3"});
        // then
        QCOMPARE(oAnalyst.dialog(), "Find: Find what: [qt]");
    }

private:
    static constexpr QRgb Selection = qRgb(48, 140, 198); ///< the style's colour

    static void openViewer(CAnalyst& oAnalyst, int iRow)
    {
        oAnalyst.startAt(3);
        oAnalyst.openViewer(iRow);
    }

    static void findAgain(CAnalyst& oAnalyst)
    {
        oAnalyst.askWhatToFind("F3");
        oAnalyst.press({"Return"});
    }

    static void closeBox(CAnalyst& oAnalyst)
    {
        QTUTILS_WAIT_FOR(oAnalyst.focus() == "QPushButton");
        oAnalyst.press({"Escape"});
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleFind)
#include "tst_module_find.moc"
