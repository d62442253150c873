// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// The least that a filled tree takes: the hierarchy in flat vectors, the keywords as the client stores them,
// the signs' files read, the width of the widest text summed up from its letters. Arguments: database of the
// map, "map" or "bare" (without keywords).

#include "CClient.h"
#include "CFlatTree.h"
#include "memory.h"
#include "textsum.h"
#include "treeshape.h"
#include "workerloop.h"

#include <array>
#include <fstream>
#include <numeric>
#include <sstream>

namespace {

constexpr int NumSigns = 21;
constexpr int ShownKeywords = 3;

// The letters' widths in some font.
std::array<int, 256> letterWidths()
{
    std::array<int, 256> aiWidths{};
    std::iota(aiWidths.begin(), aiWidths.end(), 0);
    for (int& iWidth : aiWidths)
        iWidth = 3 + iWidth % 6;
    return aiWidths;
}

class CTree
{
public:
    CTree(const char* pcDatabase, bool bHasKeywords)
        : oClient(pcDatabase)
        , bKeywords(bHasKeywords)
    {
    }

    void fill(int iNumNodes)
    {
        oNodes.clear();
        for (int iNode = 0; iNode < iNumNodes; iNode++)
            oNodes.add(treeshape::childrenOf(iNode, iNumNodes));
        pResult.reset();
        vvcSigns.clear();
        const std::string sTable = bKeywords ? "map" + std::to_string(iNumNodes) : "bare";
        pResult = oClient.tryStore("SELECT _assigned_topic, _keywords FROM " + sTable + "_som ");
        readRows();
        if (pResult)
            readSigns();
    }

    std::string sum() const
    {
        std::uint64_t uSum = textsum::Begin;
        oNodes.walk([&](int iNode) {
            uSum = textsum::add(uSum, std::to_string(iNode));
            uSum = textsum::add(uSum, keywords(iNode));
        });
        return std::to_string(uSum);
    }

private:
    void readRows()
    {
        vppcRows.clear();
        viTopics.clear();
        iWidest = 0;
        if (!pResult)
            return;
        vppcRows.reserve(mysql_num_rows(pResult.get()));
        viTopics.reserve(vppcRows.capacity());
        while (MYSQL_ROW ppcRow = mysql_fetch_row(pResult.get())) {
            vppcRows.push_back(ppcRow);
            viTopics.push_back(static_cast<signed char>(std::atoi(ppcRow[0])));
            iWidest = std::max(iWidest, widthOf(ppcRow[1]));
        }
    }

    // Of the first keywords, which is what a row shows.
    int widthOf(const char* pcKeywords) const
    {
        int iWidth = 0;
        for (int iLines = 0; *pcKeywords != '\0'; pcKeywords++) {
            if (*pcKeywords == '\n' && ++iLines == ShownKeywords)
                break;
            iWidth += aiWidths[static_cast<unsigned char>(*pcKeywords)];
        }
        return iWidth;
    }

    void readSigns()
    {
        for (int i = 0; i < NumSigns; i++) {
            std::ifstream oFile("Images/" + std::to_string(i) + ".xpm", std::ios::binary);
            vvcSigns.emplace_back(std::istreambuf_iterator<char>(oFile), std::istreambuf_iterator<char>());
        }
    }

    std::string keywords(int iNode) const
    {
        std::istringstream oLines(vppcRows.empty() ? "" : vppcRows[std::size_t(iNode)][1]);
        std::string sShown;
        std::string sLine;
        for (int i = 0; i < ShownKeywords && std::getline(oLines, sLine); i++)
            sShown += (i == 0 ? "" : ", ") + sLine;
        return sShown;
    }

    CClient oClient;
    bool bKeywords;
    CFlatTree oNodes;
    CClient::Result pResult = CClient::none();
    std::vector<MYSQL_ROW> vppcRows;
    std::vector<signed char> viTopics;
    std::vector<std::vector<char>> vvcSigns;
    std::array<int, 256> aiWidths = letterWidths();
    int iWidest = 0;
};

} // namespace

int main(int /*iArguments*/, char** apcArguments)
{
    CTree oTree(apcArguments[1], std::string(apcArguments[2]) == "map");
    CReport oReady;
    oReady.figure("own", double(memory::own()));
    workerloop::serve(oReady, [&](const workerloop::Words& vsWords) {
        const int iNumNodes = std::stoi(vsWords.at(0));
        CReport oReport;
        oReport.figure("time", workerloop::seconds([&] { oTree.fill(iNumNodes); }));
        oReport.figure("own", double(memory::own()));
        oReport.result("nodes", oTree.sum());
        return oReport;
    });
    return 0;
}
