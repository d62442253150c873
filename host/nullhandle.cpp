// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "nullhandle.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

// The socket of a local display such as ":77.0"; empty for a display on another machine.
std::string socketPath(const std::string& sDisplay)
{
    const std::size_t nColon = sDisplay.rfind(':');
    const std::string sHost = sDisplay.substr(0, nColon);
    if (nColon == std::string::npos || (!sHost.empty() && sHost != "unix")) {
        return {};
    }
    const std::string sNumber = sDisplay.substr(nColon + 1);
    return "/tmp/.X11-unix/X" + sNumber.substr(0, sNumber.find('.'));
}

// Servers listen at the path and at the abstract address of the same name, or at one of them.
bool connects(const std::string& sPath, bool bAbstract)
{
    sockaddr_un oAddress = {};
    oAddress.sun_family = AF_UNIX;
    if (sPath.size() + 1 >= sizeof(oAddress.sun_path)) {
        return false;
    }
    std::copy(sPath.begin(), sPath.end(), oAddress.sun_path + (bAbstract ? 1 : 0));
    const auto nLength = socklen_t(offsetof(sockaddr_un, sun_path) + sPath.size() + 1);
    const int iSocket = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool bConnected = connect(iSocket, reinterpret_cast<const sockaddr*>(&oAddress), nLength) == 0;
    close(iSocket);
    return bConnected;
}

} // namespace

std::string nullHandleReason(const std::vector<std::string>& vNeeded)
{
    for (const std::string& sName : vNeeded) {
        if (!std::getenv(sName.c_str())) {
            return "the environment variable " + sName + " is not set";
        }
    }
    const char* pcDisplay = std::getenv("DISPLAY");
    if (!pcDisplay || !*pcDisplay) {
        return "DISPLAY is not set: there is no display";
    }
    const std::string sNoDisplay = std::string("no display at DISPLAY=") + pcDisplay;
    const std::string sPath = socketPath(pcDisplay);
    if (sPath.empty()) {
        return sNoDisplay + ", or the module refused";
    }
    return connects(sPath, true) || connects(sPath, false) ? "the module refused" : sNoDisplay;
}
