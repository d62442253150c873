// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CMapModel.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

constexpr int Documents = 300;
constexpr int FullestNode = 40;
constexpr std::time_t FirstTime = 1108425600; // February 15 to April 15, 2005: summer time begins between
constexpr std::time_t LastTime = 1113523200;
constexpr std::time_t FilterTime = 1110000000;
constexpr int NullDocument = 7;
constexpr int ZerosDocument = 11;

std::tm localTime(std::time_t tDate)
{
    std::tm oLocal{};
    localtime_r(&tDate, &oLocal);
    return oLocal;
}

} // namespace

CMapModel::CMapModel(QRandomGenerator& oRandom)
    : lTables({"one_train", "two_train", "three_train"})
{
    QList<int> lNumbers(Documents);
    std::iota(lNumbers.begin(), lNumbers.end(), 0);
    std::shuffle(lNumbers.begin(), lNumbers.end(), oRandom);
    for (int i = 0; i < Documents; i++) {
        Document oDocument{i + 1, {}, i == ZerosDocument, "title " + QByteArray::number(1000 + lNumbers[i])};
        const auto isTaken = [&](const Document& oOther) { return oOther.tDate == oDocument.tDate; };
        while (i != NullDocument && i != ZerosDocument
            && (!oDocument.tDate || std::any_of(lDocuments.begin(), lDocuments.end(), isTaken)))
            oDocument.tDate = aTime(oRandom);
        lDocuments << oDocument;
    }
    for (const QByteArray& oName : lTables)
        for (int i = 0; i < Nodes; i++) {
            std::shuffle(lNumbers.begin(), lNumbers.end(), oRandom);
            lAssignments[oName] << lNumbers.first(oRandom.bounded(FullestNode));
        }
}

std::time_t CMapModel::aTime(QRandomGenerator& oRandom)
{
    return FirstTime + std::time_t(oRandom.bounded(qint64(LastTime - FirstTime)));
}

std::time_t CMapModel::anyTime(QRandomGenerator& oRandom) const
{
    return aTime(oRandom);
}

QByteArray CMapModel::dateText(std::time_t tDate, char cSeparator)
{
    const std::tm oLocal = localTime(tDate);
    char acText[30];
    std::strftime(acText, sizeof acText, "%Y-%m-%d %H:%M:%S", &oLocal);
    return QByteArray(acText).replace(' ', cSeparator);
}

QByteArray CMapModel::someDay() const
{
    const std::tm oLocal = localTime(FilterTime);
    char acDigits[20];
    std::strftime(acDigits, sizeof acDigits, "%d%m%Y000000", &oLocal);
    return acDigits;
}

QString CMapModel::sql() const
{
    QStringList slStatements{
        QStringLiteral("SET sql_mode=''; CREATE DATABASE som; CREATE DATABASE news; USE som; "
                       "CREATE TABLE news.document (id INT PRIMARY KEY, "
                       "date DATETIME, title VARCHAR(20), text TEXT)")};
    const auto add = [&](const QByteArray& oStatement) { slStatements << QString::fromUtf8(oStatement); };
    for (const Document& oDocument : lDocuments) {
        const QByteArray oDate = oDocument.tDate ? '"' + dateText(*oDocument.tDate, ' ') + '"'
                                                 : QByteArray(oDocument.bZeros ? "0" : "NULL");
        add("INSERT INTO news.document VALUES (" + QByteArray::number(oDocument.iId) + ',' + oDate + ",\""
            + oDocument.oTitle + "\",\"text of " + oDocument.oTitle + "\")");
    }
    for (const QByteArray& oName : lTables) {
        add("CREATE TABLE som." + oName + " (node INT, dist DOUBLE, item INT)");
        const QList<QList<int>> lNodes = lAssignments.value(oName);
        for (int i = 0; i < Nodes; i++)
            for (const int iDocument : lNodes[i])
                add("INSERT INTO som." + oName + " VALUES (" + QByteArray::number(i) + ",0.5,"
                    + QByteArray::number(lDocuments[iDocument].iId) + ')');
        add("CREATE TABLE som." + oName.chopped(6)
            + "_som AS SELECT seq node, seq _assigned_topic, 'x' _keywords FROM "
              "seq_0_to_"
            + QByteArray::number(Nodes - 1));
    }
    return slStatements.join(u';');
}

