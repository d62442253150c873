// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "hostrun.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString sDirectory = QStringLiteral("--directory");

bool write(const QString& sFile, const char* pcText)
{
    QFile oFile(sFile);
    return oFile.open(QIODevice::WriteOnly) && oFile.write(pcText) > 0;
}

// The working folder of a host that waits for its next command.
QString folderOf(QProcess& oHost)
{
    oHost.write(".echo ready\n");
    if (!waitForOutput(oHost, "ready")) {
        return QString::fromUtf8(oHost.readAllStandardError());
    }
    return QFile::symLinkTarget(QStringLiteral("/proc/%1/cwd").arg(oHost.processId()));
}

} // namespace

/// The folder that the module runs in.
class TestHostFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QVERIFY(oFolder.emplace().isValid());
        sStart = oFolder->filePath(QStringLiteral("start"));
        sOther = oFolder->filePath(QStringLiteral("other"));
        QVERIFY(QDir().mkdir(sStart) && QDir().mkdir(sOther));
        sStart = QDir(sStart).canonicalPath();
        sOther = QDir(sOther).canonicalPath();
    }

    void aModuleThatIsNamedRunsWhereTheProgramWasStarted()
    {
        QProcess oHost;
        oHost.setWorkingDirectory(sStart);
        start(oHost, {sRecorder});
        QCOMPARE(folderOf(oHost), sStart);
        QCOMPARE(finish(oHost).iCode, 0);
    }

    void aModuleRunsInTheFolderThatIsNamed()
    {
        QProcess oHost;
        oHost.setWorkingDirectory(sStart);
        start(oHost, {sRecorder, sDirectory, QStringLiteral("../other")});
        QCOMPARE(folderOf(oHost), sOther);
        QCOMPARE(finish(oHost).iCode, 0);
    }

    void theModuleBesideTheProgramRunsThere()
    {
        const QString sProgram = sOther + QStringLiteral("/qtutils-host");
        QVERIFY(QFile::copy(QStringLiteral(HOST_PROGRAM), sProgram));
        QVERIFY(QFile::copy(sRecorder, sOther + QStringLiteral("/qtutils.so")));
        QProcess oHost;
        oHost.setWorkingDirectory(sStart);
        oHost.start(sProgram, QStringList());
        QCOMPARE(folderOf(oHost), sOther);
        QCOMPARE(finish(oHost).iCode, 0);
    }

    void theFolderThatIsNamedGoesBeforeTheModulesOwn()
    {
        const QString sProgram = sOther + QStringLiteral("/qtutils-host");
        QVERIFY(QFile::copy(QStringLiteral(HOST_PROGRAM), sProgram));
        QVERIFY(QFile::copy(sRecorder, sOther + QStringLiteral("/qtutils.so")));
        QProcess oHost;
        oHost.setWorkingDirectory(sStart);
        oHost.start(sProgram, {sDirectory, QStringLiteral(".")});
        QCOMPARE(folderOf(oHost), sStart);
        QCOMPARE(finish(oHost).iCode, 0);
    }

    void scriptsAreLookedForWhereTheProgramWasStarted()
    {
        QVERIFY(write(sStart + QStringLiteral("/a.qth"), ".echo first\n.include b.qth\n"));
        QVERIFY(write(sStart + QStringLiteral("/b.qth"), ".echo second\n"));
        QProcess oHost;
        oHost.setWorkingDirectory(sStart);
        start(oHost,
            {sRecorder, sDirectory, sOther, QStringLiteral("--script"), QStringLiteral("a.qth"),
                QStringLiteral("--command"), QStringLiteral(".include b.qth")});
        const SRun oRun = finish(oHost);
        QCOMPARE(oRun.sError, QString());
        QCOMPARE(oRun.sOut, lines({"first", "second", "second"}));
    }

    void aFolderThatIsNotThereIsOneLineAndCodeTwo()
    {
        const SRun oRun = run({sRecorder, sDirectory, sStart + QStringLiteral("/absent")});
        QCOMPARE(oRun.sError,
            QStringLiteral("qtutils-host: can't enter folder \"%1/absent\": No such file or directory\n")
                .arg(sStart));
        QCOMPARE(oRun.iCode, 2);
    }

private:
    std::optional<QTemporaryDir> oFolder;
    QString sStart; ///< the folder that the program is started in
    QString sOther;
};

QTEST_GUILESS_MAIN(TestHostFolder)
#include "tst_hostfolder.moc"
