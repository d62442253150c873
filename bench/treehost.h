// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CModuleHost.h"
#include "treeshape.h"

/// Passes the hierarchy of that size and waits for the tree.
inline void fillTree(const CModuleHost& oHost, int iNumNodes)
{
    for (int iNode = 0; iNode < iNumNodes; iNode++)
        oHost.passNodeHierarchy(treeshape::childrenOf(iNode, iNumNodes), iNode, iNumNodes);
    oHost.numRows();
}

/// The tables of a tree of that size; of kind "bare" there is one without keywords.
inline std::string treeTable(const std::string& sKind, int iNumNodes)
{
    return (sKind == "map" ? "map" + std::to_string(iNumNodes) : sKind) + "_train";
}
