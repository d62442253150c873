// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayList>
#include <QTemporaryDir>

class CPlainHost;

/// A program "firefox" that stands first on a host's path and writes down what it is called with. Those that
/// are still open end with the object, or with the test program.
class CFakeBrowser
{
public:
    enum class State
    {
        Running, ///< takes an address at once
        Ended, ///< takes none; can be started, and then ends at once
        Ready, ///< takes none; can be started, and then stays open
        Missing ///< isn't there, and nothing else on the host's path either
    };

    CFakeBrowser(CPlainHost& oHost, State eState);
    ~CFakeBrowser();
    CFakeBrowser(const CFakeBrowser&) = delete;
    CFakeBrowser& operator=(const CFakeBrowser&) = delete;

    /// A text for each call: the arguments in angle brackets, separated by blanks.
    QByteArrayList calls() const;
    /// The command line that the shell of the first call was given.
    QByteArray commandLine() const;
    /// Ends one that is open, or about to be.
    void close();

    /// A file's name for whatever the shell is made to write.
    QString file() const { return oFolder.filePath(QStringLiteral("file")); }

private:
    QByteArray read(const char* pcFile) const;

    QTemporaryDir oFolder;
    int iPipe; ///< a line in it ends one that is open, and the pipe's end all
};
