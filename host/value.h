// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <variant>
#include <vector>

/// `null`
struct SNull
{
};

/// A bare word: a number for a number's place, else text.
struct SWord
{
    std::string sText;
};

/// Quoted text, or the content of a char buffer.
struct SText
{
    std::string sText;
};

/// An array of numbers.
struct SNumbers
{
    std::vector<double> vdValues;
    std::string sNotInt; ///< the first element that is no int, as written; empty when all are
};

/// A result buffer that is yet to be allocated.
struct SBuffer
{
    std::string sType; ///< "int", "float" or "char"
    int iLength; ///< in elements, not negative
};

/// An argument after its variables have been replaced; what it may stand for depends on the prototype.
using Value = std::variant<SNull, SWord, SText, SNumbers, SBuffer>;

/// The value as an error names it, such as `text "x"`, `number 1.5` or `an array`.
std::string describe(const Value& oValue);

/// The value as `.echo` prints it: text as it is, numbers separated by blanks.
std::string printed(const Value& oValue);

/// The value as an int; throws CError, which begins with @p sWhat, when it is none.
int toInt(const Value& oValue, const std::string& sWhat);

/// The value as an array of numbers; throws CError, which begins with @p sWhat, when it is none.
const SNumbers& toNumbers(const Value& oValue, const std::string& sWhat);
