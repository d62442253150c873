// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"

#include <QProcess>
#include <QTest>

#include <algorithm>

class TestModuleInterface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theModuleExportsItsInterfaceAndNothingElse()
    {
        // given
        QByteArrayList lExpected{"CLASSES_qtutils D", "CNodeBrowser_def D", "NAMESPACE D"};
        for (const char* pcName : {"CNodeBrowser", "FREE_CNodeBrowser", "dateToInt", "fillDate",
                 "getFirstDateInFrame", "getFirstDateInSelection", "getNumRows", "hideTable", "markRow",
                 "passNodeHierarchy", "select", "setRowColors", "setSOMTable", "show", "thread"})
            lExpected << QByteArray("nodeBrowser_") + pcName + " T";
        // when
        const QByteArray oTable = run(QStringLiteral("nm"),
            {QStringLiteral("-D"), QStringLiteral("--defined-only"), QStringLiteral("--format=posix")});
        QByteArrayList lExported;
        for (const QByteArray& oLine : oTable.trimmed().split('\n'))
            lExported << oLine.split(' ').first(2).join(' ');
        std::sort(lExported.begin(), lExported.end());
        // then
        QCOMPARE(lExported, lExpected);
    }

    void theDescriptorsTextsAreExactAndEveryPrototypeHasItsFunction()
    {
        // given
        CPlainHost oHost;
        QCOMPARE(oHost.load(), "loaded");
        // when
        oHost.command({"describe"});
        // then
        QCOMPARE(oHost.output(),
            QByteArrayList({"namespace qtutils", "class", "end of classes", "there: nodeBrowser_:",
                "there: CNodeBrowser(char *pcSOMDB, char *pcSourceDB)", "there: FREE_CNodeBrowser()",
                "there: void select(int iSelection)", "there: void getNumRows(int* piNumRows)",
                "there: void fillDate(int* piDate)", "there: void dateToInt(char* pcDateIn, int* piDateOut)",
                "there: void setRowColors(float* pfRowColors)",
                "there: void markRow(char* pcDate, int iTimeFrame)",
                "there: void getFirstDateInFrame(int* piFirstDateInFrame)",
                "there: void getFirstDateInSelection(char* pcFirstDateInSelection)",
                "there: void passNodeHierarchy(int* iaNodes, int iNumChildren, int iNode, "
                "int iNumNodes)",
                "there: void setSOMTable(char *pcSOMTable)", "there: void hideTable()",
                "there: void show()"}));
    }

    void theDescriptorLiesInMemoryInItsOrder()
    {
        // given
        CPlainHost oHost;
        oHost.load();
        // when
        oHost.command({"addresses"});
        // then
        QList<quint64> lAddresses;
        for (const QByteArray& oAddress : oHost.output())
            lAddresses << oAddress.toULongLong();
        QCOMPARE(lAddresses.size(), 3);
        QVERIFY2(lAddresses[0] < lAddresses[1], "CNodeBrowser_def stands before NAMESPACE");
        QVERIFY2(lAddresses[1] < lAddresses[2], "NAMESPACE stands before CLASSES_qtutils");
    }

    void theModuleIsNeverUnmapped()
    {
        QVERIFY(run(QStringLiteral("readelf"), {QStringLiteral("--dynamic")}).contains("NODELETE"));
    }

    void loadingStartsNoThread()
    {
        CPlainHost oHost;
        oHost.load();
        QCOMPARE(oHost.threads().size(), 1);
    }

private:
    /// What a program prints about the module.
    static QByteArray run(const QString& sProgram, const QStringList& slOptions)
    {
        QProcess oProcess;
        oProcess.start(sProgram, slOptions + QStringList{QStringLiteral(QTUTILS_MODULE)});
        oProcess.waitForFinished();
        return oProcess.readAllStandardOutput();
    }
};

QTEST_GUILESS_MAIN(TestModuleInterface)
#include "tst_module_interface.moc"
