// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "signs.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

#include <QDir>
#include <QFile>

/// The topics' signs in the tree, as they are painted.
class TestModuleTreeIcons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Topics of nodes 0 to 3 in the keyword table: 5, 3, 25, 1.
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    // Signs two rows high, each in a colour of its own.
    void init()
    {
        pFolder = std::make_unique<QTemporaryDir>();
        QDir::setCurrent(pFolder->path());
        QDir().mkdir(QStringLiteral("Images"));
        for (int i = 0; i <= 21; i++)
            signs::draw(i, {28, 28});
    }

    void cleanup() { QDir::setCurrent(QDir::rootPath()); }

    void everyNodeShowsTheSignOfItsTopic()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        QTUTILS_WAIT_FOR(oScreen.pixels(signs::color(1)) == 14 * 14);
        QCOMPARE(signs::seen(oAnalyst), QByteArrayList({"0", "3", "20", "1"}));
        for (const int iTopic : {2, 4, 5, 19, 21})
            QCOMPARE(oScreen.pixels(signs::color(iTopic)), 0);
    }

    void everyTopicHasItsSign_data()
    {
        QTest::addColumn<QByteArray>("oTopic");
        QTest::addColumn<QByteArray>("oSign");
        QTest::newRow("0") << QByteArray("0") << QByteArray("0");
        QTest::newRow("12") << QByteArray("12") << QByteArray("12");
        QTest::newRow("19") << QByteArray("19") << QByteArray("19");
        QTest::newRow("20") << QByteArray("20") << QByteArray("20");
        QTest::newRow("21 shares the last") << QByteArray("21") << QByteArray("20");
        QTest::newRow("a great one shares the last") << QByteArray("2147483647") << QByteArray("20");
        QTest::newRow("none is the first") << QByteArray("NULL") << QByteArray("0");
        QTest::newRow("a negative one has none") << QByteArray("-1") << QByteArray("none");
    }

    void everyTopicHasItsSign()
    {
        // given
        QFETCH(QByteArray, oTopic);
        oServer.sql(QStringLiteral("CREATE OR REPLACE TABLE som.one_som (_assigned_topic INT, _keywords "
                                   "TEXT); INSERT INTO som.one_som VALUES (7, 'a'), (%1, 'b')")
                        .arg(QString::fromLatin1(oTopic)));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        treehost::show(oAnalyst, {"1", ""}, "one_train");
        // then
        QTUTILS_WAIT_FOR(signs::seen(oAnalyst).first() == "0");
        QTEST(signs::seen(oAnalyst).last(), "oSign");
    }

    void aSignIsScaledByAWholeNumber_data()
    {
        QTest::addColumn<QSize>("oSize");
        QTest::addColumn<QSize>("oShown");
        // A row without a sign is 13 pixels high or about that.
        QTest::newRow("between one row and two: kept") << QSize(20, 20) << QSize(20, 20);
        QTest::newRow("two rows: halved") << QSize(28, 28) << QSize(14, 14);
        QTest::newRow("nearly three rows: halved") << QSize(34, 34) << QSize(17, 17);
        QTest::newRow("three rows: a third") << QSize(45, 45) << QSize(15, 15);
        QTest::newRow("wide: by its height") << QSize(56, 28) << QSize(28, 14);
        QTest::newRow("narrow: by its height") << QSize(10, 45) << QSize(3, 15);
        QTest::newRow("lower than a row: none") << QSize(28, 8) << QSize(0, 0);
    }

    void aSignIsScaledByAWholeNumber()
    {
        // given
        QFETCH(QSize, oSize);
        QFETCH(QSize, oShown);
        signs::draw(1, oSize);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        treehost::show(oAnalyst, Nodes);
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(signs::color(3)) == 14 * 14);
        QCOMPARE(oScreen.pixels(signs::color(1)), oShown.width() * oShown.height());
        // when
        treehost::pass(oHost, Nodes);
        QVERIFY(oAnalyst.item(3).height() >= oShown.height());
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(signs::color(3)) == 14 * 14);
        QCOMPARE(oScreen.pixels(signs::color(1)), oShown.width() * oShown.height());
    }

    void aRowIsAsHighAsItsSign()
    {
        signs::draw(1, {20, 20});
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        QVERIFY(oAnalyst.item(3).height() >= 20);
        QVERIFY(oAnalyst.item(2).height() < 20);
    }

    void theCurrentNodeKeepsItsSignsColor()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oAnalyst.click(oAnalyst.item(3));
        QTUTILS_WAIT_FOR(oScreen.pixels(Highlight) > 500);
        QCOMPARE(oScreen.pixels(signs::color(1)), 14 * 14);
    }

    void aMissingSignIsLeftOut()
    {
        QFile::remove(signs::file(3));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        QTUTILS_WAIT_FOR(oScreen.pixels(signs::color(1)) == 14 * 14);
        QCOMPARE(signs::seen(oAnalyst), QByteArrayList({"0", "none", "20", "1"}));
    }

    void aBrokenSignIsLeftOut()
    {
        QFile oFile(signs::file(3));
        QVERIFY(oFile.open(QIODevice::WriteOnly | QIODevice::Truncate));
        oFile.write("no picture");
        oFile.close();
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        QTUTILS_WAIT_FOR(oScreen.pixels(signs::color(1)) == 14 * 14);
        QCOMPARE(signs::seen(oAnalyst), QByteArrayList({"0", "none", "20", "1"}));
    }

    void theFormatIsThatOfTheFile()
    {
        signs::draw(3, {28, 28}, "PNG");
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        QTUTILS_WAIT_FOR(oScreen.pixels(signs::color(3)) == 14 * 14);
    }

    void withoutAFolderOfSignsThereAreTextsOnly()
    {
        // given
        QDir(QStringLiteral("Images")).removeRecursively();
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        treehost::show(oAnalyst, Nodes);
        // then
        QCOMPARE(signs::seen(oAnalyst), QByteArrayList({"none", "none", "none", "none"}));
        QCOMPARE(oAnalyst.tree().size(), 4);
        QVERIFY(oAnalyst.item(3).height() < 20);
    }

    void withoutKeywordsThereAreNoSigns()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.construct();
        oHost.passHierarchy(Nodes);
        oAnalyst.showWindow();
        QCOMPARE(signs::seen(oAnalyst), QByteArrayList({"none", "none", "none", "none"}));
    }

    void everyHierarchyReadsTheSignsAnew()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        QTUTILS_WAIT_FOR(oScreen.pixels(signs::color(1)) == 14 * 14);
        QFile::remove(signs::file(3));
        QFile::remove(signs::file(1));
        signs::draw(7, {30, 30});
        QVERIFY(QFile::rename(signs::file(7), signs::file(1)));
        // when
        treehost::pass(oHost, Nodes);
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(signs::color(7)) == 15 * 15);
        QCOMPARE(signs::seen(oAnalyst), QByteArrayList({"0", "none", "20", "7"}));
    }

private:
    static constexpr QRgb Highlight = qRgb(48, 140, 198); // of the widgets' style
    static inline const QByteArrayList Nodes{"1,2,3", "", "", ""};

    std::unique_ptr<QTemporaryDir> pFolder;
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleTreeIcons)
#include "tst_module_treeicons.moc"
