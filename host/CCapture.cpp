// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CCapture.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sstream>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>

namespace {

int checked(int iResult, const char* pcWhat)
{
    if (iResult < 0) {
        throw std::system_error(errno, std::generic_category(), pcWhat);
    }
    return iResult;
}

} // namespace

// Memory and not a pipe: a call that prints much must not wait for somebody to read.
CCapture::CCapture(int iTaken)
    : iChannel(iTaken)
    , iReal(checked(fcntl(iTaken, F_DUPFD_CLOEXEC, 0), "can't keep the channel"))
    , iStore(checked(memfd_create("printed", MFD_CLOEXEC), "no memory for what is printed"))
{
    std::fflush(stdout);
    checked(dup2(iStore, iChannel), "can't take the channel");
}

CCapture::~CCapture()
{
    std::fflush(stdout);
    dup2(iReal, iChannel);
    readMore();
    pass(sUntaken);
    close(iStore);
    close(iReal);
}

std::size_t CCapture::lineCount()
{
    readMore();
    return std::size_t(std::count(sUntaken.begin(), sUntaken.end(), '\n'));
}

std::vector<std::string> CCapture::take()
{
    readMore();
    std::istringstream oText(sUntaken);
    sUntaken.clear();
    std::vector<std::string> vLines;
    for (std::string sLine; std::getline(oText, sLine);) {
        vLines.push_back(sLine);
    }
    return vLines;
}

void CCapture::pass(const std::string& sText) const
{
    std::size_t nDone = 0;
    while (nDone < sText.size()) {
        const ssize_t iCount = write(iReal, sText.data() + nDone, sText.size() - nDone);
        if (iCount < 0 && errno != EINTR) {
            return; // as with any other output nobody can take
        }
        nDone += std::size_t(std::max<ssize_t>(iCount, 0));
    }
}

void CCapture::readMore()
{
    std::array<char, 4096> acPart;
    for (;;) {
        const ssize_t iCount = pread(iStore, acPart.data(), acPart.size(), iRead);
        if (iCount <= 0) {
            return;
        }
        sUntaken.append(acPart.data(), std::size_t(iCount));
        iRead += iCount;
    }
}
