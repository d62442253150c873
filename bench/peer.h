// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QSqlDatabase>

/// What peers share: the toolkit's database classes, used the usual way.
namespace peer {

/// Opens a database on the server of the environment; ends the program when that fails.
QSqlDatabase connection(const char* pcDatabase);

/// The module's statement for the documents of a node.
QString documentsOf(const char* pcSOMTable, const char* pcSourceDatabase, const std::string& sNode);

} // namespace peer
