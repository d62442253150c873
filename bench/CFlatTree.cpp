// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CFlatTree.h"

#include "treeshape.h"

void CFlatTree::clear()
{
    viBegins.clear();
    viChildren.clear();
}

void CFlatTree::add(const std::vector<int>& viNewChildren)
{
    viBegins.push_back(int(viChildren.size()));
    viChildren.insert(viChildren.end(), viNewChildren.begin(), viNewChildren.end());
    std::sort(viChildren.begin() + viBegins.back(), viChildren.end());
}

std::span<const int> CFlatTree::childrenOf(int iNode) const
{
    const auto uNode = std::size_t(iNode);
    const auto uBegin = std::size_t(viBegins[uNode]);
    const std::size_t uEnd =
        uNode + 1 < viBegins.size() ? std::size_t(viBegins[uNode + 1]) : viChildren.size();
    return std::span(viChildren).subspan(uBegin, uEnd - uBegin);
}

CFlatTree flatTree(int iNumNodes)
{
    CFlatTree oTree;
    for (int iNode = 0; iNode < iNumNodes; iNode++)
        oTree.add(treeshape::childrenOf(iNode, iNumNodes));
    return oTree;
}
