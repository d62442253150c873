// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "data/CStoredRows.h"

#include <string>

/// The rows of the keyword query: row k belongs to node k. Copies no text: each is read and shortened when it
/// is asked for. [ui-thread]
class CKeywordTable
{
public:
    /// Takes an executed query; its field 0 is the topic, field 1 the keywords.
    explicit CKeywordTable(QSqlQuery&& oExecuted);

    int numRows() const { return oRows.numRows(); }
    /// The node must have a row.
    int topic(int iNode) const;
    /// As the tree shows them, in UTF-8; the node must have a row. The text stays until the next call.
    std::string_view shown(int iNode) const;
    /// As the tree shows them; null for a node without a row.
    QString keywords(int iNode) const;
    /// All that the node has, on one line; of a very long text the beginning. Empty for a node without a row.
    QString allKeywords(int iNode) const;

private:
    QVariant value(int iNode, int iField) const;

    CStoredRows oRows;
    bool bShortTopics; ///< the topics are numbers that the server sends in full
    bool bTexts; ///< the keywords are texts
    mutable std::string oShown;
};
