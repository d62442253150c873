// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLoggingCategory>

class QSqlQuery;

/// Statements, told by the logging category "qtutils.sql", which is silent unless "QT_LOGGING_RULES" switches
/// it on. [ui-thread]
namespace sqllog {

Q_DECLARE_LOGGING_CATEGORY(category)

/// Executes a statement under the mouse pointer of a busy program and tells it with its rows and
/// milliseconds, or with the server's error. False if it failed.
bool execute(QSqlQuery& oQuery, const QString& sStatement);

} // namespace sqllog
