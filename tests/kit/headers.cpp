// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// The C++ class's header, alone.

#include <qtutils/NodeBrowser.h>

int numRows(const qtutils::NodeBrowser& oBrowser);
int numRows(const qtutils::NodeBrowser& oBrowser)
{
    return oBrowser.numRows();
}
