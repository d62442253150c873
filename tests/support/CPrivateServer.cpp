// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPrivateServer.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>

namespace {

constexpr int LongestWait = 60000; // milliseconds
const QString User = QStringLiteral("reader");
const QString Password = QStringLiteral("a password");

[[noreturn]] void giveUp(const QString& sWhat, const QByteArray& oOutput)
{
    std::fprintf(stderr, "private server: %s\n%s\n", qPrintable(sWhat), oOutput.constData());
    std::exit(2);
}

QByteArray run(const QString& sProgram, const QStringList& slArguments, const QByteArray& oInput = {})
{
    QProcess oProcess;
    oProcess.start(sProgram, slArguments);
    oProcess.write(oInput);
    oProcess.closeWriteChannel();
    const bool bDone = oProcess.waitForFinished(LongestWait);
    if (!bDone || oProcess.exitStatus() != QProcess::NormalExit || oProcess.exitCode() != 0)
        giveUp(sProgram + QStringLiteral(" failed"), oProcess.readAllStandardError());
    return oProcess.readAllStandardOutput();
}

QStringList serverOptions(const QTemporaryDir& oFolder)
{
    QStringList slOptions{QStringLiteral("--no-defaults"),
        QStringLiteral("--datadir=") + oFolder.filePath(QStringLiteral("data")),
        QStringLiteral("--tmpdir=") + oFolder.filePath(QStringLiteral("tmp"))};
    if (geteuid() == 0)
        slOptions << QStringLiteral("--user=root");
    return slOptions;
}

} // namespace

CPrivateServer::CPrivateServer(QStringList slFurtherOptions)
    : slFurther(std::move(slFurtherOptions))
{
    QDir(oFolder.path()).mkdir(QStringLiteral("tmp"));
    run(QStringLiteral("mariadb-install-db"),
        serverOptions(oFolder) << QStringLiteral("--auth-root-authentication-method=normal")
                               << QStringLiteral("--skip-test-db"));
    start();
    sql(QStringLiteral(
        "CREATE USER '%1'@'localhost' IDENTIFIED BY '%2'; GRANT SELECT ON *.* TO '%1'@'localhost'")
            .arg(User, Password));
    qputenv("MYSQL_HOST", "localhost");
    qputenv("MYSQL_USER", User.toUtf8());
    qputenv("MYSQL_PWD", Password.toUtf8());
    qputenv("MYSQL_UNIX_PORT", socket().toUtf8());
}

CPrivateServer::~CPrivateServer()
{
    kill();
}

void CPrivateServer::start()
{
    oServer.setProcessChannelMode(QProcess::MergedChannels);
    oServer.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    oServer.start(QStringLiteral("mariadbd"),
        serverOptions(oFolder) << QStringLiteral("--skip-networking")
                               << QStringLiteral("--socket=") + socket()
                               << QStringLiteral("--innodb-flush-log-at-trx-commit=0")
                               << QStringLiteral("--innodb-buffer-pool-size=64M")
                               << QStringLiteral("--log-output=TABLE") << slFurther);
    QByteArray oOutput;
    while (!oOutput.contains("ready for connections")) {
        if (!oServer.waitForReadyRead(LongestWait))
            giveUp(QStringLiteral("mariadbd doesn't answer"), oOutput);
        oOutput += oServer.readAll();
    }
}

QStringList CPrivateServer::sql(const QString& sStatements) const
{
    const QByteArray oOutput = run(QStringLiteral("mariadb"),
        {QStringLiteral("--no-defaults"), QStringLiteral("--socket=") + socket(),
            QStringLiteral("--user=root"), QStringLiteral("--password="),
            QStringLiteral("--default-character-set=utf8mb4"), QStringLiteral("--batch"),
            QStringLiteral("--skip-column-names"), QStringLiteral("--local-infile=0")},
        sStatements.toUtf8());
    return QString::fromUtf8(oOutput).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void CPrivateServer::load(const QString& sFile) const
{
    QFile oFile(QStringLiteral(QTUTILS_TEST_DATA "/") + sFile);
    if (!oFile.open(QIODevice::ReadOnly))
        giveUp(QStringLiteral("no such file: ") + oFile.fileName(), {});
    sql(QString::fromUtf8(oFile.readAll()));
}

void CPrivateServer::startLog() const
{
    sql(QStringLiteral("SET GLOBAL general_log=OFF; TRUNCATE mysql.general_log; SET GLOBAL general_log=ON"));
}

// The administrator's statements are made by another user, so they are left out.
QStringList CPrivateServer::log() const
{
    const QStringList slRows =
        sql(QStringLiteral("SELECT REPLACE(CONVERT(argument USING utf8mb4), '\\n', ' ') "
                           "FROM mysql.general_log WHERE command_type='Query' "
                           "AND user_host LIKE '%1%'")
                .arg(User));
    QStringList slStatements;
    for (const QString& sRow : slRows)
        if (!sRow.startsWith(QStringLiteral("SET NAMES")))
            slStatements << sRow;
    return slStatements;
}

void CPrivateServer::kill()
{
    oServer.kill();
    oServer.waitForFinished(LongestWait);
}

void CPrivateServer::stop()
{
    oServer.terminate();
    oServer.waitForFinished(LongestWait);
}

void CPrivateServer::restart()
{
    kill();
    start();
}

void CPrivateServer::halt() const
{
    ::kill(pid_t(oServer.processId()), SIGSTOP);
}

void CPrivateServer::goOn() const
{
    ::kill(pid_t(oServer.processId()), SIGCONT);
}
