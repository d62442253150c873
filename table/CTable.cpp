// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTable.h"

#include "CRowColorDelegate.h"
#include "CRowDates.h"
#include "data/CStoredRows.h"
#include "data/datetext.h"
#include "data/somconnection.h"
#include "data/sqllog.h"
#include "weblink.h"

#include <QDateTime>
#include <QKeyEvent>
#include <QSqlQuery>
#include <QSqlRecord>

#include <cstring>

namespace {

// Deliberate: an hour and a minute. Test: tst_table_dates, aTimeFrameCountsUnitsOf3660Seconds.
constexpr std::time_t TimeFrameUnit = 3660;
constexpr std::time_t DefaultTimeFrame = 864000; // ten days, in seconds
constexpr int RowsAfterMarked = 5;

QStringList fieldNames(const QSqlRecord& oRecord)
{
    QStringList slNames;
    for (int i = 0; i < oRecord.count(); i++)
        slNames.append(oRecord.fieldName(i));
    return slNames;
}

} // namespace

CTable::CTable(QString host, QString user, QString password, QString somDatabase, QString sourceDatabase,
    int* piThreadFlag, pthread_mutex_t* pFlagMutex, pthread_cond_t* pCond, QWidget* parent, const char* name)
    : CDataTable(parent)
    , pDelegate(new CRowColorDelegate(this))
    , oAnswer(piThreadFlag, pFlagMutex, pCond)
{
    setObjectName(QLatin1String(name));
    oSOMDatabase = somconnection::add(host, user, password, somDatabase);
    somconnection::open(oSOMDatabase); // without a connection the table stays empty
    oTables.sSourceDB = sourceDatabase;
    // From the variable, not from the process's locale, which may have been set by something else long ago.
    model().setLocale(QLocale(qEnvironmentVariable("LANG")));
    setItemDelegate(pDelegate);
    connect(this, qOverload<int, int, int, const QPoint&>(&CDataTable::doubleClicked), this,
        &CTable::doubleClickOccured);
}

// The results must go before the connection they come from.
CTable::~CTable()
{
    model().clear();
}

void CTable::setSourceTable(QString sName)
{
    oTables.sSourceTable = sName;
}

void CTable::setSOMTable(QString sName)
{
    oTables.sSOMTable = sName;
    if (oTables.sSourceTable.isEmpty())
        return;
    pSelectCursor = execute(selectionquery::probe(oTables));
    slColumns = fieldNames(pSelectCursor->fields());
    pbShowColumn = std::make_unique<bool[]>(std::size_t(slColumns.count()));
    for (int i = 0; i < slColumns.count(); i++)
        pbShowColumn[std::size_t(i)] =
            slColumns[i] == QStringLiteral("title") || slColumns[i] == QStringLiteral("date");
}

// A statement that fails gives no rows and, on purpose, no message.
std::shared_ptr<CStoredRows> CTable::execute(const QString& sStatement)
{
    // A query of the connection would use what the driver has freed if it failed to open halfway.
    if (!oSOMDatabase.isOpen())
        return std::make_shared<CStoredRows>(QSqlQuery());
    QSqlQuery oQuery(oSOMDatabase);
    sqllog::execute(oQuery, sStatement);
    auto pRows = std::make_shared<CStoredRows>(std::move(oQuery));
    pRows->keepStamps(CRowDates::field(pRows->fields()));
    return pRows;
}

QStringList CTable::shownColumns() const
{
    QStringList slShown;
    for (int i = 0; i < slColumns.count(); i++)
        if (pbShowColumn[std::size_t(i)])
            slShown.append(slColumns[i]);
    return slShown;
}

int CTable::selection(int iSelection)
{
    if (iSelection < 0)
        return -1;
    pDelegate->setRowColors(nullptr);
    iRowMarkedUnseen = -1;
    iNode = iSelection;
    // First let the old result go: two may not fit into memory.
    pSelectCursor.reset();
    const auto documents = [this] {
        return pSelectCursor = execute(selectionquery::documents(oTables, iNode, sSortField, sDateFilter));
    };
    model().setResult(documents, shownColumns());
    adjustColumns();
    return numRows();
}

void CTable::changeColumn(int index)
{
    if (index >= 0 && index < slColumns.count())
        pbShowColumn[std::size_t(index)] = !pbShowColumn[std::size_t(index)];
    selection(iNode);
}

void CTable::changeSort(int index)
{
    if (index < 0 || index >= slColumns.count())
        qWarning("ASSERT: \"%s\" in %s (%d)", "i <= nodes", __FILE_NAME__, __LINE__);
    sSortField = slColumns.value(index);
    selection(iNode);
}

