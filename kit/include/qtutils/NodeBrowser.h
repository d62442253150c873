// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Error.h"
#include "Rows.h"
#include "nodebrowser.h"

#include <algorithm>
#include <memory>
#include <string>

namespace qtutils {

/// The browser window, as a C++20 class over qtutils/nodebrowser.h: link with -lqtutils-nodebrowser.
/// What is said there about threads, waiting and lifetimes holds here; "throws" stands for Error with the
/// code of the C function. The constructor opens, the destructor closes. A moved-from object may only be
/// destroyed or assigned to.
class NodeBrowser
{
public:
    /// Loads the module and makes the window, hidden at first. An empty module name: from the usual places.
    NodeBrowser(
        const std::string& sSOMDatabase, const std::string& sSourceDatabase, const std::string& sModule = {})
    {
        qtutils_browser* pOpen = nullptr;
        const char* pcModule = sModule.empty() ? nullptr : sModule.c_str();
        const int iError = qtutils_open(pcModule, sSOMDatabase.c_str(), sSourceDatabase.c_str(), &pOpen);
        if (iError != QTUTILS_OK)
            throw Error(iError, qtutils_error_detail());
        pBrowser.reset(pOpen);
    }

    /// The table that assigns documents to nodes, from the next selection on.
    void setSOMTable(const std::string& sTable) { check(qtutils_set_som_table(get(), sTable.c_str())); }

    /// Hands over the children of each node; builds the tree.
    void passHierarchy(std::span<const std::vector<int>> oChildren)
    {
        for (std::size_t i = 0; i < oChildren.size(); i++)
            passNodeHierarchy(oChildren[i], int(i), number(oChildren.size()));
    }
    /// Hands over the children of one node of iNumNodes; with the last one, builds the tree.
    void passNodeHierarchy(std::span<const int> oChildren, int iNode, int iNumNodes)
    {
        const int iNumber = number(oChildren.size());
        check(qtutils_pass_node_hierarchy(get(), oChildren.data(), iNumber, iNode, iNumNodes));
    }

    void show() { check(qtutils_show(get())); }
    void hideTable() { check(qtutils_hide_table(get())); }
    void select(int iNode) { check(qtutils_select(get(), iNode)); }
    /// The number of rows shown. Waits.
    int numRows() const { return ask(qtutils_get_num_rows); }

    /// As qtutils_color_rows and qtutils_select_colored; what the function throws comes through. Both wait.
    void colorRows(const ColorRows& function)
    {
        ColorCall oCall(function);
        oCall.check(qtutils_color_rows(get(), ColorCall::run, &oCall));
    }
    void selectColored(int iNode, const ColorRows& function)
    {
        ColorCall oCall(function);
        oCall.check(qtutils_select_colored(get(), iNode, ColorCall::run, &oCall));
    }
    /// Colours the rows, one colour for each row shown; copied. Waits.
    void setRowColors(std::span<const Color> oColors)
    {
        static constexpr float NoColors = 0;
        const float* pfColors = oColors.empty() ? &NoColors : &oColors.data()->fHue;
        check(qtutils_set_row_colors(get(), pfColors, number(oColors.size())));
    }

    /// Selects the first row later than a time minus the frame; a frame of zero is ten days.
    void markRow(std::chrono::sys_seconds oTime, TimeFrame oFrame = TimeFrame::zero())
    {
        check(qtutils_mark_row(get(), dateText(oTime).c_str(), oFrame.count()));
    }
    /// The date of the row that was marked; the epoch before any mark. Waits.
    TimePoint firstDateInFrame() const { return minutes(ask(qtutils_get_first_date_in_frame)); }
    /// The first row's date as the table has it, "YYYY-MM-DDTHH:MM:SS"; empty for a NULL. Waits.
    std::string firstDateInSelection() const
    {
        char acDate[64];
        check(qtutils_get_first_date_in_selection(get(), acDate, sizeof acDate));
        return acDate;
    }

    /// The time of a text "YYYY-MM-DD HH:MM:SS" in local time, rounded to minutes, halves upward.
    TimePoint dateToInt(const std::string& sDate) const
    {
        int iMinutes = 0;
        check(qtutils_date_to_int(get(), sDate.c_str(), &iMinutes));
        return minutes(iMinutes);
    }

private:
    struct Close
    {
        void operator()(qtutils_browser* pOpen) const { qtutils_close(pOpen); }
    };

    static void check(int iError) { Error::check(iError); }
    static TimePoint minutes(int i) { return TimePoint(std::chrono::minutes(i)); }
    // What is too large for an int is too large for the library as well.
    static int number(std::size_t uSize) { return int(std::min<std::size_t>(uSize, INT_MAX)); }
    qtutils_browser* get() const { return pBrowser.get(); }
    int ask(int (*pfQuestion)(qtutils_browser*, int*)) const
    {
        int iAnswer = 0;
        check(pfQuestion(get(), &iAnswer));
        return iAnswer;
    }

    std::unique_ptr<qtutils_browser, Close> pBrowser;
};

} // namespace qtutils
