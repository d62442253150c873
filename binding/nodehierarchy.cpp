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
    std::shared_ptr<CNodeLists> pvviNodes = std::make_shared<CNodeLists>();
    bool bShared = false; ///< somebody may hold the lists: copy them before the next change
};

// Never destroyed: the user-interface thread may still ask while the process ends.
Table& table()
{
    static auto* pTable = new Table;
    return *pTable;
}

CNodeLists& listsToChange(Table& oTable)
{
    if (oTable.bShared) {
        oTable.pvviNodes = std::make_shared<CNodeLists>(*oTable.pvviNodes);
        oTable.bShared = false;
    }
    return *oTable.pvviNodes;
}

} // namespace

Passed pass(const int* iaNodes, int iNumChildren, int iNode, int iNumNodes)
{
    Table& oTable = table();
    const std::lock_guard<std::mutex> lock(oTable.oMutex);
    CNodeLists& vviNodes = listsToChange(oTable);
    const auto uNumNodes = std::size_t(std::max(iNumNodes, 0));
    const std::span viChildren(iaNodes, std::size_t(std::max(iNumChildren, 0)));
    vviNodes.makeRoom(viChildren.size());
    const bool bResized = !vviNodes.empty() && vviNodes.size() != uNumNodes;
    if (vviNodes.size() != uNumNodes)
        vviNodes.resize(uNumNodes);
    const bool bInside = iNode >= 0 && std::size_t(iNode) < uNumNodes;
    if (bInside)
        vviNodes.set(std::size_t(iNode), viChildren);
    return {bResized, bInside && iNode == iNumNodes - 1};
}

std::shared_ptr<const CNodeLists> current()
{
    Table& oTable = table();
    const std::lock_guard<std::mutex> lock(oTable.oMutex);
    oTable.bShared = true;
    return oTable.pvviNodes;
}

} // namespace nodehierarchy
