// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "signs.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

/// Files of signs that are none, and topics that are no numbers.
class TestModuleBadInputIcons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Topics of nodes 0 to 3 in the keyword table: 5, 3, 25, 1.
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void init()
    {
        pFolder = std::make_unique<QTemporaryDir>();
        QDir::setCurrent(pFolder->path());
        makeSigns();
    }

    void cleanup() { QDir::setCurrent(QDir::rootPath()); }

    void aFileThatIsNoSignIsLeftOut_data()
    {
        QTest::addColumn<QByteArray>("oContent");
        QTest::addColumn<QByteArray>("oLine"); ///< what the toolkit says, if anything
        const QByteArray oHeader = "/* XPM */\nstatic char* a[] = {\n\"28 28 1 1\",\n\"a c #ff0000\",\n";
        const auto row = [](const char* pcName, const QByteArray& oContent, const QByteArray& oLine = {}) {
            QTest::newRow(pcName) << oContent << oLine;
        };
        row("empty", "");
        row("a first line only", "/* XPM */\n");
        row("without its rows", oHeader, "qt.gui.imageio: XPM pixels missing on image line 0");
        row("NULs", QByteArray(100000, '\0'));
        row("a megabyte of letters", QByteArray(1000000, 'x'));
        row("more pixels than there is memory", QByteArray(oHeader).replace("28 28", "99999 99999"));
        row("fewer pixels than none", QByteArray(oHeader).replace("28 28", "-28 -28"));
        row("more colors than rows", QByteArray(oHeader).replace("1 1", "2000000000 1"));
        row("too many letters a pixel", QByteArray(oHeader).replace("1 1", "1 2000000000"));
        row("PNG cut short", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16), "libpng error: Read Error");
    }

    void aFileThatIsNoSignIsLeftOut()
    {
        QFETCH(QByteArray, oContent);
        QFETCH(QByteArray, oLine);
        QFile oFile(signs::file(3));
        QVERIFY(oFile.open(QIODevice::WriteOnly | QIODevice::Truncate));
        oFile.write(oContent);
        oFile.close();
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oHost.announceErrors(QByteArrayList(oLine.isEmpty() ? 0 : 1, oLine));
        QTUTILS_WAIT_FOR(signs::seen(oAnalyst) == QByteArrayList({"0", "none", "20", "1"}));
    }

    void whatIsNoFileIsLeftOut_data()
    {
        QTest::addColumn<QString>("sTarget"); ///< of a link; a folder without one
        QTest::newRow("folder") << QString();
        QTest::newRow("link to nothing") << u"nowhere"_s;
        QTest::newRow("link to itself") << u"3.xpm"_s;
        QTest::newRow("link to a folder") << u"."_s;
    }

    void whatIsNoFileIsLeftOut()
    {
        QFETCH(QString, sTarget);
        QFile::remove(signs::file(3));
        QVERIFY(sTarget.isEmpty() ? QDir().mkdir(signs::file(3)) : QFile::link(sTarget, signs::file(3)));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        QTUTILS_WAIT_FOR(signs::seen(oAnalyst) == QByteArrayList({"0", "none", "20", "1"}));
    }

    void imagesMayBeAFile()
    {
        QDir(u"Images"_s).removeRecursively();
        QFile oFile(u"Images"_s);
        QVERIFY(oFile.open(QIODevice::WriteOnly));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        waitForPaint(oAnalyst);
        QCOMPARE(signs::seen(oAnalyst), NoSigns);
    }

    void withoutAnySignThatCanBeReadThereAreTextsOnly_data()
    {
        QTest::addColumn<QByteArray>("oContent"); ///< of all files
        QTest::newRow("empty") << ""_ba;
        QTest::newRow("letters") << "no picture"_ba;
        QTest::newRow("cut short") << "/* XPM */\n"_ba;
    }

    void withoutAnySignThatCanBeReadThereAreTextsOnly()
    {
        QFETCH(QByteArray, oContent);
        for (int i = 0; i <= 20; i++) {
            QFile oFile(signs::file(i));
            QVERIFY(oFile.open(QIODevice::WriteOnly | QIODevice::Truncate));
            oFile.write(oContent);
        }
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        waitForPaint(oAnalyst);
        QCOMPARE(signs::seen(oAnalyst), NoSigns);
        QVERIFY(oAnalyst.item(1).height() < 28);
        QCOMPARE(oAnalyst.tree()[1], "  - 1 | red, green, blue");
    }

    void aHugeSignIsReduced()
    {
        drawHuge(5000);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        QTUTILS_WAIT_FOR(signs::seen(oAnalyst) == QByteArrayList({"0", "3", "20", "1"}));
        QVERIFY(oAnalyst.item(1).height() < 30);
    }

    void aSignThatIsTooHugeIsLeftOut()
    {
        drawHuge(10000);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oHost.announceErrors({"qt.gui.imageio: QImageIOHandler: Rejecting image as it exceeds the current "
                              "allocation limit of 128 megabytes"});
        QTUTILS_WAIT_FOR(signs::seen(oAnalyst) == QByteArrayList({"0", "none", "20", "1"}));
    }

    void theWorkingDirectoryIsThatOfTheMomentOfTheHierarchy()
    {
        // given
        const QTemporaryDir oOther;
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.command({"folder", oOther.path().toUtf8()});
        treehost::show(oAnalyst, Nodes);
        waitForPaint(oAnalyst);
        QCOMPARE(signs::seen(oAnalyst), NoSigns);
        // when
        QCOMPARE(oHost.command({"folder", pFolder->path().toUtf8()}), "there");
        treehost::pass(oHost, Nodes);
        // then
        QTUTILS_WAIT_FOR(signs::seen(oAnalyst) == QByteArrayList({"0", "3", "20", "1"}));
    }

    void aWorkingDirectoryThatIsGoneHasNoSigns()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        QTUTILS_WAIT_FOR(signs::seen(oAnalyst).first() == "0");
        // when
        QDir::setCurrent(QDir::rootPath());
        QVERIFY(QDir(pFolder->path()).removeRecursively());
        treehost::pass(oHost, Nodes);
        // then
        QTUTILS_WAIT_FOR(signs::seen(oAnalyst) == NoSigns);
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
    }

    void aTopicOfAnyTypeIsANumber_data()
    {
        QTest::addColumn<QString>("sType");
        QTest::addColumn<QString>("sTopic");
        QTest::addColumn<QByteArray>("oSign");
        QTest::newRow("text") << u"TEXT"_s << u"'3'"_s << "3"_ba;
        QTest::newRow("no number") << u"TEXT"_s << u"'three'"_s << "0"_ba;
        QTest::newRow("double") << u"DOUBLE"_s << u"3.0"_s << "3"_ba;
        QTest::newRow("decimal") << u"DECIMAL(8,3)"_s << u"19.000"_s << "19"_ba;
        QTest::newRow("day") << u"DATE"_s << u"'2005-03-01'"_s << "0"_ba;
        QTest::newRow("bytes") << u"BLOB"_s << u"'12'"_s << "12"_ba;
        QTest::newRow("least") << u"INT"_s << u"-2147483648"_s << "none"_ba;
        QTest::newRow("unsigned") << u"INT UNSIGNED"_s << u"2147483647"_s << "20"_ba;
    }

    void aTopicOfAnyTypeIsANumber()
    {
        // given
        QFETCH(QString, sType);
        QFETCH(QString, sTopic);
        QFETCH(QByteArray, oSign);
        oServer.sql(u"CREATE OR REPLACE TABLE som.odd_som (_assigned_topic %1, _keywords TEXT); INSERT INTO "
                    "som.odd_som VALUES (%2, 'a'), (%2, 'b')"_s.arg(sType, sTopic));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        treehost::show(oAnalyst, {"1", ""}, "odd_train");
        // then
        QTUTILS_WAIT_FOR(signs::seen(oAnalyst) == QByteArrayList({"0", oSign}));
    }

private:
    static inline const QByteArrayList Nodes{"1,2,3", "", "", ""};
    static inline const QByteArrayList NoSigns{"none", "none", "none", "none"};

    // One of topic 3, so many pixels high and wide.
    static void drawHuge(int iSize)
    {
        QImage oSign(iSize, iSize, QImage::Format_Mono);
        oSign.setColorTable({signs::color(3), signs::color(3)});
        oSign.fill(0);
        QVERIFY(oSign.save(signs::file(3), "PNG"));
    }

    // Signs two rows high, each in a colour of its own.
    static void makeSigns()
    {
        QDir().mkdir(u"Images"_s);
        for (int i = 0; i <= 20; i++)
            signs::draw(i, {28, 28});
    }

    void waitForPaint(CAnalyst& oAnalyst) const
    {
        oAnalyst.click(oAnalyst.item(2));
        QTUTILS_WAIT_FOR(oScreen.pixels(qRgb(48, 140, 198)) > 500); // the highlight of the widgets' style
    }

    std::unique_ptr<QTemporaryDir> pFolder;
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleBadInputIcons)
#include "tst_module_badinput_icons.moc"
