// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <memory>

class QSqlQuery;

/// The rows of the keyword query: row k belongs to node k. Copies no text: each is read and shortened when it
/// is asked for. [ui-thread]
class CKeywordTable
{
public:
    /// Takes a result that is active; its field 0 is the topic, field 1 the keywords.
    explicit CKeywordTable(std::unique_ptr<QSqlQuery> pResult);
    ~CKeywordTable();
    CKeywordTable(const CKeywordTable&) = delete;
    CKeywordTable& operator=(const CKeywordTable&) = delete;

    int numRows() const { return iNumRows; }
    /// The node must have a row.
    int topic(int iNode) const;
    /// As the tree shows them; null for a node without a row.
    QString keywords(int iNode) const;

private:
    void seek(int iRow) const;

    std::unique_ptr<QSqlQuery> pQuery;
    int iNumRows;
};
