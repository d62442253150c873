// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <string>

#include <mysql.h>

/// The database as the C client shows it, reached the way the module reaches it: server, user and password
/// from the environment. Ends the program when a statement fails.
class CClient
{
public:
    using Result = std::unique_ptr<MYSQL_RES, decltype(&mysql_free_result)>;

    explicit CClient(const std::string& sDatabase);

    /// Runs a statement and stores its whole result here; null if it fails.
    Result tryStore(const std::string& sStatement);
    /// The same for a statement that must not fail.
    Result store(const std::string& sStatement);

    static Result none() { return {nullptr, &mysql_free_result}; }

private:
    std::unique_ptr<MYSQL, decltype(&mysql_close)> pConnection;
};

/// The module's statement for the documents of a node.
std::string documentsOf(const std::string& sSOMTable, const std::string& sSourceDatabase, int iNode);
