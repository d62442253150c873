// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CLineReader.h"

#include "CError.h"
#include "CSignals.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <unistd.h>

CLineReader::CLineReader(int iOpened, std::string sName, const CSignals& oNoted)
    : iFile(iOpened)
    , sFileName(std::move(sName))
    , oSignals(oNoted)
{
}

std::optional<std::string> CLineReader::next()
{
    std::size_t nEnd = sRead.find('\n');
    while (nEnd == std::string::npos && readMore()) {
        nEnd = sRead.find('\n');
    }
    if (oSignals.pending() || (bEnd && sRead.empty())) {
        return std::nullopt;
    }
    const std::string sLine = sRead.substr(0, nEnd);
    sRead.erase(0, nEnd == std::string::npos ? nEnd : nEnd + 1);
    return sLine;
}

bool CLineReader::readMore()
{
    if (bEnd || !oSignals.waitReadable(iFile)) {
        return false;
    }
    std::array<char, 4096> acPart;
    const ssize_t iCount = read(iFile, acPart.data(), acPart.size());
    if (iCount < 0) {
        throw CError("can't read \"" + sFileName + "\": " + std::strerror(errno));
    }
    bEnd = iCount == 0;
    sRead.append(acPart.data(), std::size_t(iCount));
    return !bEnd;
}
