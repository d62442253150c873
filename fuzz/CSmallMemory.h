// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

/// While an object lives, each single allocation beyond a mebibyte fails with std::bad_alloc in this thread,
/// as it would on a machine with little memory. So an input that asks for a huge array neither takes the
/// memory of the machine nor ends the program, and the way out of a failed allocation is tried as well.
class CSmallMemory
{
public:
    CSmallMemory();
    ~CSmallMemory();
    CSmallMemory(const CSmallMemory&) = delete;
    CSmallMemory& operator=(const CSmallMemory&) = delete;
};
