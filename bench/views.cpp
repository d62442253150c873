// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "views.h"

#include "textsum.h"
#include "workerloop.h"

#include <QTreeView>

namespace views {
namespace {

template <typename Visit>
void walk(const QAbstractItemModel& oTree, const QModelIndex& oParent, const Visit& visit)
{
    for (int iRow = 0; iRow < oTree.rowCount(oParent); iRow++) {
        const QModelIndex oNode = oTree.index(iRow, 0, oParent);
        visit(oNode);
        walk(oTree, oNode, visit);
    }
}

std::uint64_t add(std::uint64_t uSum, const QModelIndex& oCell)
{
    return textsum::add(uSum, oCell.data().toString().toStdString());
}

} // namespace

std::string sumOf(const QAbstractItemModel& oTree)
{
    std::uint64_t uSum = textsum::Begin;
    walk(oTree, {}, [&](const QModelIndex& oNode) {
        uSum = add(uSum, oNode);
        uSum = add(uSum, oNode.siblingAtColumn(1));
    });
    return std::to_string(uSum);
}

double secondsToOpen(QTreeView& oTree, const std::function<void()>& openAll)
{
    oTree.collapseAll();
    const QModelIndex oRoot = oTree.model()->index(0, 0);
    oTree.visualRect(oRoot);
    return workerloop::seconds([&] {
        openAll();
        oTree.visualRect(oRoot); // what has been put off is done now
    });
}

int numOpen(const QTreeView& oTree)
{
    int iOpen = 0;
    walk(*oTree.model(), {}, [&](const QModelIndex& oNode) {
        iOpen += oTree.isExpanded(oNode) && oTree.model()->hasChildren(oNode) ? 1 : 0;
    });
    return iOpen;
}

} // namespace views
