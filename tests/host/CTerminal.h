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

    /// Waits for the prompt of the class CRecorder, and until the program reads single keys: a key typed a
    /// moment before would be taken by the terminal, Ctrl+D for example.
    bool waitForPrompt();

    /// Reads until the program ends; its exit code, or -1 when it was killed or hangs.
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
