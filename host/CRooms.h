// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <vector>

/// Zeroed memory for arrays whose length only the module knows: a room has 805 MB of addresses, and takes no
/// more memory than is written. Rooms are never unmapped.
class CRooms
{
public:
    static constexpr std::size_t nBytes = std::size_t(67'108'864) * 3 * sizeof(float);

    /// A room at a fixed address. Throws CError.
    void* take();

    /// Takes back a room that the module doesn't use any more.
    void giveBack(void* pRoom);

private:
    std::vector<void*> vpFree;
};
