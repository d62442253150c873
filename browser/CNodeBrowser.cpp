// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CNodeBrowser.h"

#include "CDateField.h"
#include "CPaneFocus.h"
#include "binding/CCommandEvent.h"
#include "binding/commands.h"
#include "panes.h"
#include "table/CTable.h"
#include "tree/CListView.h"
#include "viewer/CTextView.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QMenu>
#include <QMenuBar>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QSqlRecord>

CNodeBrowser::CNodeBrowser(QString host, QString user, QString password, QString somDatabase,
    QString sourceDatabase, int* piThreadFlag, pthread_mutex_t* pFlagMutex, pthread_cond_t* pCond,
    QWidget* parent, const char* name)
    : QFrame(parent)
    , oMenus(this)
{
    setObjectName(QLatin1String(name));
    setMinimumSize(panes::LeastSize);
    move(0, 0);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    makePanes([&](QWidget* pGroup) {
        return new CTable(host, user, password, somDatabase, sourceDatabase, piThreadFlag, pFlagMutex, pCond,
            pGroup, "table");
    });
    pLayout->addWidget(pPanes);
    makeMenus(*pLayout);
    nameParts();
    connectParts();
}

void CNodeBrowser::makePanes(const std::function<CTable*(QWidget*)>& makeTable)
{
    pPanes = panes::makeSplitter(Qt::Horizontal, this);
    pListView = new CListView(pPanes, "ListView");
    auto* pRightSide = panes::makeSplitter(Qt::Vertical, pPanes);
    pRightSide->setObjectName(QStringLiteral("RightSide"));

    auto* pTableGroup = panes::makeGroup(QStringLiteral("TableGroup"), QBoxLayout::TopToBottom, pRightSide);
    pTableGroup->resize(100, 400);
    pTable = makeTable(pTableGroup);
    panes::addTo(*pTableGroup, pTable, 1);
    makeTextGroup(pRightSide);
    pRightSide->setSizes({panes::TableShare, panes::TextShare});
}

void CNodeBrowser::makeTextGroup(QWidget* pParent)
{
    auto* pGroup = panes::makeGroup(QStringLiteral("EditorGroup"), QBoxLayout::TopToBottom, pParent);
    pTextEdit = new CTextView(pGroup, QStringLiteral("texteditor"));
    pTextEdit->showText(QStringLiteral("no article selected"));
    panes::addTo(*pGroup, pTextEdit, 1);
    panes::addTo(*pGroup, makeDateGroup(pGroup), 0);
}

QWidget* CNodeBrowser::makeDateGroup(QWidget* pParent)
{
    auto* pGroup = panes::makeGroup(QStringLiteral("DateEditGroup"), QBoxLayout::LeftToRight, pParent);
    pGroup->setTitle(QStringLiteral("Date Selection"));
    pCheckDate = new QCheckBox(QStringLiteral("select by date"), pGroup);
    pCheckDate->setObjectName(QStringLiteral("checkdate"));
    pDateEdit = new CDateField(pGroup);
    pDateEdit->setObjectName(QStringLiteral("dateedit"));
    panes::addTo(*pGroup, pCheckDate, 1);
    panes::addTo(*pGroup, pDateEdit, 1);
    return pGroup;
}

void CNodeBrowser::makeMenus(QBoxLayout& oLayout)
{
    auto* pMenuBar = new QMenuBar(this);
    pMenuBar->setObjectName(QStringLiteral("mainBar"));
    oLayout.setMenuBar(pMenuBar);
    auto* pFileMenu = new QMenu(QStringLiteral("&File"), this);
    pFileMenu->setObjectName(QStringLiteral("MenuFile"));
    pFileMenu->addAction(QStringLiteral("&Quit"), this, &QWidget::hide);
    updateMenu();
    pMenuBar->addMenu(pFileMenu);
    oMenus.insertInto(*pMenuBar);
}

// For screen readers and the like; none of it is seen.
void CNodeBrowser::nameParts()
{
    setAccessibleName(QStringLiteral("Map of documents"));
    pListView->setAccessibleName(QStringLiteral("Nodes"));
    pTable->setAccessibleName(QStringLiteral("Documents"));
    pTextEdit->setAccessibleName(QStringLiteral("Text of the document"));
    pDateEdit->setAccessibleName(QStringLiteral("Date"));
}

void CNodeBrowser::connectParts()
{
    connect(pTable, qOverload<QSqlRecord*>(&CDataTable::currentChanged), this, &CNodeBrowser::setText);
    connect(pTable, qOverload<int, int, int, const QPoint&>(&CDataTable::doubleClicked), this,
        &CNodeBrowser::openFullView);
    connect(pListView, &CListView::currentItemChanged, this,
        qOverload<const QModelIndex&>(&CNodeBrowser::selection));
    connect(pDateEdit, &QDateTimeEdit::dateTimeChanged, this, &CNodeBrowser::dateChanged);
    new CPaneFocus(this, {pListView, pTable, pTextEdit, pDateEdit});
    connect(pCheckDate, &QCheckBox::toggled, this, &CNodeBrowser::checkBoxChanged);
}

void CNodeBrowser::customEvent(QEvent* pEvent)
{
    const auto* pCommand = dynamic_cast<const CCommandEvent*>(pEvent);
    const int iCommand = pEvent->type();
    if (pCommand == nullptr || iCommand < commands::Select || iCommand > commands::HideTable)
        qDebug("CNodeBrowser: Warning! Caught unknown event\n");
    else
        handle(iCommand, *pCommand);
}

