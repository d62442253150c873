// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

/// The kinds of argument that a prototype may declare.
enum class EKind
{
    eInt, ///< `int`, passed as a pointer to it
    eText, ///< `char*`
    eInts, ///< `int*`
    eFloats, ///< `float*`
};

/// One argument of a prototype.
struct SArgument
{
    EKind eKind;
    std::string sName; ///< empty when the prototype doesn't name it
};

/// One prototype of a class descriptor, such as "void select(int iSelection)".
class CPrototype
{
public:
    /// Reads @p sPrototype; throws CError, which quotes the text, when it isn't a prototype with known types.
    explicit CPrototype(const std::string& sPrototype);

    [[nodiscard]] const std::string& text() const { return sText; }
    [[nodiscard]] const std::string& name() const { return sName; }
    [[nodiscard]] const std::vector<SArgument>& arguments() const { return vArguments; }

    /// "argument 2 (iTimeFrame)" for @p nIndex 1; without brackets when the argument has no name.
    [[nodiscard]] std::string argumentLabel(std::size_t nIndex) const;

private:
    std::string sText;
    std::string sName;
    std::vector<SArgument> vArguments;
};

/// The kind as C declares it: "int", "char*", "int*" or "float*".
const char* declaration(EKind eKind);
