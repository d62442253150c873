// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <limits>
#include <list>
#include <mutex>
#include <thread>

class QTemporaryDir;

/// A line between clients and a server's Unix socket that goes bad when it is told to: it breaks, or falls
/// silent, within what the server says. Passes everything on in a thread of its own. Ends with the object.
class CFaultyLine
{
public:
    /// The folder for the line's own socket isn't owned.
    CFaultyLine(const QString& sServer, const QTemporaryDir& oFolder);
    ~CFaultyLine();
    CFaultyLine(const CFaultyLine&) = delete;
    CFaultyLine& operator=(const CFaultyLine&) = delete;

    /// Where clients find it.
    QByteArray socket() const { return oName; }

    /// Breaks the connection that the server's next words come by, behind that number of their bytes. Later
    /// connections are good.
    void breakBehind(qint64 iBytes);
    /// Passes no more than that number of bytes of the server's next words, until goOn().
    void fallSilentBehind(qint64 iBytes);
    void goOn();
    /// Whether the server has said more than a silent line passes.
    bool isSilent();
    /// Bytes of the server's that were passed on since the last call.
    qint64 passed();
    /// Connections that clients have made so far.
    int connections();

private:
    /// A client, and the server's end of its connection.
    struct Pair
    {
        int iClient;
        int iServer;
    };

    void run();
    void accept();
    bool passOn(const Pair& oPair);
    bool answer(const Pair& oPair, int iLength);
    void wake() const;

    QByteArray oServerName;
    QByteArray oName;
    int iListening;
    std::array<int, 2> aiWake{-1, -1}; ///< a pipe; a byte in it ends a wait
    std::list<Pair> lPairs;
    std::mutex oMutex; ///< for all below
    qint64 iLeft = Endless;
    qint64 iPassed = 0;
    int iConnections = 0;
    bool bBreaks = false;
    bool bSilent = false;
    bool bEnding = false;
    static constexpr qint64 Endless = std::numeric_limits<qint64>::max();
    std::thread oThread;
};
