// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// Owner of every buffer that is handed to a module.
///
/// A module may read or write a buffer after the call has returned, until its own thread has handled the
/// call, and some (colours) even until a later call. The host can't know when that is, so an arena never
/// frees or moves a buffer before it is destroyed itself, and the program never destroys its arena.
class CArena
{
public:
    /// Zeroed array at a fixed address; with @p nLength 0 a non-null pointer to no element.
    /// The address sanitizer sees every access beyond the end, as each array is an allocation of its own.
    /// Throws std::bad_alloc.
    template <typename T> T* array(std::size_t nLength)
    {
        const std::shared_ptr<T[]> pArray(new T[nLength]());
        vpBuffers.emplace_back(pArray, pArray.get());
        return pArray.get();
    }

    /// Copy of @p sText with its terminating zero.
    char* text(const std::string& sText);

private:
    std::vector<std::shared_ptr<void>> vpBuffers;
};
