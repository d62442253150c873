// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CNodeItems.h"

#include <algorithm>
#include <numeric>

namespace {

bool hasList(int iNode, std::size_t uNumNodes)
{
    return iNode >= 0 && std::size_t(iNode) < uNumNodes;
}

} // namespace

// Without recursion, because hierarchies may be deep.
CNodeItems::CNodeItems(const CNodeLists& vviNodes, Siblings eSiblings)
    : uNumNodes(vviNodes.size())
{
    vItems.reserve(1 + vviNodes.numChildren());
    vItems.push_back({0, None, 1, 0});
    if (vviNodes.empty())
        return;
    std::vector<bool> vbOnPath(uNumNodes, false);
    std::vector<int> viNextRows; // of the branches from the root to the present one
    int iItem = 0;
    const auto enter = [&](std::size_t uNode) {
        vbOnPath[uNode] = true;
        viNextRows.push_back(0);
        addChildren(iItem, vviNodes[uNode], vbOnPath);
        if (eSiblings == Siblings::Ascending)
            bringIntoOrder(child(iItem, 0));
    };
    enter(0);
    while (!viNextRows.empty()) {
        if (viNextRows.back() == numChildren(iItem)) {
            vbOnPath[std::size_t(node(iItem))] = false;
            viNextRows.pop_back();
            iItem = parent(iItem);
            continue;
        }
        const int iChild = child(iItem, viNextRows.back()++);
        const int iNode = node(iChild);
        if (hasList(iNode, uNumNodes) && !vviNodes[std::size_t(iNode)].empty()) {
            iItem = iChild;
            enter(std::size_t(iNode));
        }
    }
}

void CNodeItems::addChildren(int iItem, std::span<const int> viChildren, const std::vector<bool>& vbOnPath)
{
    vItems[std::size_t(iItem)].iFirstChild = count();
    for (const int iChild : viChildren)
        if (!hasList(iChild, uNumNodes) || !vbOnPath[std::size_t(iChild)])
            vItems.push_back({iChild, iItem, 0, 0});
    vItems[std::size_t(iItem)].iNumChildren = count() - child(iItem, 0);
}

// From that item on, none of which has children yet.
void CNodeItems::bringIntoOrder(int iFirst)
{
    std::ranges::sort(vItems.begin() + iFirst, vItems.end(), {}, &Item::iNode);
}

// The item below, or else the next one beside or further up.
int CNodeItems::next(int iItem) const
{
    if (numChildren(iItem) > 0)
        return child(iItem, 0);
    while (iItem != 0 && row(iItem) + 1 == numChildren(parent(iItem)))
        iItem = parent(iItem);
    return iItem == 0 ? None : iItem + 1;
}

void CNodeItems::makeIndex() const
{
    viItems.assign(uNumNodes, None);
    oItemsOutside.clear();
    for (int iItem = vItems.empty() ? None : 0; iItem != None; iItem = next(iItem)) {
        const int iNode = node(iItem);
        if (!hasList(iNode, uNumNodes))
            oItemsOutside.emplace(iNode, iItem);
        else if (int& iFirst = viItems[std::size_t(iNode)]; iFirst == None)
            iFirst = iItem;
    }
    bIndexed = true;
}

int CNodeItems::find(int iNode) const
{
    if (!bIndexed)
        makeIndex();
    if (hasList(iNode, uNumNodes))
        return viItems[std::size_t(iNode)];
    const auto oFound = oItemsOutside.find(iNode);
    return oFound == oItemsOutside.end() ? None : oFound->second;
}

// Children have greater numbers than their parent, so each stands at its new place when its turn comes.
std::vector<int> CNodeItems::sort(const Order& order)
{
    std::vector<int> viNumbers(vItems.size());
    std::iota(viNumbers.begin(), viNumbers.end(), 0);
    std::vector<int> viNodes;
    std::vector<int> viPlaces;
    for (int iItem = 0; iItem < count(); iItem++) {
        viNodes.clear();
        for (int iRow = 0; iRow < numChildren(iItem); iRow++) {
            vItems[std::size_t(child(iItem, iRow))].iParent = iItem;
            viNodes.push_back(node(child(iItem, iRow)));
        }
        if (viNodes.size() > 1 && order(viNodes, viPlaces))
            moveChildren(iItem, viPlaces, viNumbers);
    }
    bIndexed = false;
    return viNumbers;
}

void CNodeItems::moveChildren(int iParent, const std::vector<int>& viPlaces, std::vector<int>& viNumbers)
{
    const auto uFirst = std::size_t(child(iParent, 0));
    const auto oFirst = vItems.begin() + std::ptrdiff_t(uFirst);
    const std::vector<Item> vBefore(oFirst, oFirst + numChildren(iParent));
    for (std::size_t i = 0; i < viPlaces.size(); i++) {
        const auto uPlace = std::size_t(viPlaces[i]);
        vItems[uFirst + i] = vBefore[uPlace];
        viNumbers[uFirst + uPlace] = int(uFirst + i);
    }
}
