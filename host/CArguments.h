// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CPrototype.h"
#include "value.h"

#include <string>
#include <vector>

class CArena;

/// The untyped arguments of one call, made from values as the prototype demands.
///
/// All memory that the module gets, the array of pointers too, belongs to the arena.
class CArguments
{
public:
    /// Throws CError, which begins with the name of the method, for a wrong number or kind of arguments.
    /// @param oForm must outlive this object
    /// @param oBuffers gets all memory; must outlive every thread of the module
    CArguments(const CPrototype& oForm, const std::vector<Value>& vValues, CArena& oBuffers);

    /// One pointer per argument, in the order of the prototype.
    [[nodiscard]] void** slots() const { return ppSlots; }

    /// A result buffer after the call.
    struct SResult
    {
        std::string sName; ///< name of the argument, or "argument N"
        Value oValue; ///< a word for a single number, else an array or text
    };

    /// Reads the result buffers, in the order of the prototype.
    [[nodiscard]] std::vector<SResult> results() const;

private:
    void* slot(std::size_t nIndex, const Value& oValue);
    void* bufferSlot(std::size_t nIndex, const SBuffer& oBuffer);
    void* intSlot(const Value& oValue, const std::string& sWhat);
    void* textSlot(const Value& oValue, const std::string& sWhat);
    void* intsSlot(const Value& oValue, const std::string& sWhat);
    void* floatsSlot(const Value& oValue, const std::string& sWhat);

    template <typename T> void* allocate(std::size_t nArgument, int iLength);

    struct SResultBuffer
    {
        std::size_t nArgument;
        int iLength;
        void* pData;
    };

    const CPrototype& oPrototype;
    CArena& oArena;
    void** ppSlots;
    std::vector<SResultBuffer> vBuffers;
};
