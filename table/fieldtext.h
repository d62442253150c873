// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

class QLocale;
class QString;
class QVariant;

/// Texts of field values. Pure functions.
namespace fieldtext {

/// The value as text: dates in ISO form with the letter T and without fractions of a second, floating-point
/// numbers with up to 15 digits, NULL as "".
QString plain(const QVariant& oValue);

/// The value as a cell shows it: dates in the short form of `oLocale`, a missing value or zero date as
/// "NULL", anything else as plain().
QString shown(const QVariant& oValue, const QLocale& oLocale);

} // namespace fieldtext
