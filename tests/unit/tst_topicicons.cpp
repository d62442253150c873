// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "tree/topicicons.h"

#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QDir>
#include <QPixmap>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class TestTopicIcons : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        CStrictTest::init();
        pFolder = std::make_unique<QTemporaryDir>();
        QDir(pFolder->path()).mkdir(u"Images"_s);
        QDir::setCurrent(pFolder->path());
    }

    void cleanup() { QDir::setCurrent(QDir::rootPath()); }

    void aSignIsScaledByAWholeNumber_data()
    {
        QTest::addColumn<QSize>("oSign");
        QTest::addColumn<int>("iRowHeight");
        QTest::addColumn<QSize>("oScaled");
        QTest::newRow("one row") << QSize(8, 8) << 8 << QSize(8, 8);
        QTest::newRow("one row and a half") << QSize(12, 12) << 8 << QSize(12, 12);
        QTest::newRow("almost two rows") << QSize(15, 15) << 8 << QSize(15, 15);
        QTest::newRow("two rows") << QSize(16, 16) << 8 << QSize(8, 8);
        QTest::newRow("three rows") << QSize(36, 36) << 12 << QSize(12, 12);
        QTest::newRow("four rows") << QSize(32, 32) << 8 << QSize(8, 8);
        QTest::newRow("halves go up") << QSize(13, 13) << 6 << QSize(7, 7);
        QTest::newRow("the height decides") << QSize(40, 20) << 10 << QSize(20, 10);
        QTest::newRow("row of no height") << QSize(5, 5) << 0 << QSize(1, 1);
    }

    void aSignIsScaledByAWholeNumber()
    {
        QFETCH(QSize, oSign);
        QFETCH(int, iRowHeight);
        draw(3, oSign);
        const topicicons::Icons oIcons = topicicons::load(iRowHeight);
        QTEST(oIcons.forTopic(3).availableSizes().value(0), "oScaled");
        QTEST(oIcons.oLargest, "oScaled");
    }

    void aSignLowerThanARowIsLeftOut()
    {
        draw(3, QSize(7, 7));
        const topicicons::Icons oIcons = topicicons::load(8);
        QVERIFY(oIcons.forTopic(3).isNull());
        QCOMPARE(oIcons.oLargest, QSize(1, 1));
    }

    void aMissingFileGivesNoSignAndNoMessage()
    {
        draw(2, QSize(8, 8));
        const topicicons::Icons oIcons = topicicons::load(8);
        QVERIFY(!oIcons.forTopic(2).isNull());
        QVERIFY(oIcons.forTopic(3).isNull());
    }

    void aBrokenFileGivesNoSign()
    {
        QFile oFile(u"Images/0.xpm"_s);
        QVERIFY(oFile.open(QIODevice::WriteOnly));
        oFile.write("no picture");
        oFile.close();
        QVERIFY(topicicons::load(8).forTopic(0).isNull());
    }

    void thereAre21Signs()
    {
        for (int i = 0; i <= 21; i++)
            draw(i, QSize(10 + i, 10));
        const topicicons::Icons oIcons = topicicons::load(10);
        for (int i = 0; i <= 20; i++)
            QCOMPARE(oIcons.forTopic(i).availableSizes().value(0), QSize(10 + i, 10));
        QCOMPARE(oIcons.oLargest, QSize(30, 10));
    }

    void greaterTopicsShareTheLastSign()
    {
        draw(20, QSize(8, 8));
        const topicicons::Icons oIcons = topicicons::load(8);
        QVERIFY(!oIcons.forTopic(20).isNull());
        for (const int iTopic : {21, 25, std::numeric_limits<int>::max()})
            QCOMPARE(oIcons.forTopic(iTopic).cacheKey(), oIcons.forTopic(20).cacheKey());
    }

    void aNegativeTopicHasNoSign()
    {
        draw(0, QSize(8, 8));
        QVERIFY(topicicons::load(8).forTopic(-1).isNull());
    }

private:
    static void draw(int iTopic, QSize oSize)
    {
        QPixmap oPixmap(oSize);
        oPixmap.fill(Qt::red);
        QVERIFY(oPixmap.save(u"Images/%1.xpm"_s.arg(iTopic), "XPM"));
    }

    std::unique_ptr<QTemporaryDir> pFolder;
};

QTUTILS_OFFSCREEN_TEST_MAIN(TestTopicIcons)
#include "tst_topicicons.moc"
