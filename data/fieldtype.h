// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

class QString;
struct st_mysql_field;

/// Types of a table's columns.
namespace fieldtype {

/// The type as one writes it in a table's definition ("INT UNSIGNED"), without a length; empty for a type
/// that no column has. JSON comes as TEXT, as the server sends it.
QString name(const st_mysql_field& oField);

} // namespace fieldtype
