// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayList>
#include <QMap>
#include <QRandomGenerator>

#include <ctime>
#include <optional>

/// A made-up map with its documents, and what a browser over it must answer, worked out without the module.
/// All dates are local times that a text names without doubt. Numbers of nodes run from 0 to Nodes - 1.
class CMapModel
{
public:
    static constexpr int Nodes = 10;

    explicit CMapModel(QRandomGenerator& oRandom);

    /// Statements that make the databases "som" and "news" with the assignment tables tables().
    QString sql() const;
    const QByteArrayList& tables() const { return lTables; }
    /// A day in the middle of the documents' dates, as 14 digits at midnight.
    QByteArray someDay() const;
    /// A moment among the documents' dates.
    std::time_t anyTime(QRandomGenerator& oRandom) const;

    // What host and user do.

    /// A new window over an assignment table.
    void begin(const QByteArray& oTable);
    /// A new table and a selection from it.
    void changeTable(const QByteArray& oTable, int iNewNode);
    void select(int iNewNode);
    void sortBy(const QByteArray& oColumn);
    /// Limits the selections to someDay(), or not.
    void setFilter(bool bOn);
    /// A click on a row that is on display.
    void clickRow(int iRow);
    /// The row that becomes current; nothing if none is found. Adds to warnings().
    void mark(std::time_t tDate, int iFrame);

    // What is to be seen then.

    int numRows() const { return int(lRows.size()); }
    /// The numbers that fillDate leaves in an array, separated by blanks. Adds to warnings().
    QByteArray minutes();
    /// The first row's date; nothing without a row.
    std::optional<QByteArray> firstDate() const;
    int firstMinuteInFrame() const { return roundToMinutes(tFrameStart); }
    /// Current row, or -1, and the text panel's text.
    int currentRow() const { return iCurrent; }
    const QByteArray& text() const { return oText; }
    /// How many dates could not be read so far.
    int warnings() const { return iWarnings; }

    /// "2005-03-01", sep, "12:30:00".
    static QByteArray dateText(std::time_t tDate, char cSeparator);
    static int roundToMinutes(double dSeconds);

private:
    struct Document
    {
        int iId;
        std::optional<std::time_t> tDate; ///< none: NULL or zeros
        bool bZeros;
        QByteArray oTitle;
    };

    static std::time_t aTime(QRandomGenerator& oRandom);
    bool isBefore(int iOne, int iOther) const;
    void refresh();
    QByteArray textOf(int iDocument) const { return "text of " + lDocuments[iDocument].oTitle; }

    QList<Document> lDocuments;
    QByteArrayList lTables;
    QMap<QByteArray, QList<QList<int>>> lAssignments; ///< documents of each node, by table

    QByteArray oTable;
    int iNode = -1;
    QByteArray oSortColumn;
    bool bFiltered = false;
    QList<int> lRows; ///< documents on display
    int iCurrent = -1;
    QByteArray oText;
    std::time_t tFrameStart = -1;
    int iWarnings = 0;
};
