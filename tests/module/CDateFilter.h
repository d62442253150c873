// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CAnalyst.h"

#include <QStringList>

class CPrivateServer;

/// A window with the documents of node 1, and somebody who fills in its date filter.
class CDateFilter
{
public:
    /// Starts the host and the server's record of statements. Server and screen aren't owned.
    CDateFilter(const CPrivateServer& oItsServer, CScreen& oScreen);

    /// Clicks the check box.
    void clickBox();
    /// Checks the box, goes on to the field, types into it and presses further keys.
    void fillIn(const QByteArray& oDigits, const QByteArrayList& lKeys = {});
    /// "select by date", and whether it is marked: "[x]" or "[ ]".
    QByteArray box() { return oAnalyst.text("checkdate"); }
    QByteArray field() { return oAnalyst.text("dateedit"); }

    /// The part of each statement behind "AND news.document.date ", without the order; empty for a statement
    /// that doesn't filter.
    QStringList conditions() const;
    /// The condition that stands for a day, and the one that stands for an instant.
    static QString day(const QString& sDay) { return QStringLiteral("like \"%1%\"").arg(sDay); }
    static QString instant(const QString& sInstant) { return QStringLiteral("=\"%1\"").arg(sInstant); }

    CPlainHost oHost;
    CAnalyst oAnalyst;

private:
    const CPrivateServer& oServer;
};
