// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "statement.h"
#include "value.h"

#include <map>
#include <string>
#include <vector>

/// The variables of a script, and the values of the expressions that use them.
class CVariables
{
public:
    void set(const std::string& sName, const Value& oValue) { oValues.insert_or_assign(sName, oValue); }

    /// Throws CError when there is no such variable.
    [[nodiscard]] const Value& get(const std::string& sName) const;

    /// The names, sorted.
    [[nodiscard]] std::vector<std::string> names() const;

    /// What @p oExpression stands for. Throws CError.
    [[nodiscard]] Value evaluate(const SExpression& oExpression) const;

private:
    [[nodiscard]] SNumbers array(const SExpression& oExpression) const;
    [[nodiscard]] SBuffer buffer(const SExpression& oExpression) const;
    [[nodiscard]] int product(const SExpression& oExpression) const;
    [[nodiscard]] SNumbers repeat(const SExpression& oExpression) const;
    [[nodiscard]] SNumbers ramp(const SExpression& oExpression) const;
    [[nodiscard]] int count(const SExpression& oExpression) const;

    std::map<std::string, Value> oValues;
};
