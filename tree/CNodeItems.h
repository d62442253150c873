// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "binding/CNodeLists.h"

#include <functional>
#include <unordered_map>
#include <vector>

/// The shape of a tree in one flat vector, for millions of nodes. An item is a node at its place: a node that
/// is listed in two branches has two items. Items are numbered from 0, the root, which is node 0; siblings
/// follow one another in the order shown. Knows nothing of Qt. Not for several threads at once.
class CNodeItems
{
public:
    /// Brings siblings into order: of the nodes of all siblings it makes the places where they stood, in
    /// their new order. False if they stay as they are. Those that are equal keep their order.
    using Order = std::function<bool(const std::vector<int>& viNodes, std::vector<int>& viPlaces)>;

    /// How siblings stand at first.
    enum class Siblings
    {
        AsGiven,
        Ascending ///< in the order of their numbers
    };

    static constexpr int None = -1;

    /// No item, not even a root.
    CNodeItems() = default;
    /// A tree whose entry i holds the children of node i. Children without a list of their own are leaves. A
    /// node below itself is left out, because it would never end.
    explicit CNodeItems(const CNodeLists& vviNodes, Siblings eSiblings = Siblings::AsGiven);

    int count() const { return int(vItems.size()); }
    int node(int iItem) const { return item(iItem).iNode; }
    /// None for the root.
    int parent(int iItem) const { return item(iItem).iParent; }
    int numChildren(int iItem) const { return item(iItem).iNumChildren; }
    int child(int iItem, int iRow) const { return item(iItem).iFirstChild + iRow; }
    /// Place among the siblings, from 0.
    int row(int iItem) const { return iItem == 0 ? 0 : iItem - item(parent(iItem)).iFirstChild; }

    /// The item of a node, or None; of several the first in the order shown with all branches open.
    int find(int iNode) const;

    /// Puts all siblings into another order. The result says which number an item has now.
    std::vector<int> sort(const Order& order);

private:
    struct Item
    {
        int iNode;
        int iParent;
        int iFirstChild;
        int iNumChildren;
    };

    const Item& item(int iItem) const { return vItems[std::size_t(iItem)]; }
    void addChildren(int iItem, std::span<const int> viChildren, const std::vector<bool>& vbOnPath);
    void bringIntoOrder(int iFirst);
    void moveChildren(int iParent, const std::vector<int>& viPlaces, std::vector<int>& viNumbers);
    int next(int iItem) const;
    void makeIndex() const;

    std::vector<Item> vItems;
    std::size_t uNumNodes = 0;
    mutable bool bIndexed = false; ///< the following two are made for the first search
    mutable std::vector<int> viItems; ///< entry i: the item of node i
    mutable std::unordered_map<int, int> oItemsOutside; ///< those of nodes without a list
};
