// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CDataTable.h"
#include "binding/CAnswer.h"
#include "selectionquery.h"

#include <QSqlDatabase>
#include <QStringList>

#include <ctime>
#include <memory>

class CRowColorDelegate;
class CStoredRows;
class QDateTime;

/// The documents of the chosen node. Owns the database connection, builds and runs the node's query, and
/// answers the host's questions about rows and dates. [ui-thread]
class CTable : public CDataTable
{
    Q_OBJECT

public:
    /// Opens the connection "som"; when that fails a message box says so and the table stays empty. The last
    /// three pointers before `parent` are the hand-over with the host: flag, mutex and condition, not owned.
    CTable(QString host, QString user, QString password, QString somDatabase, QString sourceDatabase,
        int* piThreadFlag, pthread_mutex_t* pFlagMutex, pthread_cond_t* pCond, QWidget* parent,
        const char* name);
    ~CTable() override;

    /// Names the source document table; the columns follow with the next setSOMTable().
    void setSourceTable(QString sName);
    /// Names the assignment table and, once there is a source table, learns the columns by a probe. Title and
    /// date are shown afterwards. The rows on display stay until the next selection.
    void setSOMTable(QString sName);

    /// Shows the documents of a node (0 or greater) and returns their number; a negative node changes nothing
    /// and gives -1. A statement that fails gives no rows. Host colours are off afterwards.
    int selection(int iSelection);
    /// Sets the date filter (an invalid date and `bEnabled` false: none) and selects anew.
    void dateSelection(QDateTime* pDate, bool bEnabled);

    /// Paints rows in the host's colours, three floats a row (hue, saturation, value), from the next paint of
    /// each cell until the next selection. The array stays the host's and must live as long.
    void setRowColors(float* pfRowColors);
    /// Makes the first row later than the start of a time frame before `pcDate` current, with up to five rows
    /// after it in sight. The frame counts units of 3660 seconds; 0 or less stands for ten days.
    void markRow(char* pcDate, int iTimeFrame);

    /// Answers: number of rows.
    void getNumRows(int* piNumRows);
    /// Answers: for each row its minutes after the first readable date; leaves unreadable ones alone. Then
    /// blocks until the host has released the hand-over.
    void fillDate(int* piDate);
    /// Answers: minutes since the epoch of the last date that markRow() looked at.
    void getFirstDateInFrame(int* piFirstDateInFrame);
    /// Answers: the first row's date text, copied without a limit of length; untouched without a row.
    void getFirstDateInSelection(char* pcFirstDateInSelection);

    /// Field names of the current layout: node, dist, then the source table's columns.
    const QStringList& columns() const { return slColumns; }
    const QString& somTable() const { return oTables.sSOMTable; }
    /// The connection, for the tree; lives as long as the table.
    QSqlDatabase* somDatabase() { return &oSOMDatabase; }

public Q_SLOTS:
    /// Shows or hides the column of that index in columns().
    void changeColumn(int index);
    /// Sorts by the column of that index in columns().
    void changeSort(int index);
    /// Opens the cell's text in the web browser if it is the address cell. Blocks until the shell command has
    /// ended.
    void doubleClickOccured(int row, int col, int button, const QPoint& pos);

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;

private:
    std::shared_ptr<CStoredRows> execute(const QString& sStatement);
    QStringList shownColumns() const;
    int findRowAfter(std::time_t iStart);
    void showMarkedRow(int iRow);
    void scrollToMarkedRow(int iRow);

    QSqlDatabase oSOMDatabase;
    std::shared_ptr<CStoredRows>
        pSelectCursor; ///< the last probe or selection; the model keeps what it shows
    selectionquery::Tables oTables;
    QString sSortField = QStringLiteral("date");
    QStringList slColumns;
    std::unique_ptr<bool[]> pbShowColumn; ///< one per entry of slColumns
    int iNode = -1;
    QString sDateFilter;
    std::time_t tReference = -1;
    std::time_t tFrameStart = -1;
    int iRowMarkedUnseen = -1; ///< marked while the table was not on the screen
    CRowColorDelegate* pDelegate;
    CAnswer oAnswer;
};