void CTable::dateSelection(QDateTime* pDate, bool bEnabled)
{
    sDateFilter.clear();
    if (bEnabled && pDate->date().isValid()) {
        sDateFilter = pDate->date().toString(Qt::ISODate);
        // From the parts: a local time that summer time skips has no text as a whole.
        if (pDate->time().msecsSinceStartOfDay() != 0)
            sDateFilter += QLatin1Char('T') + pDate->time().toString(QStringLiteral("HH:mm:ss"));
    }
    selection(iNode);
}

void CTable::setRowColors(float* pfRowColors)
{
    pDelegate->setRowColors(pfRowColors);
}

void CTable::getNumRows(int* piNumRows)
{
    oAnswer.give([&] { *piNumRows = numRows(); });
}

// Deliberate: blocks until the host has set its row colours. Test: tst_table_dates,
// fillDateBlocksUntilItIsReleased.
void CTable::fillDate(int* piDate)
{
    oAnswer.giveAndWait([&] {
        std::optional<std::time_t> tBase;
        // Not beyond the rows that the host was told of: after a new table name the cursor is that of the
        // probe.
        CRowDates oDates(pSelectCursor.get());
        const int iNumRows = std::min(oDates.numRows(), numRows());
        for (int iRow = 0; iRow < iNumRows; iRow++) {
            std::time_t tDate = 0;
            if (!oDates.readTime(iRow, tDate))
                continue;
            if (!tBase)
                tBase = tDate;
            piDate[iRow] = datetext::minutes(tDate - *tBase);
        }
    });
}

int CTable::findRowAfter(std::time_t iStart)
{
    CRowDates oDates(pSelectCursor.get());
    const int iNumRows = oDates.numRows();
    for (int iRow = 0; iRow < iNumRows; iRow++) {
        if (oDates.readTime(iRow, tFrameStart) && tFrameStart > iStart)
            return iRow;
    }
    return -1;
}

void CTable::markRow(char* pcDate, int iTimeFrame)
{
    tReference = datetext::hostTime(pcDate);
    const std::time_t tFrame = iTimeFrame > 0 ? iTimeFrame * TimeFrameUnit : DefaultTimeFrame;
    const int iRow = findRowAfter(tReference - tFrame);
    if (iRow >= 0 && iRow < numRows())
        showMarkedRow(iRow);
}

void CTable::showMarkedRow(int iRow)
{
    const bool bCurrent = currentRow() == iRow;
    if (isVisible()) {
        scrollToMarkedRow(iRow);
    } else {
        selectRow(iRow);
        iRowMarkedUnseen = iRow;
    }
    if (bCurrent)
        announceCurrentRow();
}

// By way of the row five below, so that up to five rows after the marked one come into sight.
void CTable::scrollToMarkedRow(int iRow)
{
    ensureCellVisible(iRow + RowsAfterMarked, 1);
    selectRow(iRow);
    ensureCellVisible(iRow, 1);
}

void CTable::showEvent(QShowEvent* pEvent)
{
    CDataTable::showEvent(pEvent);
    // A table that is not on the screen doesn't know its height, so it is scrolled only now.
    if (iRowMarkedUnseen >= 0 && currentRow() == iRowMarkedUnseen)
        scrollToMarkedRow(iRowMarkedUnseen);
    iRowMarkedUnseen = -1;
}

void CTable::getFirstDateInFrame(int* piFirstDateInFrame)
{
    oAnswer.give([&] { *piFirstDateInFrame = datetext::minutes(tFrameStart); });
}

void CTable::getFirstDateInSelection(char* pcFirstDateInSelection)
{
    oAnswer.give([&] {
        const CRowDates oDates(pSelectCursor.get());
        if (oDates.numRows() > 0)
            std::strcpy(pcFirstDateInSelection, oDates.text(0).constData());
        else
            qDebug("CTable: An Error occurred while getting first date in selection                \n"
                   "SelectCursor is empty!");
    });
}

void CTable::doubleClickOccured(int row, int col, int /*button*/, const QPoint& /*pos*/)
{
    const int iAddress = std::max(int(slColumns.indexOf(QStringLiteral("URL"))), 0);
    if (slColumns.isEmpty() || !pbShowColumn[std::size_t(iAddress)])
        return;
    const auto iVisible = std::count(pbShowColumn.get(), pbShowColumn.get() + iAddress, true);
    if (col == iVisible)
        weblink::run(weblink::commandLine(text(row, col)));
}

void CTable::keyPressEvent(QKeyEvent* pEvent)
{
    if (pEvent->key() == Qt::Key_Return) {
        Q_EMIT doubleClicked(currentRow(), currentColumn(), 0, QPoint(0, 0));
        pEvent->accept();
        return;
    }
    pEvent->ignore();
    CDataTable::keyPressEvent(pEvent);
}
