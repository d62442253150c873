// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <span>
#include <vector>

/// A hierarchy in two flat vectors, given node by node in ascending order.
class CFlatTree
{
public:
    void clear();
    /// Keeps the children of the next node, in the order of their numbers.
    void add(const std::vector<int>& viNewChildren);

    int size() const { return int(viBegins.size()); }
    std::span<const int> childrenOf(int iNode) const;

    /// Walks all nodes from the root, parents before their children.
    template <typename Visit> void walk(Visit visit, int iNode = 0) const
    {
        visit(iNode);
        for (const int iChild : childrenOf(iNode))
            walk(visit, iChild);
    }

private:
    std::vector<int> viBegins; ///< for each node the place of its first child
    std::vector<int> viChildren;
};

/// The tree of that size that all sides fill (treeshape.h).
CFlatTree flatTree(int iNumNodes);
