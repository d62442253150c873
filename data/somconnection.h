// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QSqlDatabase>

/// The module's one database connection, named "som". The process's handling of SIGPIPE stays as it was.
/// [ui-thread]
namespace somconnection {

/// Adds the connection with its parameters; doesn't open it. Port and options are the driver's defaults.
QSqlDatabase add(
    const QString& sHost, const QString& sUser, const QString& sPassword, const QString& sDatabase);

/// Opens the connection. On failure prints "show error" to standard output, shows a modal message box with
/// the driver's and the server's texts and returns false.
bool open(QSqlDatabase& oDatabase);

/// Forgets the connection; every copy of it must be gone.
void remove();

} // namespace somconnection
