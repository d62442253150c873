// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CColumnMenus.h"
#include "COmbrelWin.h"
#include "CViewers.h"

#include <QFrame>

#include <pthread.h>

class CCommandEvent;
class CDateField;
class CListView;
class CNodeLists;
class CTable;
class CTextView;
class QBoxLayout;
class QCheckBox;
class QModelIndex;
class QSplitter;
class QSqlRecord;

/// The browser window: the tree of the map's nodes, the table of the chosen node's documents, the text of the
/// current document, a date filter and the menus. Carries out the host's commands. [ui-thread]
class CNodeBrowser : public QFrame
{
    Q_OBJECT

public:
    /// The five texts are the database server's host, user and password, the name of the database with the
    /// map and that of the database with the documents. Flag, mutex and condition are the hand-over with the
    /// host: not owned, they must outlive the window. The window is made hidden; the connection is opened
    /// here.
    CNodeBrowser(QString host, QString user, QString password, QString somDatabase, QString sourceDatabase,
        int* piThreadFlag, pthread_mutex_t* pFlagMutex, pthread_cond_t* pCond, QWidget* parent,
        const char* name);

    /// Shows the documents of a node.
    void selection(int iNode);
    /// Names the source document table. Also makes the menus if there are none yet.
    void setSourceTable(QString sName);
    /// Names the assignment table: rebuilds the menus and hands the connection to the tree.
    void setSOMTable(QString sName);
    /// Rebuilds the Show and Sort menus from the table's columns.
    void updateMenu();

    /// Holds the process's application object; defined in the module only.
    static COmbrelWin oOmbrelWin;

public Q_SLOTS:
    /// Opens a viewer with the current text. It is shown and kept.
    void openFullView(int row, int col, int button, const QPoint& pos);
    /// Puts the record's field "text" into the text panel.
    void setText(QSqlRecord* pRecord);
    /// Shows the documents of a tree item's node; an invalid item is ignored.
    void selection(const QModelIndex& oItem);
    void dateChanged(const QDateTime& oDateTime);
    void checkBoxChanged(bool bChecked);
    /// Inverts the mark of an entry of the Show menu.
    void toggleShowItem(int id);
    /// Marks this entry of the Sort menu only.
    void toggleSortItem(int id);

protected:
    void customEvent(QEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void moveEvent(QMoveEvent* pEvent) override;

private:
    void makePanes(const std::function<CTable*(QWidget*)>& makeTable);
    void makeTextGroup(QWidget* pParent);
    QWidget* makeDateGroup(QWidget* pParent);
    void makeMenus(QBoxLayout& oLayout);
    void nameParts();
    void connectParts();
    void selectByDate();

    void handle(int iCommand, const CCommandEvent& oEvent);
    void selectForHost(int iNode);
    void markTreeItem(int iNode);
    void fillTree(const CNodeLists* pvviNodes);
    void showAgain();

    CTable* pTable = nullptr;
    CTextView* pTextEdit = nullptr;
    CListView* pListView = nullptr;
    CDateField* pDateEdit = nullptr;
    QCheckBox* pCheckDate = nullptr;
    int iWidth = -1; ///< last size and position, in pixels
    int iHeight = -1;
    int iPosX = 0;
    int iPosY = 0;
    bool bHostSelect = false; ///< the host chooses: the tree's own signal must not run the query again
    CColumnMenus oMenus;
    CViewers oViewers;
    QString sTitle; ///< of the document in the text panel
    QSplitter* pPanes = nullptr; ///< tree and right side
};
