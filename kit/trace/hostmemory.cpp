// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "hostmemory.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <sys/uio.h>
#include <unistd.h>

namespace hostmemory {
namespace {

constexpr std::size_t PageSize = 4096; // no page of memory is smaller
constexpr std::size_t LongestText = 65'536;

// The kernel copies, and refuses what the process can't read.
bool copyWithinPage(const char* pcFrom, void* pTo, std::size_t nBytes)
{
    const iovec oTo{pTo, nBytes};
    const iovec oFrom{const_cast<char*>(pcFrom), nBytes};
    return process_vm_readv(getpid(), &oTo, 1, &oFrom, 1, 0) == ssize_t(nBytes);
}

std::size_t bytesOnPage(const char* pcFrom)
{
    return PageSize - reinterpret_cast<std::uintptr_t>(pcFrom) % PageSize;
}

} // namespace

std::size_t copy(const void* pFrom, void* pTo, std::size_t nBytes)
{
    const auto* pcFrom = static_cast<const char*>(pFrom);
    auto* pcTo = static_cast<char*>(pTo);
    std::size_t nDone = 0;
    while (nDone < nBytes) {
        const std::size_t nPart = std::min(nBytes - nDone, bytesOnPage(pcFrom + nDone));
        if (!copyWithinPage(pcFrom + nDone, pcTo + nDone, nPart))
            break;
        nDone += nPart;
    }
    return nDone;
}

std::optional<std::string> text(const char* pcText)
{
    std::string sText;
    while (sText.size() < LongestText) {
        std::array<char, PageSize> acPart{};
        const char* pcNext = pcText + sText.size();
        const std::size_t nPart = bytesOnPage(pcNext);
        if (!copyWithinPage(pcNext, acPart.data(), nPart))
            return std::nullopt;
        const std::string_view svPart(acPart.data(), nPart);
        sText += svPart.substr(0, svPart.find('\0'));
        if (svPart.find('\0') != std::string_view::npos)
            return sText;
    }
    return sText.substr(0, LongestText);
}

} // namespace hostmemory
