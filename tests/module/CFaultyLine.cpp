// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CFaultyLine.h"

#include "listening.h"

#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

sockaddr_un address(const QByteArray& oName)
{
    sockaddr_un oAddress{};
    oAddress.sun_family = AF_UNIX;
    std::strncpy(oAddress.sun_path, oName.constData(), sizeof oAddress.sun_path - 1);
    return oAddress;
}

// None of the sockets is for the programs that the test starts.
int newSocket()
{
    return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

void sendAll(int iSocket, const char* pcBytes, qint64 iLength)
{
    while (iLength > 0) {
        const ssize_t iSent = send(iSocket, pcBytes, std::size_t(iLength), MSG_NOSIGNAL);
        if (iSent <= 0)
            return;
        pcBytes += iSent;
        iLength -= iSent;
    }
}

} // namespace

CFaultyLine::CFaultyLine(const QString& sServer, const QTemporaryDir& oFolder)
    : oServerName(sServer.toUtf8())
    , oName(oFolder.filePath(QStringLiteral("line")).toUtf8())
    , iListening(newSocket())
{
    unlink(oName.constData()); // of the line before
    listenAt(iListening, address(oName));
    if (pipe2(aiWake.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        qFatal("no pipe");
    oThread = std::thread([this] { run(); });
}

CFaultyLine::~CFaultyLine()
{
    {
        const std::lock_guard<std::mutex> lock(oMutex);
        bEnding = true;
    }
    wake();
    oThread.join();
    for (const int iFile : {iListening, aiWake[0], aiWake[1]})
        close(iFile);
}

void CFaultyLine::wake() const
{
    (void)!write(aiWake[1], "", 1); // a full pipe does as well
}

void CFaultyLine::breakBehind(qint64 iBytes)
{
    const std::lock_guard<std::mutex> lock(oMutex);
    iLeft = iBytes;
    bBreaks = true;
}

void CFaultyLine::fallSilentBehind(qint64 iBytes)
{
    const std::lock_guard<std::mutex> lock(oMutex);
    iLeft = iBytes;
    bBreaks = false;
}

void CFaultyLine::goOn()
{
    {
        const std::lock_guard<std::mutex> lock(oMutex);
        iLeft = Endless;
        bSilent = false;
    }
    wake();
}

bool CFaultyLine::isSilent()
{
    const std::lock_guard<std::mutex> lock(oMutex);
    return bSilent;
}

qint64 CFaultyLine::passed()
{
    const std::lock_guard<std::mutex> lock(oMutex);
    return std::exchange(iPassed, 0);
}

int CFaultyLine::connections()
{
    const std::lock_guard<std::mutex> lock(oMutex);
    return iConnections;
}

void CFaultyLine::accept()
{
    const Pair oPair{accept4(iListening, nullptr, nullptr, SOCK_CLOEXEC), newSocket()};
    const sockaddr_un oAddress = address(oServerName);
    connect(oPair.iServer, reinterpret_cast<const sockaddr*>(&oAddress), sizeof oAddress);
    lPairs.push_back(oPair);
    const std::lock_guard<std::mutex> lock(oMutex);
    iConnections++;
}

// What the server says comes this way. The result is whether the connection goes on.
bool CFaultyLine::answer(const Pair& oPair, int iLength)
{
    std::array<char, 65536> acBytes;
    const std::lock_guard<std::mutex> lock(oMutex);
    const qint64 iNow = std::min<qint64>(iLength, iLeft);
    if (recv(oPair.iServer, acBytes.data(), std::size_t(iNow), 0) < iNow)
        return false;
    sendAll(oPair.iClient, acBytes.data(), iNow);
    iPassed += iNow;
    if (iLeft == Endless)
        return true;
    iLeft -= iNow;
    bSilent = iNow < iLength;
    if (!bSilent || !bBreaks)
        return true;
    iLeft = Endless;
    bSilent = false;
    return false;
}

bool CFaultyLine::passOn(const Pair& oPair)
{
    std::array<char, 65536> acBytes;
    const ssize_t iSaid = recv(oPair.iServer, acBytes.data(), acBytes.size(), MSG_PEEK | MSG_DONTWAIT);
    if (iSaid == 0 || (iSaid > 0 && !answer(oPair, int(iSaid))))
        return false;
    const ssize_t iAsked = recv(oPair.iClient, acBytes.data(), acBytes.size(), MSG_DONTWAIT);
    if (iAsked > 0)
        sendAll(oPair.iServer, acBytes.data(), iAsked);
    return iAsked != 0;
}

void CFaultyLine::run()
{
    for (;;) {
        std::vector<pollfd> vFiles{{aiWake[0], POLLIN, 0}, {iListening, POLLIN, 0}};
        {
            const std::lock_guard<std::mutex> lock(oMutex);
            if (bEnding)
                break;
            for (const Pair& oPair : lPairs) {
                vFiles.push_back({oPair.iClient, POLLIN, 0});
                if (!bSilent)
                    vFiles.push_back({oPair.iServer, POLLIN, 0});
            }
        }
        poll(vFiles.data(), vFiles.size(), -1);
        std::array<char, 16> acBytes;
        (void)!read(aiWake[0], acBytes.data(), acBytes.size());
        if ((vFiles[1].revents & POLLIN) != 0)
            accept();
        lPairs.remove_if([this](const Pair& oPair) {
            const bool bEnds = !passOn(oPair);
            if (bEnds) {
                close(oPair.iClient);
                close(oPair.iServer);
            }
            return bEnds;
        });
    }
    for (const Pair& oPair : lPairs) {
        close(oPair.iClient);
        close(oPair.iServer);
    }
}
