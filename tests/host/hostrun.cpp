// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "hostrun.h"

#include <QTest>

void start(QProcess& oHost, const QStringList& slArguments)
{
    oHost.start(QStringLiteral(HOST_PROGRAM), slArguments);
    QVERIFY2(oHost.waitForStarted(), qPrintable(oHost.errorString()));
}

SRun finish(QProcess& oHost)
{
    oHost.closeWriteChannel();
    if (!oHost.waitForFinished() || oHost.exitStatus() != QProcess::NormalExit) {
        oHost.kill();
        return {
            -1, QString::fromUtf8(oHost.readAllStandardOutput()), QStringLiteral("did not end by itself")};
    }
    return {oHost.exitCode(), QString::fromUtf8(oHost.readAllStandardOutput()),
        QString::fromUtf8(oHost.readAllStandardError())};
}

SRun run(const QStringList& slArguments, const QByteArray& sInput, const QProcessEnvironment& oEnvironment)
{
    QProcess oHost;
    oHost.setProcessEnvironment(oEnvironment);
    start(oHost, slArguments);
    oHost.write(sInput);
    return finish(oHost);
}

SRun command(const char* pcCommand)
{
    return run({sRecorder, QStringLiteral("--command"), QString::fromUtf8(pcCommand)});
}

bool waitForOutput(QProcess& oHost, const QByteArray& sText)
{
    QByteArray sOut = oHost.peek(oHost.bytesAvailable());
    while (!sOut.contains(sText)) {
        if (!oHost.waitForReadyRead()) {
            return false;
        }
        sOut = oHost.peek(oHost.bytesAvailable());
    }
    return true;
}

QString lines(std::initializer_list<const char*> lLines)
{
    QString sText;
    for (const char* pcLine : lLines) {
        sText += QString::fromUtf8(pcLine) + QLatin1Char('\n');
    }
    return sText;
}
