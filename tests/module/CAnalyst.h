// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CPlainHost.h"
#include "CScreen.h"

/// Somebody who sits in front of a host's browser window: reads what is there, clicks and types. Names of
/// widgets are the object names; "0/fullEdit" is a part of the first viewer, and so on. A look waits until
/// all that was clicked and typed before has taken effect.
class CAnalyst
{
public:
    /// The host and the screen aren't owned. The window may not be there yet.
    CAnalyst(CPlainHost& oItsHost, CScreen& oItsScreen)
        : oHost(oItsHost)
        , oScreen(oItsScreen)
    {
    }

    /// The host's window comes up; waits until it has the focus.
    void showWindow();
    /// Starts the host, shows its window and chooses a node, and waits until its documents are there.
    void startAt(int iNode);

    /// The table's header line, then a line for each row.
    QByteArrayList table() { return oHost.ask({"table"}); }
    /// Row and column of the current cell, counted from 0 as they are shown, such as "2 1", or "none".
    QByteArray currentCell() { return answer({"current"}); }
    /// First and last row in sight, such as "0 4"; -1 where there is none.
    QByteArray rowsInSight() { return answer({"rows"}); }
    /// The tree; see pictures::tree().
    QByteArrayList tree() { return oHost.ask({"tree"}); }
    /// The headers of the tree's columns, separated by bars.
    QByteArray treeColumns() { return answer({"columns"}); }
    /// The tree's open nodes from the top, such as "0 1", and its current node or "none".
    QByteArray openNodes();
    QByteArray currentNode();
    /// The entries of a menu, "ShowMenu" or "SortMenu", open or not; see pictures::menu().
    QByteArrayList menu(const QByteArray& oName) { return oHost.ask({"menu", oName}); }
    /// The marked entries of a menu.
    QByteArrayList marked(const QByteArray& oName);
    /// The entries of the menu that is open now, or "none".
    QByteArrayList openMenu() { return oHost.ask({"open menu"}); }
    /// The text of a text field ("texteditor"), a date field ("dateedit"), a check box ("checkdate") or a
    /// group.
    QByteArray text(const QByteArray& oName) { return oHost.ask({"text", oName}).join('\n'); }
    /// The selection of a text field: "first-last: text", positions in characters.
    QByteArray selectedText(const QByteArray& oName) { return answer({"selected", oName}); }
    /// The font of a widget, as QFont::toString() writes it.
    QByteArray font(const QByteArray& oName) { return answer({"font", oName}); }
    /// "shown" or "hidden" for each viewer, in the order of their opening.
    QByteArrayList viewers();
    /// Whether the module knows that its window is minimised, which it learns some time after the display.
    bool isMinimized() { return oHost.ask({"minimized"}).first() == "1"; }
    /// The dialog that is open now: "title: text", with what is typed in brackets; or "none".
    QByteArray dialog() { return oHost.ask({"dialog"}).join('\n'); }
    /// The name of the widget with the keyboard focus, or its class if it has no name; "none" while no window
    /// of the host has the focus.
    QByteArray focus() { return answer({"focus"}); }

    /// Places on the screen; empty if it isn't in sight. A column goes by its header.
    QRect cell(int iRow, const QByteArray& oColumn) { return place({"cell", number(iRow), oColumn}); }
    QRect item(int iNode) { return place({"item", number(iNode)}); }
    /// What opens and closes a node's branch.
    QRect branchMark(int iNode);
    /// The header of a column of the tree, and of one of the table.
    QRect header(const QByteArray& oText) { return place({"header", oText}); }
    QRect tableHeader(const QByteArray& oText) { return place({"column", oText}); }
    QRect part(const QByteArray& oName) { return place({"place", oName}); }
    QRect menuTitle(const QByteArray& oText) { return place({"title", oText}); }
    /// An entry of the menu that is open.
    QRect entry(const QByteArray& oText) { return place({"entry", oText}); }
    /// A button of the dialog that is open.
    QRect button(const QByteArray& oText) { return place({"button", oText}); }

    /// Clicks at the middle of a place. A place that isn't there fails the test.
    void click(const QRect& oPlace, int iButton = 1);
    void doubleClick(const QRect& oPlace, int iButton = 1);
    void clickCell(int iRow, const QByteArray& oColumn) { click(cell(iRow, oColumn)); }
    void doubleClickCell(int iRow, const QByteArray& oColumn) { doubleClick(cell(iRow, oColumn)); }
    /// Opens a menu of the menu bar by a click and clicks an entry.
    void choose(const QByteArray& oMenu, const QByteArray& oEntry);
    /// Opens the menu of a place by a right click and clicks an entry.
    void chooseAt(const QRect& oPlace, const QByteArray& oEntry);
    /// Opens the text of a row in a viewer of its own; waits until that has the focus.
    void openViewer(int iRow);
    /// Presses a key in a viewer; waits until the find dialog has the focus.
    void askWhatToFind(const QByteArray& oKey = "ctrl+f");
    /// Searches for a text in the viewer that has the focus.
    void find(const QByteArray& oText);
    void press(const QByteArrayList& lKeys) { oScreen.press(lKeys); }
    void type(const QByteArray& oText) { oScreen.type(oText); }

    CPlainHost& host() { return oHost; }
    CScreen& screen() { return oScreen; }

private:
    static QByteArray number(int i) { return QByteArray::number(i); }
    QByteArray answer(const QByteArrayList& lQuestion) { return oHost.ask(lQuestion).first(); }
    QRect place(const QByteArrayList& lQuestion);

    CPlainHost& oHost;
    CScreen& oScreen;
};
