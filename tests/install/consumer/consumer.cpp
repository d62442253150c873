// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include <iostream>
#include <qtutils/NodeBrowser.h>

// Prints the code of an opening with the module that is named.
int main(int iArguments, char** ppcArguments)
{
    try {
        qtutils::NodeBrowser oBrowser("som", "texts", iArguments == 2 ? ppcArguments[1] : "");
    } catch (const qtutils::Error& oError) {
        std::cout << static_cast<int>(oError.code()) << '\n';
    }
    return 0;
}
