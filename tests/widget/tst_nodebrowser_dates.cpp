// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestBrowser.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QCheckBox>
#include <QDateTimeEdit>

using namespace Qt::StringLiterals;

namespace {

const QString Head = u"SELECT node, dist, document.* FROM news_train, news.document "
                     "WHERE news.document.id=news_train.item AND node="_s;
const QString Unfiltered = Head + u"1 ORDER BY date"_s;

QString filtered(const QString& sCondition, int iNode = 1)
{
    return Head + QString::number(iNode) + u" AND news.document.date "_s + sCondition + u" ORDER BY date"_s;
}

} // namespace

/// The date filter.
class TestNodeBrowserDates : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void init()
    {
        CStrictTest::init();
        pBrowser = std::make_unique<CTestBrowser>();
        pBrowser->setTables();
        pBrowser->select(1);
        pBrowser->show();
        oServer.startLog();
    }

    void cleanup() { pBrowser.reset(); }

    void anUntouchedFieldFiltersNothing()
    {
        clickBox();
        QVERIFY(box().isChecked());
        QCOMPARE(oServer.log(), QStringList{Unfiltered});
        QCOMPARE(pBrowser->tablePicture().size(), 6);
    }

    void aDayFiltersTheDay()
    {
        clickBox();
        field().setDateTime(QDateTime(QDate(2005, 3, 1), QTime(0, 0)));
        QCOMPARE(oServer.log().last(), filtered(u"like \"2005-03-01%\""_s));
        QCOMPARE(pBrowser->tablePicture(),
            (QStringList{
                u"date | title"_s, u"01.03.05 09:30 | Neue Brücke"_s, u"01.03.05 13:00 | Schnee im März"_s}));
    }

    void anInstantFiltersTheInstant_data()
    {
        QTest::addColumn<QTime>("oTime");
        QTest::addColumn<QString>("sCondition");
        QTest::newRow("a second after midnight") << QTime(0, 0, 1) << u"=\"2005-03-01T00:00:01\""_s;
        QTest::newRow("a document's time") << QTime(13, 0) << u"=\"2005-03-01T13:00:00\""_s;
    }

    void anInstantFiltersTheInstant()
    {
        QFETCH(QTime, oTime);
        QFETCH(QString, sCondition);
        clickBox();
        field().setDateTime(QDateTime(QDate(2005, 3, 1), oTime));
        QCOMPARE(oServer.log().last(), filtered(sCondition));
    }

    void aChangeIsOneStatement()
    {
        clickBox();
        field().setDateTime(QDateTime(QDate(2005, 3, 1), QTime(0, 0)));
        QCOMPARE(oServer.log(), (QStringList{Unfiltered, filtered(u"like \"2005-03-01%\""_s)}));
    }

    void withTheBoxUncheckedAChangeFiltersNothing()
    {
        field().setDateTime(QDateTime(QDate(2005, 3, 1), QTime(0, 0)));
        QCOMPARE(oServer.log(), QStringList{Unfiltered});
        clickBox();
        clickBox();
        QCOMPARE(oServer.log(), (QStringList{Unfiltered, filtered(u"like \"2005-03-01%\""_s), Unfiltered}));
        QVERIFY(!box().isChecked());
    }

    void theFilterStaysForTheNextNode()
    {
        clickBox();
        field().setDateTime(QDateTime(QDate(2006, 5, 10), QTime(0, 0)));
        pBrowser->select(2);
        QCOMPARE(oServer.log().last(), filtered(u"like \"2006-05-10%\""_s, 2));
        QCOMPARE(pBrowser->tablePicture().size(), 2);
    }

    void digitsFillTheWholeField()
    {
        clickBox();
        field().setFocus();
        field().setSelectedSection(QDateTimeEdit::DaySection);
        QTest::keyClicks(&field(), u"10052006123045"_s);
        QCOMPARE(field().dateTime(), QDateTime(QDate(2006, 5, 10), QTime(12, 30, 45)));
        QCOMPARE(oServer.log().last(), filtered(u"=\"2006-05-10T12:30:45\""_s));
    }

    void theFieldShowsDayAndTimeInFull() { QCOMPARE(field().displayFormat(), u"dd.MM.yyyy HH:mm:ss"_s); }

private:
    QCheckBox& box() { return *pBrowser->child<QCheckBox>("checkdate"); }
    QDateTimeEdit& field() { return *pBrowser->child<QDateTimeEdit>("dateedit"); }
    void clickBox() { QTest::mouseClick(&box(), Qt::LeftButton, {}, QPoint(8, box().height() / 2)); }

    CPrivateServer oServer;
    std::unique_ptr<CTestBrowser> pBrowser;
};

QTUTILS_WIDGET_TEST_MAIN(TestNodeBrowserDates, CPrivateDisplay::Manager::Running)
#include "tst_nodebrowser_dates.moc"
