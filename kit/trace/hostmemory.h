// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// Looks at the host's memory without trusting its pointers: what can't be read is said, and nobody crashes.
namespace hostmemory {

/// Copies up to @p nBytes; returns how many could be read, from the first one on.
std::size_t copy(const void* pFrom, void* pTo, std::size_t nBytes);

/// The text at an address, without its terminator and cut after 65,536 bytes; nothing if it can't be read.
std::optional<std::string> text(const char* pcText);

/// The elements at an address that can be read, @p nMost at most.
template <typename T> std::vector<T> elements(const void* pFrom, std::size_t nMost)
{
    std::vector<T> vElements(nMost);
    vElements.resize(copy(pFrom, vElements.data(), nMost * sizeof(T)) / sizeof(T));
    return vElements;
}

} // namespace hostmemory
