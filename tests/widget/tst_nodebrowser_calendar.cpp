// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestBrowser.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QToolButton>
#include <QTreeView>

using namespace Qt::StringLiterals;

/// The calendar of the date field.
class TestNodeBrowserCalendar : public CStrictTest
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
        pBrowser->child<QCheckBox>("checkdate")->setChecked(true);
        field().setFocus();
    }

    void cleanup() { pBrowser.reset(); }

    void itsSignOpensTheCalendar()
    {
        QTest::mouseClick(field().findChild<QToolButton*>(), Qt::LeftButton);
        QTRY_VERIFY(calendar() != nullptr && calendar()->isVisible());
    }

    void theWholeDateIsInSight()
    {
        pBrowser->passHierarchy({{1}, {}}); // the tree takes its room
        QTRY_COMPARE(pBrowser->tree().width(), 340);
        const auto* pEdit = field().findChild<QLineEdit*>();
        const auto* pSign = field().findChild<QToolButton*>();
        QVERIFY(pEdit->fontMetrics().horizontalAdvance(u"30.12.2000 20:00:00"_s) < pSign->x());
    }

    void keysOpenTheCalendar_data()
    {
        QTest::addColumn<int>("iKey");
        QTest::addColumn<int>("iModifiers");
        QTest::addColumn<bool>("bOpens");
        QTest::newRow("F4") << int(Qt::Key_F4) << 0 << true;
        QTest::newRow("Alt+Down") << int(Qt::Key_Down) << int(Qt::AltModifier) << true;
        QTest::newRow("Shift+F4") << int(Qt::Key_F4) << int(Qt::ShiftModifier) << false;
    }

    void keysOpenTheCalendar()
    {
        QFETCH(int, iKey);
        QFETCH(int, iModifiers);
        QFETCH(bool, bOpens);
        QTest::keyClick(&field(), Qt::Key(iKey), Qt::KeyboardModifiers(iModifiers));
        QCOMPARE(calendar() != nullptr && calendar()->isVisible(), bOpens);
    }

    void aDayThatIsPickedFiltersAndKeepsTheTime()
    {
        field().setDateTime(QDateTime(QDate(2005, 3, 20), QTime(13, 0)));
        open();
        QCOMPARE(calendar()->selectedDate(), QDate(2005, 3, 20));
        oServer.startLog();
        calendar()->setSelectedDate(QDate(2005, 3, 1));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QVERIFY(!calendar()->isVisible());
        QCOMPARE(field().dateTime(), QDateTime(QDate(2005, 3, 1), QTime(13, 0)));
        QCOMPARE(oServer.log().size(), 1);
        QCOMPARE(
            pBrowser->tablePicture(), (QStringList{u"date | title"_s, u"01.03.05 13:00 | Schnee im März"_s}));
    }

    void whatIsBeingTypedIsNotLost()
    {
        field().setSelectedSection(QDateTimeEdit::DaySection);
        QTest::keyClicks(&field(), u"1005"_s);
        QTest::keyClicks(&field(), u"200"_s); // the year isn't complete
        const QDate oBefore = field().date();
        QCOMPARE(QPoint(oBefore.day(), oBefore.month()), QPoint(10, 5));
        open();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QCOMPARE(QPoint(field().date().day(), field().date().month()), QPoint(10, 5));
    }

    void closingTheCalendarChangesNothing()
    {
        const QDateTime oBefore = field().dateTime();
        open();
        oServer.startLog();
        calendar()->setSelectedDate(QDate(2005, 3, 1));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QTRY_VERIFY(!calendar()->isVisible());
        QCOMPARE(field().dateTime(), oBefore);
        QCOMPARE(oServer.log(), QStringList());
    }

    void theDayThatIsShownFirstCanBePickedToo()
    {
        QCOMPARE(field().date(), QDate(2000, 1, 1));
        open();
        oServer.startLog();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(oServer.log().size(), 1);
        QVERIFY(oServer.log().first().contains(u"like \"2000-01-01%\""_s));
    }

    void theCalendarStaysOnTheScreen()
    {
        (*pBrowser)->move(field().screen()->availableGeometry().topRight() - QPoint(300, 0));
        QTRY_VERIFY(field().mapToGlobal(QPoint()).x() > field().screen()->availableGeometry().right() - 300);
        open();
        QVERIFY(field().screen()->availableGeometry().contains(calendar()->window()->frameGeometry()));
    }

private:
    QDateTimeEdit& field() { return *pBrowser->child<QDateTimeEdit>("dateedit"); }
    QCalendarWidget* calendar() { return field().findChild<QCalendarWidget*>(); }
    void open()
    {
        QTest::keyClick(&field(), Qt::Key_F4);
        QVERIFY(calendar()->isVisible());
    }

    CPrivateServer oServer;
    std::unique_ptr<CTestBrowser> pBrowser;
};

QTUTILS_WIDGET_TEST_MAIN(TestNodeBrowserCalendar, CPrivateDisplay::Manager::Running)
#include "tst_nodebrowser_calendar.moc"
