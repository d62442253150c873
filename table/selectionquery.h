// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// Texts of the table's statements. Names and values are put in as they stand. Pure functions.
namespace selectionquery {

/// The tables that a statement joins.
struct Tables
{
    QString sSOMTable; ///< assignment table, in the connection's own database
    QString sSourceDB;
    QString sSourceTable;
};

/// One row of the join, to learn its field names.
QString probe(const Tables& oTables);

/// The documents of a node in ascending order of a column. A date filter of up to 10 characters matches the
/// beginning of the date, a longer one the whole; an empty one everything.
QString documents(const Tables& oTables, int iNode, const QString& sSortField, const QString& sDateFilter);

} // namespace selectionquery
