// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <sys/socket.h>

/// Lets a socket listen at an address of its family; without one the test program ends with a message.
template <typename Address> void listenAt(int iSocket, const Address& oAddress)
{
    const auto* pAddress = reinterpret_cast<const sockaddr*>(&oAddress);
    if (bind(iSocket, pAddress, sizeof oAddress) != 0 || listen(iSocket, 1) != 0)
        qFatal("no socket to listen at");
}
