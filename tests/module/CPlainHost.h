// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayList>
#include <QProcess>

/// The plain host (plainhost.c) as a process of its own, driven from a test. Every wait has a limit that is
/// for a hang only; when it passes, the answer is "no answer" and the host is killed. Ends with the object.
class CPlainHost
{
public:
    /// Starts the host in the current process's environment.
    CPlainHost();
    ~CPlainHost();
    CPlainHost(const CPlainHost&) = delete;
    CPlainHost& operator=(const CPlainHost&) = delete;

    /// Gives a command and waits for its answer. Commands: see plainhost.c.
    QByteArray command(const QByteArrayList& lFields);
    /// Gives a command that won't be answered, because it ends the host or waits.
    void give(const QByteArrayList& lFields);
    /// The answer to a command that give() has given.
    QByteArray answer();

    /// Loads the module, and for load("again") after unloading expects the same answer: "loaded".
    QByteArray load();
    /// Calls a method; the arguments are written as in hostmodule.h.
    QByteArray call(const QByteArray& oMethod, const QByteArrayList& lArguments = {});
    /// Constructs with the databases "som" and "news".
    QByteArray construct();
    /// Takes one construction back.
    void free();
    /// Loads, names the assignment table news_train, constructs, passes the hierarchy 0 -> 1, 2, 3 and waits
    /// until all is done. "window" unless something failed.
    QByteArray start();
    /// Passes a hierarchy, with the children of each node such as "1,2,3".
    void passHierarchy(const QByteArrayList& lChildren = {"1,2,3", "", "", ""});
    /// Passes the children of one node.
    void passNode(const QByteArray& oChildren, int iNode, int iNumNodes);
    /// The number of rows shown.
    int numRows();
    /// What somebody in front of the display sees, after all that they did before has taken effect.
    /// Questions: see probe.cpp. Waits as long as the user interface is busy.
    QByteArrayList ask(const QByteArrayList& lQuestion);

    /// Lines that the module has printed to standard output so far, answers left out.
    QByteArrayList output();
    /// Lines on standard error so far.
    QByteArrayList errors();
    /// The lines that the module will print, until the next look at them. The host lives until they have
    /// come.
    void announceOutput(const QByteArrayList& lLines) { lAnnouncedOutput += lLines; }
    void announceErrors(const QByteArrayList& lLines) { lAnnouncedErrors += lLines; }

    /// Waits for the end of the process: its exit code, or a text that says how it ended otherwise.
    QByteArray end();

    qint64 processId() const { return oProcess.processId(); }
    /// Numbers of the process's threads, in ascending order; the first is the main thread.
    QList<int> threads() const;
    /// Whether a thread sleeps in the system call of that number (SYS_futex and the like).
    bool sleepsIn(int iThread, long lSystemCall) const;

private:
    bool readMore();
    void readOutput();
    QByteArrayList readErrors();
    void waitForAnnouncedLines();

    QProcess oProcess;
    QByteArray oUnread;
    QByteArrayList lOutput;
    QByteArray oErrors;
    qsizetype iSeenOutput = 0; ///< number of lines that the test has looked at
    qsizetype iSeenErrors = 0;
    QByteArrayList lAnnouncedOutput; ///< of those behind them
    QByteArrayList lAnnouncedErrors;
};
