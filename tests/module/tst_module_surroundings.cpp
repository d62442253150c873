// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"
#include "CScreen.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// What the module leaves alone in its host's process.
class TestModuleSurroundings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void theProcessIsAsBeforeApartFromTheLanguage_data()
    {
        QTest::addColumn<QByteArray>("oUntil");
        for (const char* pcUntil : {"loaded", "constructed", "used", "freed", "unloaded"})
            QTest::newRow(pcUntil) << QByteArray(pcUntil);
    }

    void theProcessIsAsBeforeApartFromTheLanguage()
    {
        // given
        QFETCH(QByteArray, oUntil);
        CPlainHost oHost;
        oHost.command({"env", "LC_ALL", "C.UTF-8"}); // not the locale that the host runs in
        QByteArrayList lExpected = surroundings(oHost);
        QVERIFY(lExpected.contains("signal 13 is default"));
        if (oUntil != "loaded")
            lExpected.replace(lExpected.indexOf("variable LANG=C.UTF-8"), "variable LANG=de_DE");
        // when
        oHost.load();
        const QList<std::pair<QByteArray, void (TestModuleSurroundings::*)(CPlainHost&)>> lSteps{
            {"constructed", &TestModuleSurroundings::construct}, {"used", &TestModuleSurroundings::use},
            {"freed", &TestModuleSurroundings::free}, {"unloaded", &TestModuleSurroundings::unload}};
        for (const auto& [oStep, step] : lSteps) {
            if (oUntil == "loaded")
                break;
            (this->*step)(oHost);
            if (oStep == oUntil)
                break;
        }
        // then
        QCOMPARE(surroundings(oHost), lExpected);
    }

    void aHostsOwnSettingsAreKept()
    {
        // given
        CPlainHost oHost;
        oHost.command({"customize"});
        oHost.command({"env", "LC_ALL", "C.UTF-8"});
        oHost.command({"env", "QT_NO_GLIB", "0"});
        QByteArrayList lExpected = surroundings(oHost);
        QVERIFY(lExpected.contains("signal 13 is handled"));
        QVERIFY(lExpected.contains("signal 10 is default and blocked"));
        QVERIFY(lExpected.contains("mask 27"));
        lExpected.replace(lExpected.indexOf("variable LANG=C.UTF-8"), "variable LANG=de_DE");
        // when
        oHost.load();
        construct(oHost);
        use(oHost);
        free(oHost);
        // then
        QCOMPARE(surroundings(oHost), lExpected);
    }

private:
    /// What the host says about its process now, the environment in alphabetical order.
    static QByteArrayList surroundings(CPlainHost& oHost)
    {
        const qsizetype iBefore = oHost.output().size();
        oHost.command({"surroundings"});
        QByteArrayList lLines = oHost.output().mid(iBefore);
        std::sort(lLines.begin(), lLines.end());
        return lLines;
    }

    void construct(CPlainHost& oHost)
    {
        oHost.call("setSOMTable", {"t:news_train"});
        QCOMPARE(oHost.construct(), "window");
    }

    void use(CPlainHost& oHost)
    {
        oHost.announceErrors({"Database is open. Commencing."});
        oHost.passHierarchy();
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isShown("Ombrel"));
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
    }

    void free(CPlainHost& oHost)
    {
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        QTUTILS_WAIT_FOR(!oScreen.isShown("Ombrel"));
    }

    void unload(CPlainHost& oHost) { QCOMPARE(oHost.command({"unload"}), "unloaded"); }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleSurroundings)
#include "tst_module_surroundings.moc"
