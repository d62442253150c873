// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CRealModule.h"

#include <optional>
#include <string>
#include <vector>

/// What a call hands over and gets back, as JSON. Reads the host's memory and changes nothing.
///
/// An int is a number, an array is one, too, of its known length, a text a string; a null slot is null. What
/// the function fills is {} before the call: its memory stands with the answer. What can't be read is
/// {"unreadable": true}.
class CCallReader
{
public:
    /// Looks at the arguments.
    /// @param oItsFunction must have a prototype, and outlive the object
    /// @param iKnownRows number of rows, as far as the host has asked for it; -1 when not
    CCallReader(const SFunction& oItsFunction, void** apArguments, int iKnownRows);

    /// The arguments as an array, in the order of the prototype; null without any.
    [[nodiscard]] std::string arguments() const;

    /// After the call: what was in each result's memory before, and what is there now.
    [[nodiscard]] std::string results();

    /// The first number of the first argument: a node, or after the call the number that was asked for.
    [[nodiscard]] std::optional<int> firstNumber() const;

    /// After results(): the number of rows, as far as the dates that were filled in tell it.
    [[nodiscard]] int rows() const { return iRows; }

private:
    struct SResult
    {
        std::size_t nSlot;
        std::vector<int> viBefore;
        std::optional<std::string> sBefore;
    };

    [[nodiscard]] std::string argument(std::size_t nSlot) const;
    [[nodiscard]] std::string intsArgument(std::size_t nSlot) const;
    [[nodiscard]] std::string floatsArgument(std::size_t nSlot) const;
    [[nodiscard]] bool isResult(std::size_t nSlot) const;
    [[nodiscard]] std::size_t resultLength(std::size_t nSlot) const;
    [[nodiscard]] std::optional<int> number(std::size_t nSlot) const;
    [[nodiscard]] std::string result(const SResult& oResult);
    [[nodiscard]] std::size_t filledLength(const std::vector<int>& viBefore, const std::vector<int>& viAfter);

    const SFunction& oFunction;
    const std::vector<SArgument>& vForms;
    bool bHasSlots;
    int iRows;
    std::vector<void*> vpSlots; ///< as many as can be read
    std::vector<SResult> vResults;
};
