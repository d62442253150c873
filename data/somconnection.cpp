// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "somconnection.h"

#include <QMessageBox>
#include <QSqlError>

#include <csignal>
#include <cstdio>

namespace somconnection {
namespace {

constexpr auto ConnectionName = "som";

void showError(const QSqlError& oError)
{
    std::printf("show error\n");
    std::fflush(stdout);
    QMessageBox::warning(nullptr, QStringLiteral("SQL Error"),
        QStringLiteral("Could not open SOM Database!\n\n") + oError.text(), QMessageBox::Ok);
}

} // namespace

QSqlDatabase add(
    const QString& sHost, const QString& sUser, const QString& sPassword, const QString& sDatabase)
{
    QSqlDatabase oDatabase =
        QSqlDatabase::addDatabase(QStringLiteral("QMYSQL"), QLatin1String(ConnectionName));
    oDatabase.setHostName(sHost);
    oDatabase.setUserName(sUser);
    oDatabase.setPassword(sPassword);
    oDatabase.setDatabaseName(sDatabase);
    return oDatabase;
}

bool open(QSqlDatabase& oDatabase)
{
    // The client library sets SIGPIPE to ignored for the whole process.
    struct sigaction oBefore = {};
    sigaction(SIGPIPE, nullptr, &oBefore);
    const bool bOpen = oDatabase.open();
    sigaction(SIGPIPE, &oBefore, nullptr);
    if (!bOpen)
        showError(oDatabase.lastError());
    return bOpen;
}

void remove()
{
    QSqlDatabase::removeDatabase(QLatin1String(ConnectionName));
}

} // namespace somconnection
