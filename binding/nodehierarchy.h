// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CNodeLists.h"

#include <memory>

/// The hierarchy of the map's nodes as the host passed it: entry i holds the children of node i. Knows
/// nothing of Qt.
namespace nodehierarchy {

/// What a call of pass() did.
struct Passed
{
    bool bResized; ///< the number of nodes changed: lists were added or dropped at the end
    bool bComplete; ///< this was the last node
};

/// Stores the children of one node. On the first call the table gets `iNumNodes` empty lists; later calls
/// with another number resize it and keep the surviving lists. `iaNodes` (not null) holds `iNumChildren` node
/// numbers and is copied. A node outside of 0 to `iNumNodes` - 1 has no list and is dropped. Throws
/// std::bad_alloc, leaving the table as it was. [host-thread; several take turns]
Passed pass(const int* iaNodes, int iNumChildren, int iNode, int iNumNodes);

/// The table as it is now; later calls of pass() don't change it. [any-thread]
std::shared_ptr<const CNodeLists> current();

} // namespace nodehierarchy
