// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <vector>

/// The hierarchies of the questions: ten children a node, given in no order.
namespace treeshape {

constexpr int Branching = 10;
constexpr int FirstGiven = 3; ///< the place of the child that is given first

/// The children of a node in a tree of so many nodes; valid until the next call.
inline const std::vector<int>& childrenOf(int iNode, int iNumNodes)
{
    static std::vector<int> viChildren;
    viChildren.clear();
    const long iFirst = long(iNode) * Branching + 1;
    for (long iChild = iFirst; iChild < std::min(iFirst + Branching, long(iNumNodes)); iChild++)
        viChildren.push_back(int(iChild));
    if (viChildren.size() > FirstGiven)
        std::rotate(viChildren.begin(), viChildren.begin() + FirstGiven, viChildren.end());
    return viChildren;
}

/// A node for each round of a loop, in no order.
inline int someNode(int iRound, int iNumNodes)
{
    return int(long(iRound) * 7919 % iNumNodes);
}

} // namespace treeshape
