// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// Rules for table names. Names are neither quoted nor escaped. Pure functions.
namespace tablenames {

/// The keyword table that belongs to an assignment table: a trailing "train" becomes "som", any other name
/// stands for itself.
QString keywordTable(const QString& sSOMTable);

/// The source document table as it is written in statements: database, point, table.
QString qualified(const QString& sDatabase, const QString& sTable);

} // namespace tablenames
