// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <initializer_list>
#include <span>
#include <vector>

/// The children of the map's nodes: a list of node numbers for each node, all in one vector, so that a node
/// takes a few bytes and a copy no time. Knows nothing of Qt.
class CNodeLists
{
public:
    CNodeLists() = default;
    CNodeLists(std::initializer_list<std::vector<int>> lLists);

    /// The number of lists.
    std::size_t size() const { return vPlaces.size(); }
    bool empty() const { return vPlaces.empty(); }
    /// Valid until the next change.
    std::span<const int> operator[](std::size_t uNode) const
    {
        return std::span(viChildren).subspan(vPlaces[uNode].uBegin, vPlaces[uNode].uLength);
    }
    /// The number of children in all lists.
    std::size_t numChildren() const { return uChildren; }
    bool operator==(const CNodeLists& oOther) const;

    /// Adds empty lists, or drops lists from the end.
    void resize(std::size_t uSize);
    /// Takes memory for more children. Throws std::bad_alloc, leaving the lists as they were.
    void makeRoom(std::size_t uMore);
    /// Copies the children, which may not lie in these lists. Throws as makeRoom() does, unless there is room
    /// for them.
    void set(std::size_t uNode, std::span<const int> viNewChildren);

private:
    struct Place
    {
        unsigned uBegin = 0;
        unsigned uLength = 0;
    };

    void closeGaps(std::size_t uCapacity);

    std::vector<Place> vPlaces;
    std::vector<int> viChildren; ///< with gaps where lists were replaced by longer ones
    std::size_t uChildren = 0;
};
