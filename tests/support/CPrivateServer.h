// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/// A MariaDB server of the test's own: a new data folder, a Unix socket, no network. Sets MYSQL_HOST,
/// MYSQL_USER, MYSQL_PWD and MYSQL_UNIX_PORT of the process, so that clients find it. Ends with the object,
/// or with the test program.
class CPrivateServer
{
public:
    /// Starts the server and waits until it answers; ends the program with a message if it can't be started.
    /// Further options come behind its own.
    explicit CPrivateServer(QStringList slFurtherOptions = {});
    ~CPrivateServer();
    CPrivateServer(const CPrivateServer&) = delete;
    CPrivateServer& operator=(const CPrivateServer&) = delete;

    QString socket() const { return oFolder.filePath(QStringLiteral("s")); }

    /// Runs statements separated by ";" as the server's administrator and returns the rows, fields separated
    /// by tabs. Fails the program on an error.
    QStringList sql(const QString& sStatements) const;
    /// Runs the statements of a file below tests/data.
    void load(const QString& sFile) const;

    /// Begins a new record of the statements that the server receives.
    void startLog() const;
    /// The statements of the user of MYSQL_USER since startLog(), in their order, without the client's own
    /// ("SET NAMES").
    QStringList log() const;

    /// Ends the server at once, as a crash would.
    void kill();
    /// Shuts it down in good order; waits until it has ended.
    void stop();
    bool isRunning() const { return oServer.state() != QProcess::NotRunning; }
    /// Starts it again on the same data, at the same socket.
    void restart();
    /// Halts the server's process, so that it answers nobody, and lets it go on.
    void halt() const;
    void goOn() const;

private:
    void start();

    QStringList slFurther;
    QTemporaryDir oFolder;
    QProcess oServer;
};
