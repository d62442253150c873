// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CNodeLists.h"

#include <algorithm>
#include <limits>
#include <new>

CNodeLists::CNodeLists(std::initializer_list<std::vector<int>> lLists)
{
    resize(lLists.size());
    std::size_t uNode = 0;
    for (const std::vector<int>& viList : lLists)
        set(uNode++, viList);
}

bool CNodeLists::operator==(const CNodeLists& oOther) const
{
    if (size() != oOther.size())
        return false;
    for (std::size_t uNode = 0; uNode < size(); uNode++)
        if (!std::ranges::equal((*this)[uNode], oOther[uNode]))
            return false;
    return true;
}

void CNodeLists::resize(std::size_t uSize)
{
    for (std::size_t uNode = uSize; uNode < size(); uNode++)
        uChildren -= vPlaces[uNode].uLength;
    vPlaces.resize(uSize);
}

// When room is short the gaps go, too.
void CNodeLists::makeRoom(std::size_t uMore)
{
    if (viChildren.capacity() - viChildren.size() >= uMore)
        return;
    const std::size_t uNeeded = uChildren + uMore;
    if (uNeeded > std::numeric_limits<unsigned>::max() / 2)
        throw std::bad_alloc();
    closeGaps(2 * uNeeded);
}

void CNodeLists::set(std::size_t uNode, std::span<const int> viNewChildren)
{
    if (viNewChildren.size() > vPlaces[uNode].uLength) {
        makeRoom(viNewChildren.size());
        vPlaces[uNode].uBegin = unsigned(viChildren.size());
        viChildren.resize(viChildren.size() + viNewChildren.size());
    }
    Place& oPlace = vPlaces[uNode];
    std::ranges::copy(viNewChildren, viChildren.begin() + oPlace.uBegin);
    uChildren += viNewChildren.size();
    uChildren -= oPlace.uLength;
    oPlace.uLength = unsigned(viNewChildren.size());
}

void CNodeLists::closeGaps(std::size_t uCapacity)
{
    std::vector<int> viClosed;
    viClosed.reserve(uCapacity);
    for (Place& oPlace : vPlaces) {
        const auto oList = viChildren.begin() + oPlace.uBegin;
        oPlace.uBegin = unsigned(viClosed.size());
        viClosed.insert(viClosed.end(), oList, oList + oPlace.uLength);
    }
    viChildren = std::move(viClosed);
}
