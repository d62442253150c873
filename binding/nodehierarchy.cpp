// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "nodehierarchy.h"

#include <algorithm>
#include <mutex>

namespace nodehierarchy {
namespace {

struct Table
{
    std::mutex oMutex;
    std::shared_ptr<NodeLists> pvviNodes = std::make_shared<NodeLists>();
    bool bShared = false; ///< somebody may hold the lists: copy them before the next change
};

// Never destroyed: the user-interface thread may still ask while the process ends.
Table& table()
{
    static auto* pTable = new Table;
    return *pTable;
}

NodeLists& listsToChange(Table& oTable)
{
    if (oTable.bShared) {
        oTable.pvviNodes = std::make_shared<NodeLists>(*oTable.pvviNodes);
        oTable.bShared = false;
    }
    return *oTable.pvviNodes;
}

} // namespace

Passed pass(const int* iaNodes, int iNumChildren, int iNode, int iNumNodes)
{
    Table& oTable = table();
    const std::lock_guard<std::mutex> lock(oTable.oMutex);
    std::vector<int> viChildren(iaNodes, iaNodes + std::max(iNumChildren, 0));
    NodeLists& vviNodes = listsToChange(oTable);
    const auto uNumNodes = std::size_t(std::max(iNumNodes, 0));
    const bool bResized = !vviNodes.empty() && vviNodes.size() != uNumNodes;
    vviNodes.resize(uNumNodes);
    const bool bInside = iNode >= 0 && std::size_t(iNode) < uNumNodes;
    if (bInside)
        vviNodes[std::size_t(iNode)] = std::move(viChildren);
    return {bResized, bInside && iNode == iNumNodes - 1};
}

std::shared_ptr<const NodeLists> current()
{
    Table& oTable = table();
    const std::lock_guard<std::mutex> lock(oTable.oMutex);
    oTable.bShared = true;
    return oTable.pvviNodes;
}

} // namespace nodehierarchy
