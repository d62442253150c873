// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTable.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QLoggingCategory>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// The lines of the category, each with the mouse pointer of its moment.
QStringList slLines;

void keepLine(QtMsgType /*eType*/, const QMessageLogContext& oContext, const QString& sText)
{
    const QCursor* pCursor = QGuiApplication::overrideCursor();
    const QString sCursor = pCursor != nullptr && pCursor->shape() == Qt::WaitCursor ? u"busy: "_s : u""_s;
    if (qstrcmp(oContext.category, "qtutils.sql") == 0)
        slLines << sCursor + QString(sText).replace(QRegularExpression(u"[0-9]+ ms"_s), u"N ms"_s);
}

} // namespace

/// What the logging category "qtutils.sql" tells.
class TestSqlLog : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void init()
    {
        CStrictTest::init();
        slLines.clear();
    }

    void nothingIsToldUnlessItIsWished()
    {
        tell(u""_s, [](CTestTable& oTable) { oTable->selection(1); });
        QCOMPARE(slLines, QStringList());
    }

    void aStatementIsToldWithItsRows()
    {
        tell(u"qtutils.sql.debug=true"_s, [](CTestTable& oTable) {
            slLines.clear();
            oTable->selection(1);
        });
        QCOMPARE(slLines,
            QStringList{u"SELECT node, dist, document.* FROM news_train, news.document "
                        "WHERE news.document.id=news_train.item AND node=1 ORDER BY date: 5 rows in N ms"_s});
    }

    void thePointerOnAWindowIsThatOfABusyProgramMeanwhile()
    {
        tell(u"qtutils.sql.debug=true"_s, [](CTestTable& oTable) {
            oTable.show();
            QTest::mouseMove(oTable->window(), QPoint(20, 20));
            QTRY_VERIFY(oTable->window()->underMouse());
            slLines.clear();
            oTable->selection(1);
        });
        QVERIFY(slLines.value(0).startsWith(u"busy: SELECT"_s));
        QVERIFY(QGuiApplication::overrideCursor() == nullptr);
    }

    void aFailureIsToldWithTheServersWords()
    {
        tell(u"qtutils.sql.debug=true"_s, [](CTestTable& oTable) {
            oTable.setTables(u"document"_s, u"missing_train"_s);
            slLines.clear();
            oTable->selection(1);
        });
        QCOMPARE(slLines.size(), 1);
        QVERIFY(slLines[0].contains(u": failed after N ms: "_s));
        QVERIFY(slLines[0].contains(u"Table 'som.missing_train' doesn't exist"_s));
    }

    void theConnectionIsToldWithoutThePassword()
    {
        tell(u"qtutils.sql.debug=true"_s, [](CTestTable&) {});
        QCOMPARE(slLines.first(),
            u"connection to som on \"%1\" as \"%2\" open after N ms"_s.arg(
                qEnvironmentVariable("MYSQL_HOST"), qEnvironmentVariable("MYSQL_USER")));
    }

private:
    template <typename Act> static void tell(const QString& sRules, Act act)
    {
        QLoggingCategory::setFilterRules(sRules);
        const QtMessageHandler handler = qInstallMessageHandler(keepLine);
        {
            CTestTable oTable;
            oTable.setTables();
            act(oTable);
        }
        qInstallMessageHandler(handler);
        QLoggingCategory::setFilterRules(QString());
    }

    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestSqlLog, CPrivateDisplay::Manager::Running)
#include "tst_sqllog.moc"
