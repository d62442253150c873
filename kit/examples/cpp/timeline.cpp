// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// Shows a map with rows coloured by date: red for a node's first document, blue for its last one. Prints the
// number of documents of each node and the first one's date. Ends with standard input.
//
// timeline SOM_DATABASE SOURCE_DATABASE TABLE HIERARCHY
// HIERARCHY is a file with a line for each node: the numbers of its children.

#include <qtutils/NodeBrowser.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>
#include <sstream>

namespace {

constexpr long LastHue = 240; // blue

std::vector<std::vector<int>> readHierarchy(const std::string& sFile)
{
    std::ifstream oFile(sFile);
    if (!oFile)
        throw std::runtime_error("can't read " + sFile);
    std::vector<std::vector<int>> vChildren;
    for (std::string sLine; std::getline(oFile, sLine);) {
        std::istringstream oLine(sLine);
        vChildren.emplace_back(std::istream_iterator<int>(oLine), std::istream_iterator<int>());
    }
    return vChildren;
}

void colorByDate(std::span<const qtutils::RowDate> oDates, std::span<qtutils::Color> oColors)
{
    std::vector<long> vMinutes;
    for (const auto& oDate : oDates)
        if (oDate)
            vMinutes.push_back(oDate->count());
    if (vMinutes.empty())
        return;
    const auto [pFirst, pLast] = std::ranges::minmax_element(vMinutes);
    const long iLength = std::max(*pLast - *pFirst, 1L);
    for (std::size_t i = 0; i < oDates.size(); i++)
        if (oDates[i]) {
            const long iHue = LastHue * (oDates[i]->count() - *pFirst) / iLength;
            oColors[i] = {static_cast<float>(iHue), 90, 255};
        }
}

void showNode(qtutils::NodeBrowser& oBrowser, int iNode)
{
    oBrowser.selectColored(iNode, colorByDate);
    const int iRows = oBrowser.numRows();
    std::cout << "node " << iNode << ": ";
    if (iRows == 0)
        std::cout << "no documents\n";
    else
        std::cout << iRows << " documents from " << oBrowser.firstDateInSelection() << '\n';
}

void run(const std::vector<std::string>& vArguments)
{
    const auto vChildren = readHierarchy(vArguments[3]);
    qtutils::NodeBrowser oBrowser(vArguments[0], vArguments[1]);
    oBrowser.setSOMTable(vArguments[2]);
    oBrowser.passHierarchy(vChildren);
    oBrowser.show();
    for (int i = int(vChildren.size()) - 1; i >= 0; i--)
        showNode(oBrowser, i);
    std::cout << "the map is shown until standard input ends" << std::endl;
    std::cin.ignore(std::numeric_limits<std::streamsize>::max());
}

} // namespace

int main(int iArguments, char** apcArguments)
{
    if (iArguments != 5) {
        std::cerr << "usage: timeline SOM_DATABASE SOURCE_DATABASE TABLE HIERARCHY\n";
        return 2;
    }
    try {
        run({apcArguments + 1, apcArguments + iArguments});
        return 0;
    } catch (const std::exception& e) {
        std::cerr << "timeline: " << e.what() << '\n';
        return 1;
    }
}
