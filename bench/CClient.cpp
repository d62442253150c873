// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CClient.h"

#include "workerloop.h"

#include <cstdlib>

CClient::CClient(const std::string& sDatabase)
    : pConnection(mysql_init(nullptr), &mysql_close)
{
    mysql_options(pConnection.get(), MYSQL_SET_CHARSET_NAME, "utf8mb4");
    if (mysql_real_connect(pConnection.get(), std::getenv("MYSQL_HOST"), std::getenv("MYSQL_USER"),
            std::getenv("MYSQL_PWD"), sDatabase.c_str(), 0, nullptr, 0)
        == nullptr)
        workerloop::fail(mysql_error(pConnection.get()));
}

CClient::Result CClient::tryStore(const std::string& sStatement)
{
    if (mysql_real_query(pConnection.get(), sStatement.data(), sStatement.size()) != 0)
        return none();
    return {mysql_store_result(pConnection.get()), &mysql_free_result};
}

CClient::Result CClient::store(const std::string& sStatement)
{
    Result pResult = tryStore(sStatement);
    if (!pResult)
        workerloop::fail(sStatement + ": " + mysql_error(pConnection.get()));
    return pResult;
}

std::string documentsOf(const std::string& sSOMTable, const std::string& sSourceDatabase, int iNode)
{
    const std::string sSource = sSourceDatabase + ".document";
    return "SELECT node, dist, document.* FROM " + sSOMTable + ", " + sSource + " WHERE " + sSource
        + ".id=" + sSOMTable + ".item AND node=" + std::to_string(iNode) + " ORDER BY date";
}
