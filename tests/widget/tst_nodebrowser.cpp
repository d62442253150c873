// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "browser/CNodeBrowser.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/testmain.h"

#include <QTextEdit>

class TestNodeBrowser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void aNewWindowIsHiddenAndHasNoArticle()
    {
        int iFlag = 0;
        pthread_mutex_t oMutex = PTHREAD_MUTEX_INITIALIZER;
        pthread_cond_t oCond = PTHREAD_COND_INITIALIZER;
        CNodeBrowser oBrowser(qEnvironmentVariable("MYSQL_HOST"), qEnvironmentVariable("MYSQL_USER"),
            qEnvironmentVariable("MYSQL_PWD"), QStringLiteral("som"), QStringLiteral("news"), &iFlag, &oMutex,
            &oCond, nullptr, "NodeBrowser");
        QVERIFY(!oBrowser.isVisible());
        QCOMPARE(oBrowser.findChild<QTextEdit*>(QStringLiteral("texteditor"))->toPlainText(),
            QStringLiteral("no article selected"));
    }

private:
    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestNodeBrowser, CPrivateDisplay::Manager::Running)
#include "tst_nodebrowser.moc"
