// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CArena.h"

#include <algorithm>

char* CArena::text(const std::string& sText)
{
    char* pcText = array<char>(sText.size() + 1);
    std::copy(sText.begin(), sText.end(), pcText);
    return pcText;
}
