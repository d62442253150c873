// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

#include <functional>

class QMenu;
class QMenuBar;
class QWidget;

/// The Show and Sort menus: an entry for each column of the table, which carries a mark. An entry's number is
/// the column's index. [ui-thread]
class CColumnMenus
{
public:
    /// What a click does with the entry's number. A click by itself changes no mark.
    using Action = std::function<void(int)>;

    /// Makes two empty menus, "ShowMenu" and "SortMenu", children of `pOwner`.
    explicit CColumnMenus(QWidget* pOwner);

    /// Puts both menus at the end of a menu bar.
    void insertInto(QMenuBar& oBar);

    bool isEmpty() const;
    /// Makes the entries anew. Title and date are marked as shown, date as the sort column.
    void rebuild(const QStringList& slColumns, const Action& show, const Action& sort);

    /// Inverts the mark of an entry of the Show menu.
    void toggleShow(int iEntry);
    /// Marks this entry of the Sort menu and no other.
    void markSort(int iEntry);

private:
    QMenu* pShowMenu;
    QMenu* pSortMenu;
};
