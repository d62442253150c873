// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"
#include "CScreen.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// What the logging categories tell a host's programmer.
class TestModuleLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void everyCallIsToldWithItsAnswer()
    {
        // given
        CPlainHost oHost;
        oHost.command({"env", "QT_LOGGING_RULES", "qtutils.host.debug=true"});
        // when
        oHost.start();
        oHost.call("select", {"i:1"});
        oHost.call("markRow", {"k:2005-03-01T00:00:00", "i:3"});
        oHost.call("setRowColors", {"c:5x0,0,0"});
        oHost.call("hideTable");
        oHost.call("getFirstDateInSelection", {"ot:20"});
        const int iRows = oHost.numRows();
        // then: what came before the window is not told
        QCOMPARE(iRows, 5);
        QCOMPARE(lines(oHost, "qtutils.host: "),
            QByteArrayList(
                {"CNodeBrowser \"som\" \"news\": a window", "passNodeHierarchy: 3 children of node 0 of 4",
                    "passNodeHierarchy: 0 children of node 1 of 4",
                    "passNodeHierarchy: 0 children of node 2 of 4",
                    "passNodeHierarchy: 0 children of node 3 of 4", "getNumRows: 0", "select 1",
                    "markRow \"2005-03-01T00:00:00\" 3", "setRowColors", "hideTable",
                    "getFirstDateInSelection", "getNumRows: 5"}));
        oHost.announceErrors({"qtutils.host: FREE_CNodeBrowser", "Terminating QApplication"});
        oHost.free();
    }

    void statementsAreToldWithTheirRows()
    {
        CPlainHost oHost;
        oHost.command({"env", "QT_LOGGING_RULES", "qtutils.sql.debug=true"});
        oHost.start();
        oHost.call("select", {"i:1"});
        oHost.numRows();
        const QByteArrayList lLines = lines(oHost, "qtutils.sql: ");
        QCOMPARE(lLines.size(), 4); // connection, probe, keywords, selection
        QVERIFY(lLines[0].startsWith("connection to som on "));
        QVERIFY(lLines[3].contains("node=1 ORDER BY date: 5 rows in "));
    }

private:
    static QByteArrayList lines(CPlainHost& oHost, const QByteArray& oCategory)
    {
        QByteArrayList lLines;
        for (const QByteArray& oLine : oHost.errors())
            if (oLine.startsWith(oCategory))
                lLines << oLine.mid(oCategory.size());
        return lLines;
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleLog)
#include "tst_module_log.moc"
