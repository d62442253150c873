// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "binding/CHandover.h"
#include "table/CTable.h"

class CPrivateServer;

/// A document table on the test's server, over the databases "som" and "news", with its hand-over. Takes its
/// connection along when it goes.
class CTestTable
{
public:
    /// The password is that of the environment unless another one is given.
    explicit CTestTable(const QString& sPassword = qEnvironmentVariable("MYSQL_PWD"));
    ~CTestTable();
    CTestTable(const CTestTable&) = delete;
    CTestTable& operator=(const CTestTable&) = delete;

    CTable* operator->() { return pTable.get(); }
    CTable& operator*() { return *pTable; }
    QWidget* viewport() { return pTable->viewport(); }

    /// Source table and assignment table.
    void setTables(const QString& sSourceTable = QStringLiteral("document"),
        const QString& sSOMTable = QStringLiteral("news_train"));
    /// Makes a source table whose documents, all of node 0, have these dates (null: NULL) in this order and
    /// are titled "row 1" and so on, and selects the node.
    void showDates(const CPrivateServer& oServer, const QStringList& slDates);
    /// Shows the table and waits until it is on the screen and has the focus.
    void show();
    /// Shows or hides columns by their names.
    void toggleColumns(const QStringList& slNames);

    QStringList picture();
    /// The place of a cell in the viewport.
    QRect cell(int iRow, int iColumn);
    /// Titles of the records that the table announces as current, from the call on; they go where the caller
    /// wants them.
    void recordCurrentTitles(QStringList& slTitles);
    /// "row, column, button, x, y" of the double clicks that the table announces.
    void recordDoubleClicks(QStringList& slClicks);

    CHandover oHandover;

private:
    std::unique_ptr<CTable> pTable;
};
