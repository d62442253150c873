// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QStringList>

/// The host on a pseudo terminal of its own.
class CTerminal
{
public:
    /// Starts the program with XDG_STATE_HOME set to @p sStateFolder.
    CTerminal(const QStringList& slArguments, const QString& sStateFolder);

    /// Ends the program when it still runs.
    ~CTerminal();

    CTerminal(const CTerminal&) = delete;
    CTerminal& operator=(const CTerminal&) = delete;

    void type(const QByteArray& sKeys) const;
    void sendSignal(int iSignal) const;

    /// Reads until the text appears behind what earlier calls have found; false when it doesn't come.
    bool waitFor(const QByteArray& sText);

    /// Reads until the program ends; its exit code, or -1 when a signal killed it.
    int exitCode();

    /// All that was read so far, for messages.
    const QByteArray& screen() const { return sScreen; }

private:
    bool readMore();

    int iTerminal = -1;
    int iProcess = -1;
    QByteArray sScreen;
    qsizetype nFound = 0;
};