void CMapModel::begin(const QByteArray& oNewTable)
{
    oTable = oNewTable;
    iNode = -1;
    oSortColumn = "date";
    bFiltered = false;
    lRows.clear();
    iCurrent = -1;
    oText = "no article selected";
    tFrameStart = -1;
}

void CMapModel::changeTable(const QByteArray& oNewTable, int iNewNode)
{
    oTable = oNewTable;
    select(iNewNode);
}

void CMapModel::select(int iNewNode)
{
    if (iNewNode < 0)
        return;
    iNode = iNewNode;
    refresh();
}

void CMapModel::sortBy(const QByteArray& oColumn)
{
    oSortColumn = oColumn;
    refresh();
}

void CMapModel::setFilter(bool bOn)
{
    bFiltered = bOn;
    refresh();
}

// No date comes before zeros, and zeros before every date.
bool CMapModel::isBefore(int iOne, int iOther) const
{
    const auto key = [this](int i) {
        const Document& oDocument = lDocuments[i];
        return oDocument.tDate ? *oDocument.tDate : std::time_t(oDocument.bZeros ? -1 : -2);
    };
    if (oSortColumn == "date")
        return key(iOne) < key(iOther);
    return oSortColumn == "title" ? lDocuments[iOne].oTitle < lDocuments[iOther].oTitle : iOne < iOther;
}

void CMapModel::refresh()
{
    if (iNode < 0)
        return;
    iCurrent = -1;
    lRows = lAssignments[oTable].value(iNode);
    const QByteArray oDay = dateText(FilterTime, ' ').first(10);
    if (bFiltered)
        lRows.removeIf([&](int i) {
            return !lDocuments[i].tDate || !dateText(*lDocuments[i].tDate, ' ').startsWith(oDay);
        });
    std::sort(lRows.begin(), lRows.end(), [this](int iOne, int iOther) { return isBefore(iOne, iOther); });
}

void CMapModel::clickRow(int iRow)
{
    iCurrent = iRow;
    oText = textOf(lRows[iRow]);
}

void CMapModel::mark(std::time_t tDate, int iFrame)
{
    constexpr std::time_t Unit = 3660; // seconds
    constexpr std::time_t TenDays = 864000;
    const std::time_t tStart = tDate - (iFrame > 0 ? iFrame * Unit : TenDays);
    for (int i = 0; i < numRows(); i++) {
        const auto tRow = lDocuments[lRows[i]].tDate;
        if (!tRow) {
            iWarnings++;
            continue;
        }
        tFrameStart = *tRow;
        if (tFrameStart > tStart) {
            clickRow(i);
            return;
        }
    }
}

int CMapModel::roundToMinutes(double dSeconds)
{
    return int(std::lround(dSeconds / 60.0));
}

QByteArray CMapModel::minutes()
{
    QByteArrayList lMinutes;
    std::optional<std::time_t> tBase;
    for (const int iDocument : lRows) {
        const auto tRow = lDocuments[iDocument].tDate;
        if (!tRow) {
            iWarnings++;
            lMinutes << "-7777"; // the host's own value
            continue;
        }
        tBase = tBase.value_or(*tRow);
        lMinutes << QByteArray::number(roundToMinutes(double(*tRow - *tBase)));
    }
    return lMinutes.join(' ');
}

std::optional<QByteArray> CMapModel::firstDate() const
{
    if (lRows.isEmpty())
        return std::nullopt;
    const auto tRow = lDocuments[lRows.first()].tDate;
    return tRow ? dateText(*tRow, 'T') : QByteArray();
}
