// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#include <initializer_list>

/// Folder of the modules made for the tests, with a slash at its end.
inline const QString sModules = QStringLiteral(HOST_MODULES);

/// The good module of two classes, which prints every call.
inline const QString sRecorder = QStringLiteral(HOST_MODULES "recorder.so");

/// How a run of the host ended.
struct SRun
{
    int iCode; ///< exit code; -1 when it didn't end by itself
    QString sOut;
    QString sError;
};

/// Starts the host; the test fails when that is not possible.
void start(QProcess& oHost, const QStringList& slArguments);

/// Closes standard input and waits for the end.
SRun finish(QProcess& oHost);

/// Runs the host to its end.
SRun run(const QStringList& slArguments, const QByteArray& sInput = QByteArray(),
    const QProcessEnvironment& oEnvironment = QProcessEnvironment::systemEnvironment());

/// Runs the text as `--command` with the module recorder.
SRun command(const char* pcCommand);

/// Reads standard output until it holds the text, and leaves it to be read; false when the program ends
/// before.
bool waitForOutput(QProcess& oHost, const QByteArray& sText);

/// The lines, each with its line end.
QString lines(std::initializer_list<const char*> lLines);
