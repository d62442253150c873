// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CRooms.h"

#include "CError.h"

#include <cerrno>
#include <cstring>
#include <string>
#include <sys/mman.h>

void* CRooms::take()
{
    if (!vpFree.empty()) {
        void* pRoom = vpFree.back();
        vpFree.pop_back();
        return pRoom;
    }
    void* pRoom =
        mmap(nullptr, nBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (pRoom == MAP_FAILED) {
        throw CError(std::string("no addresses for an array: ") + std::strerror(errno));
    }
    return pRoom;
}

void CRooms::giveBack(void* pRoom)
{
    madvise(pRoom, nBytes, MADV_DONTNEED); // zeroes it
    vpFree.push_back(pRoom);
}
