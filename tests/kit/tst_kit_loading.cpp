// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CFakeModule.h"

#include <qtutils/nodebrowser.h>

#include <QTest>

#include <memory>

/// Opening and closing: where the module comes from, and what is wrong with it.
class TestKitLoading : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        pFake = std::make_unique<CFakeModule>();
        qunsetenv("QTUTILS_MODULE");
    }
    void cleanup()
    {
        QCOMPARE(qtutils_close(pBrowser), int(QTUTILS_OK));
        pBrowser = nullptr;
        QCOMPARE((*pFake)->iLive, 0);
        pFake.reset();
    }

    void aModuleIsLoadedFromItsFile()
    {
        QCOMPARE(open(QTUTILS_FAKE_MODULE), int(QTUTILS_OK));
        QVERIFY(pBrowser != nullptr);
        QCOMPARE(QByteArray(qtutils_error_detail()), QByteArray());
        QCOMPARE(pFake->log(), QByteArrayList({"CNodeBrowser som texts"}));
    }

    void withoutAFileTheVariableNamesIt()
    {
        qputenv("QTUTILS_MODULE", QTUTILS_FAKE_MODULE);
        QCOMPARE(open(nullptr), int(QTUTILS_OK));
    }

    void theFileCountsMoreThanTheVariable()
    {
        qputenv("QTUTILS_MODULE", "no such file");
        QCOMPARE(open(QTUTILS_FAKE_MODULE), int(QTUTILS_OK));
    }

    void withoutAVariableTheLoaderSearches_data()
    {
        QTest::addColumn<bool>("isSet");
        QTest::newRow("unset") << false;
        QTest::newRow("empty") << true;
    }
    void withoutAVariableTheLoaderSearches()
    {
        QFETCH(bool, isSet);
        if (isSet)
            qputenv("QTUTILS_MODULE", "");
        QCOMPARE(open(nullptr), int(QTUTILS_ERROR_MODULE));
        QVERIFY2(QByteArray(qtutils_error_detail()).startsWith("qtutils.so: "), qtutils_error_detail());
    }

    void aFileThatIsNoSuchModuleIsRefused_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("detail");
        const QByteArray oFolder(QTUTILS_FAKE_FOLDER "/");
        QTest::newRow("no file") << oFolder
                + "none.so" << oFolder + "none.so: cannot open shared object file: No such file or directory";
        QTest::newRow("another module")
            << oFolder + "other.so" << oFolder + "other.so is not a qtutils module";
        QTest::newRow("no module") << QByteArray("libm.so.6")
                                   << QByteArray("libm.so.6 is not a qtutils module");
        QTest::newRow("another prototype")
            << oFolder + "changed.so" << oFolder + "changed.so has no \"void show()\"";
        QTest::newRow("no function") << oFolder + "short.so" << oFolder + "short.so has no \"void show()\"";
    }
    void aFileThatIsNoSuchModuleIsRefused()
    {
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, detail);
        QCOMPARE(open(file.constData()), int(QTUTILS_ERROR_MODULE));
        QVERIFY(pBrowser == nullptr);
        QCOMPARE(QByteArray(qtutils_error_detail()), detail);
    }

    void withoutAVariableOfTheServerItIsNamed_data()
    {
        QTest::addColumn<QByteArray>("variable");
        for (const char* pcVariable : {"MYSQL_HOST", "MYSQL_USER", "MYSQL_PWD"})
            QTest::newRow(pcVariable) << QByteArray(pcVariable);
    }
    void withoutAVariableOfTheServerItIsNamed()
    {
        QFETCH(QByteArray, variable);
        (*pFake)->bWindow = 0;
        qunsetenv(variable);
        QCOMPARE(open(QTUTILS_FAKE_MODULE), int(QTUTILS_ERROR_ENVIRONMENT));
        QCOMPARE(QByteArray(qtutils_error_detail()), variable + " is unset");
        (*pFake)->bWindow = 1;
    }

    void aFailedConstructionIsTakenBack()
    {
        (*pFake)->bWindow = 0;
        QCOMPARE(open(QTUTILS_FAKE_MODULE), int(QTUTILS_ERROR_WINDOW));
        QVERIFY(pBrowser == nullptr);
        QCOMPARE(pFake->log(), QByteArrayList({"CNodeBrowser som texts", "FREE_CNodeBrowser null"}));
        (*pFake)->bWindow = 1;
    }

    void eachObjectIsAConstruction()
    {
        qtutils_browser* pOther = nullptr;
        QCOMPARE(open(QTUTILS_FAKE_MODULE), int(QTUTILS_OK));
        QCOMPARE(qtutils_open(QTUTILS_FAKE_MODULE, "a", "b", &pOther), int(QTUTILS_OK));
        QCOMPARE((*pFake)->iLive, 2);
        QCOMPARE(qtutils_close(pOther), int(QTUTILS_OK));
        QCOMPARE((*pFake)->iLive, 1);
        QCOMPARE(pFake->log().last(), QByteArray("FREE_CNodeBrowser handle"));
    }

    void nullArgumentsAreRefused()
    {
        pBrowser = reinterpret_cast<qtutils_browser*>(this);
        QCOMPARE(qtutils_open(QTUTILS_FAKE_MODULE, nullptr, "texts", &pBrowser), int(QTUTILS_ERROR_ARGUMENT));
        QVERIFY(pBrowser == nullptr);
        QCOMPARE(qtutils_open(QTUTILS_FAKE_MODULE, "som", nullptr, &pBrowser), int(QTUTILS_ERROR_ARGUMENT));
        QCOMPARE(qtutils_open(QTUTILS_FAKE_MODULE, "som", "texts", nullptr), int(QTUTILS_ERROR_ARGUMENT));
        QCOMPARE(pFake->log(), QByteArrayList());
    }

    void everyCodeHasATextOfItsOwn()
    {
        QByteArrayList lTexts;
        for (int iError = QTUTILS_OK; iError <= QTUTILS_ERROR_CALLBACK; iError++) {
            const QByteArray oText(qtutils_error_text(iError));
            QVERIFY(!oText.isEmpty() && oText != "unknown error" && !lTexts.contains(oText));
            lTexts << oText;
        }
        QCOMPARE(QByteArray(qtutils_error_text(-1)), QByteArray("unknown error"));
        QCOMPARE(QByteArray(qtutils_error_text(QTUTILS_ERROR_CALLBACK + 1)), QByteArray("unknown error"));
    }

private:
    int open(const char* pcFile) { return qtutils_open(pcFile, "som", "texts", &pBrowser); }

    std::unique_ptr<CFakeModule> pFake;
    qtutils_browser* pBrowser = nullptr;
};

QTEST_GUILESS_MAIN(TestKitLoading)
#include "tst_kit_loading.moc"