void CNodeBrowser::handle(int iCommand, const CCommandEvent& oEvent)
{
    switch (iCommand) {
    case commands::Select:
        selectForHost(*oEvent.payload<int>());
        break;
    case commands::SetSOMTable:
        qDebug("CNodeBrowser: Changed Table to %s", oEvent.payload<char>());
        setSOMTable(QString::fromLocal8Bit(oEvent.payload<char>()));
        break;
    case commands::Terminate:
        qDebug("Terminating QApplication");
        QCoreApplication::exit(0); // quit() would close windows first, and one of them could refuse
        break;
    case commands::FillDate:
        pTable->fillDate(oEvent.payload<int>());
        break;
    case commands::SetRowColors:
        pTable->setRowColors(oEvent.payload<float>());
        break;
    case commands::MarkRow:
        if (const auto* pRequest = oEvent.payload<MarkRequest>(); pRequest->pcDate != nullptr)
            pTable->markRow(pRequest->pcDate, pRequest->iTimeFrame);
        break;
    case commands::Show:
        showAgain();
        break;
    case commands::GetNumRows:
        pTable->getNumRows(oEvent.payload<int>());
        break;
    case commands::GetFirstDateInFrame:
        pTable->getFirstDateInFrame(oEvent.payload<int>());
        break;
    case commands::GetFirstDateInSelection:
        pTable->getFirstDateInSelection(oEvent.payload<char>());
        break;
    case commands::PassNodeHierarchy:
        fillTree(oEvent.payload<const CNodeLists>());
        break;
    case commands::HideTable:
        findChild<QWidget*>(QStringLiteral("RightSide"))->hide();
        break;
    default:
        Q_UNREACHABLE();
    }
}

void CNodeBrowser::selectForHost(int iNode)
{
    const QScopedValueRollback<bool> hostSelects(bHostSelect, true);
    selection(iNode);
    if (pListView->maximumWidth() != 0)
        markTreeItem(iNode);
}

// A node that the tree doesn't have leaves nothing current.
void CNodeBrowser::markTreeItem(int iNode)
{
    const QModelIndex oItem = pListView->find(iNode);
    pListView->setCurrentIndex(oItem);
    pListView->scrollTo(oItem);
}

void CNodeBrowser::fillTree(const CNodeLists* pvviNodes)
{
    const bool bFirst = pListView->maximumWidth() == 0;
    pListView->fillList(pvviNodes, pTable->somTable());
    if (!bFirst)
        return;
    pPanes->setStretchFactor(1, 1); // a wider window is for the documents
    pPanes->setSizes({panes::FirstTreeWidth, width() - panes::FirstTreeWidth - panes::HandleWidth});
}

void CNodeBrowser::showAgain()
{
    move(iPosX, iPosY);
    resize(iWidth, iHeight);
    setWindowState(windowState() & ~Qt::WindowMinimized); // a shown one comes back, too
    show();
    raise();
}

void CNodeBrowser::setSOMTable(QString sName)
{
    pTable->setSOMTable(sName);
    updateMenu();
    pListView->pSOMDB = pTable->somDatabase();
}

void CNodeBrowser::setSourceTable(QString sName)
{
    pTable->setSourceTable(sName);
    if (!oMenus.isEmpty())
        return;
    pTable->setSOMTable(pTable->somTable());
    updateMenu();
}

void CNodeBrowser::updateMenu()
{
    const auto show = [this](int iColumn) {
        pTable->changeColumn(iColumn);
        toggleShowItem(iColumn);
    };
    const auto sort = [this](int iColumn) {
        pTable->changeSort(iColumn);
        toggleSortItem(iColumn);
    };
    oMenus.rebuild(pTable->columns(), show, sort);
}

void CNodeBrowser::toggleShowItem(int id)
{
    oMenus.toggleShow(id);
}

void CNodeBrowser::toggleSortItem(int id)
{
    oMenus.markSort(id);
}

void CNodeBrowser::selectByDate()
{
    QDateTime oChosen = pDateEdit->chosen();
    pTable->dateSelection(&oChosen, pCheckDate->isChecked());
}

void CNodeBrowser::checkBoxChanged(bool /*bChecked*/)
{
    selectByDate();
}

void CNodeBrowser::dateChanged(const QDateTime& /*oDateTime*/)
{
    if (!bHostSelect)
        selectByDate();
}

void CNodeBrowser::selection(int iNode)
{
    pTable->selection(iNode);
}

void CNodeBrowser::selection(const QModelIndex& oItem)
{
    if (!bHostSelect && oItem.isValid())
        selection(pListView->node(oItem));
}

void CNodeBrowser::setText(QSqlRecord* pRecord)
{
    const QString sField = QStringLiteral("text");
    const bool bHasText = pRecord != nullptr && pRecord->contains(sField);
    pTextEdit->showText(bHasText ? pRecord->value(sField).toString() : QStringLiteral("no text available"));
    sTitle = pRecord != nullptr ? pRecord->value(QStringLiteral("title")).toString() : QString();
}

void CNodeBrowser::openFullView(int /*row*/, int /*col*/, int /*button*/, const QPoint& /*pos*/)
{
    oViewers.open(pTextEdit->givenText(), sTitle);
}

void CNodeBrowser::resizeEvent(QResizeEvent* pEvent)
{
    iWidth = pEvent->size().width();
    iHeight = pEvent->size().height();
}

// Not the event's position, which leaves out the window manager's frame, while move() counts it.
void CNodeBrowser::moveEvent(QMoveEvent* /*pEvent*/)
{
    iPosX = pos().x();
    iPosY = pos().y();
}
