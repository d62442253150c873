// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// The least that selecting a node without documents takes: the plain hand-over to another thread, the
// statement through the C client, and a table from number to item. Arguments as those of items_module.cpp.

#include "CClient.h"
#include "CFlatTree.h"
#include "CPlainHandover.h"
#include "itemrounds.h"
#include "treehost.h"

namespace {

struct Item
{
    int iNode;
};

} // namespace

int main(int /*iArguments*/, char** apcArguments)
{
    CClient oClient(apcArguments[1]);
    CClient::Result pResult = CClient::none();
    std::vector<Item> vItems;
    const Item* pCurrent = nullptr;
    CPlainHandover oHandover([&](int iNode) {
        const std::string sTable = treeTable("map", int(vItems.size()));
        pResult.reset();
        pResult = oClient.store(documentsOf(sTable, apcArguments[2], iNode));
        pCurrent = &vItems[std::size_t(iNode)];
        return int(mysql_num_rows(pResult.get()));
    });
    serveItems(
        [&](int iNumNodes) {
            vItems.clear();
            for (int iNode = 0; iNode < iNumNodes; iNode++)
                vItems.push_back({iNode});
        },
        [&](int iNode) { oHandover.ask(iNode); }, [&] { return std::to_string(pCurrent->iNode); });
    return 0;
}
