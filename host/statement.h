// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

enum class EExpression
{
    eNull,
    eWord, ///< sText: bare word, a number or text
    eText, ///< sText: quoted text
    eVariable, ///< sText: name without the dollar sign
    eArray, ///< vParts: the elements
    eBuffer, ///< sText: "int", "float" or "char"; vParts[0]: the length
    eProduct, ///< vParts: the factors
    eRepeat, ///< vParts: count, tuple
    eRamp, ///< vParts: count, first tuple, last tuple
};

/// An argument as written, before its variables are replaced.
struct SExpression
{
    EExpression eType;
    std::string sText;
    std::vector<SExpression> vParts;
};

/// One statement of a script: a call or a built-in.
struct SStatement
{
    std::string sName;
    std::vector<SExpression> vArguments;
    std::string sVariable; ///< the variable behind the arrow; empty when there is none
};
