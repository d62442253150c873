// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "excerpt.h"

#include "data/beginning.h"

#include <algorithm>

namespace excerpt {
namespace {

constexpr std::size_t FirstPiece = 128; ///< bytes to lay out first
/// Bytes. Where letters run from right to left, more of a line counts than what is in sight.
constexpr std::size_t LongestTurnedPiece = 100'000;

std::string_view firstLine(std::string_view oText)
{
    return oText.substr(0, oText.find('\n'));
}

bool hasTurnedLetters(const QString& sText)
{
    return std::any_of(sText.begin(), sText.end(), [](QChar c) {
        const QChar::Direction eDirection = c.direction();
        return c.isSurrogate() || eDirection == QChar::DirR || eDirection == QChar::DirAL
            || eDirection == QChar::DirRLE || eDirection == QChar::DirRLO || eDirection == QChar::DirRLI;
    });
}

// Far faster than to look at each letter.
std::ptrdiff_t countLines(std::string_view oText)
{
    std::ptrdiff_t iLines = 1;
    for (std::size_t u = oText.find('\n'); u != std::string_view::npos; u = oText.find('\n', u + 1))
        iLines++;
    return iLines;
}

QString visiblePart(std::string_view oLine, const QFontMetrics& oMetrics, int iWidth)
{
    for (std::size_t uPiece = FirstPiece;; uPiece += uPiece / 2) {
        QString sPiece = beginning(oLine, uPiece);
        const bool bEnough = oMetrics.horizontalAdvance(sPiece) >= iWidth || uPiece >= oLine.size();
        if (bEnough && uPiece < LongestTurnedPiece && hasTurnedLetters(sPiece))
            return beginning(oLine, LongestTurnedPiece);
        if (bEnough)
            return sPiece;
    }
}

} // namespace

QString ofText(std::string_view oText, const QFontMetrics& oMetrics, int iWidth)
{
    const std::ptrdiff_t iLines = countLines(oText);
    const auto iShown = std::min<std::ptrdiff_t>(iLines, iLines % 2 == 0 ? 4 : 3);
    for (auto iSkipped = (iLines - iShown) / 2; iSkipped > 0; iSkipped--)
        oText.remove_prefix(firstLine(oText).size() + 1);
    QString sShown;
    for (auto i = iShown; i > 0; i--) {
        const std::string_view oLine = firstLine(oText);
        sShown += visiblePart(oLine, oMetrics, iWidth);
        if (i > 1) {
            sShown += u'\n';
            oText.remove_prefix(oLine.size() + 1);
        }
    }
    return sShown;
}

} // namespace excerpt
