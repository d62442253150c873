// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// The headers in C++.

#include <qtutils/Recipes.h>

#include <qtutils/NodeBrowser.h>

int numRows(const qtutils::NodeBrowser& oBrowser);
int numRows(const qtutils::NodeBrowser& oBrowser)
{
    return oBrowser.numRows();
}
