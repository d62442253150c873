// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "sqllog.h"

#include "CWaitCursor.h"

#include <QElapsedTimer>
#include <QSqlError>
#include <QSqlQuery>

namespace sqllog {

Q_LOGGING_CATEGORY(category, "qtutils.sql", QtWarningMsg)

bool execute(QSqlQuery& oQuery, const QString& sStatement)
{
    const CWaitCursor waitCursor;
    QElapsedTimer oTimer;
    oTimer.start();
    const bool bDone = oQuery.exec(sStatement);
    if (bDone)
        qCDebug(category, "%s: %d rows in %lld ms", qUtf8Printable(sStatement), oQuery.size(),
            static_cast<long long>(oTimer.elapsed()));
    else
        qCDebug(category, "%s: failed after %lld ms: %s", qUtf8Printable(sStatement),
            static_cast<long long>(oTimer.elapsed()), qUtf8Printable(oQuery.lastError().text()));
    return bDone;
}

} // namespace sqllog
