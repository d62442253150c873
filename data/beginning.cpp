// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "beginning.h"

#include <algorithm>

QString beginning(std::string_view oText, std::size_t uLength)
{
    std::size_t uEnd = std::min(oText.size(), uLength);
    while (uEnd < oText.size() && uEnd > 0 && (static_cast<unsigned char>(oText[uEnd]) & 0xC0U) == 0x80U)
        uEnd--;
    return QString::fromUtf8(oText.data(), qsizetype(uEnd));
}
