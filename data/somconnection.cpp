// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "somconnection.h"

#include "sqllog.h"

#include <QElapsedTimer>
#include <QMessageBox>
#include <QSqlDriver>
#include <QSqlError>
#include <QVariant>

#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <mysql.h>

namespace somconnection {
namespace {

constexpr auto ConnectionName = "som";

/// Puts the process's handling of SIGPIPE back, which the client library sets to ignored when it is loaded or
/// used first.
class CKeptPipeSignal
{
public:
    CKeptPipeSignal() { sigaction(SIGPIPE, nullptr, &oBefore); }
    ~CKeptPipeSignal() { sigaction(SIGPIPE, &oBefore, nullptr); }
    CKeptPipeSignal(const CKeptPipeSignal&) = delete;
    CKeptPipeSignal& operator=(const CKeptPipeSignal&) = delete;

private:
    struct sigaction oBefore = {};
};

// The client library leaves its socket open for programs that this process starts.
void keepFromPrograms(const QSqlDatabase& oDatabase)
{
    const QVariant oHandle = oDatabase.driver()->handle();
    if (oHandle.metaType() != QMetaType::fromType<MYSQL*>())
        return;
    auto* pConnection = *static_cast<MYSQL* const*>(oHandle.constData());
    fcntl(int(mysql_get_socket(pConnection)), F_SETFD, FD_CLOEXEC);
}

void tell(const QSqlDatabase& oDatabase, bool bOpen, qint64 iMilliseconds)
{
    qCDebug(sqllog::category, R"(connection to %s on "%s" as "%s" %s after %lld ms)",
        qUtf8Printable(oDatabase.databaseName()), qUtf8Printable(oDatabase.hostName()),
        qUtf8Printable(oDatabase.userName()), bOpen ? "open" : "failed",
        static_cast<long long>(iMilliseconds));
}

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
    const CKeptPipeSignal keptPipeSignal;
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
    {
        const CKeptPipeSignal keptPipeSignal;
        QElapsedTimer oTimer;
        oTimer.start();
        const bool bOpen = oDatabase.open();
        tell(oDatabase, bOpen, oTimer.elapsed());
        if (bOpen) {
            keepFromPrograms(oDatabase);
            return true;
        }
    }
    showError(oDatabase.lastError());
    return false;
}

void remove()
{
    QSqlDatabase::removeDatabase(QLatin1String(ConnectionName));
}

} // namespace somconnection
