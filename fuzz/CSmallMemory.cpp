// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CSmallMemory.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t LargestAllocation = 1 << 20;
thread_local bool bSmall = false;

void* allocate(std::size_t nSize) noexcept
{
    return bSmall && nSize > LargestAllocation ? nullptr : std::malloc(nSize > 0 ? nSize : 1);
}

void* allocateOrThrow(std::size_t nSize)
{
    void* pMemory = allocate(nSize);
    if (pMemory == nullptr)
        throw std::bad_alloc();
    return pMemory;
}

} // namespace

CSmallMemory::CSmallMemory()
{
    bSmall = true;
}

CSmallMemory::~CSmallMemory()
{
    bSmall = false;
}

// The address sanitizer watches malloc and free, too.
void* operator new(std::size_t nSize)
{
    return allocateOrThrow(nSize);
}

void* operator new[](std::size_t nSize)
{
    return allocateOrThrow(nSize);
}

void* operator new(std::size_t nSize, const std::nothrow_t& /*oTag*/) noexcept
{
    return allocate(nSize);
}

void* operator new[](std::size_t nSize, const std::nothrow_t& /*oTag*/) noexcept
{
    return allocate(nSize);
}

void operator delete(void* pMemory) noexcept
{
    std::free(pMemory);
}

void operator delete[](void* pMemory) noexcept
{
    std::free(pMemory);
}

void operator delete(void* pMemory, std::size_t /*nSize*/) noexcept
{
    std::free(pMemory);
}

void operator delete[](void* pMemory, std::size_t /*nSize*/) noexcept
{
    std::free(pMemory);
}
