// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "peer.h"

#include "CClient.h"
#include "workerloop.h"

namespace peer {

QSqlDatabase connection(const char* pcDatabase)
{
    QSqlDatabase oDatabase = QSqlDatabase::addDatabase(QStringLiteral("QMYSQL"));
    oDatabase.setHostName(qEnvironmentVariable("MYSQL_HOST"));
    oDatabase.setUserName(qEnvironmentVariable("MYSQL_USER"));
    oDatabase.setPassword(qEnvironmentVariable("MYSQL_PWD"));
    oDatabase.setDatabaseName(QString::fromLocal8Bit(pcDatabase));
    if (!oDatabase.open())
        workerloop::fail("no connection");
    return oDatabase;
}

QString documentsOf(const char* pcSOMTable, const char* pcSourceDatabase, const std::string& sNode)
{
    return QString::fromStdString(::documentsOf(pcSOMTable, pcSourceDatabase, std::stoi(sNode)));
}

} // namespace peer
