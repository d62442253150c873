// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

class CPlainHost;
class CPrivateServer;

/// A host over documents that differ by their dates. They are the source database "dated", with the columns
/// id (from 1 on), date, title ("row 1" ...) and text ("text 1" ...). The assignment table "dates" puts all
/// of them on node 0.
namespace datedhost {

/// The dates of documents as the server reads them; a null one is NULL.
struct Dates
{
    QStringList slDates;
    QString sType = QStringLiteral("DATETIME");
    QString sColumn = QStringLiteral("date");
};

/// Makes the documents anew.
void make(const CPrivateServer& oServer, const Dates& oDates);

/// Loads the module, constructs over the documents and chooses node 0. The number of rows.
int choose(CPlainHost& oHost);

/// make(), then choose(), which fails the test if the documents aren't shown.
void show(CPlainHost& oHost, const CPrivateServer& oServer, const Dates& oDates);

/// A date for each day from 2006-01-01 on.
Dates days(int iDays);

/// What the module prints about a date that it can't read.
QByteArray warning(const QByteArray& oDate = {});

} // namespace datedhost
