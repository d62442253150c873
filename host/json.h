// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>
#include <vector>

enum class EJson
{
    eNull,
    eTrue,
    eFalse,
    eNumber,
    eText,
    eNumbers, ///< an array of numbers alone, also an empty one
    eArray,
    eObject,
};

/// A value of the JavaScript Object Notation.
struct SJson
{
    EJson eType = EJson::eNull;
    std::string sText; ///< a text in UTF-8
    std::vector<double> vdNumbers; ///< a number, or an array's
    std::vector<SJson> vElements; ///< of another array, or the values of an object
    std::vector<std::string> vKeys; ///< of an object, in the order of its values

    /// The value under a key of an object; null when there is none.
    [[nodiscard]] const SJson* find(std::string_view svKey) const;

    [[nodiscard]] bool is(EJson eWanted) const { return eType == eWanted; }
};

/// Reads one value. Throws CError "column N: cause" when the text isn't one, or is nested more than 64 deep.
SJson parseJson(std::string_view svText);
