// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// The Show and Sort menus, by mouse and by keyboard.
class TestModuleMenus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void aShowEntryShowsItsColumn()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.start();
        oAnalyst.showWindow();
        oHost.call("select", {"i:2"});
        QCOMPARE(oAnalyst.table(),
            QByteArrayList({"date | title", "10.05.06 12:00 | Sommer", "11.05.06 12:00 | Herbst"}));
        // when
        oAnalyst.choose("Show", "author");
        // then
        QCOMPARE(oAnalyst.menu("ShowMenu"),
            QByteArrayList({"[ ] node", "[ ] dist", "[ ] id", "[x] date", "[x] title", "[ ] URL", "[ ] text",
                "[x] author", "[ ] rate"}));
    }

private:
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleMenus)
#include "tst_module_menus.moc"
