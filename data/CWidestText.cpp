// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CWidestText.h"

#include "beginning.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace {

constexpr std::size_t LongestShape = 32;
constexpr std::size_t FirstPiece = 8192; ///< code units of a long text to lay out first
constexpr std::size_t MostCandidates = 64;
constexpr std::int64_t Unbounded = std::numeric_limits<std::int64_t>::max();

/// The next letter of a text, or something beyond the known letters. Moves on behind it.
unsigned nextLetter(const QChar*& pc, const QChar* /*pcEnd*/)
{
    return (pc++)->unicode();
}

unsigned nextLetter(const char*& pc, const char* pcEnd)
{
    const auto uFirst = static_cast<unsigned char>(*pc++);
    if (uFirst < 0x80)
        return uFirst;
    constexpr unsigned char LeadOfTwo = 0xC2;
    if (uFirst < LeadOfTwo || uFirst > 0xDF || pc == pcEnd
        || (static_cast<unsigned char>(*pc) & 0xC0U) != 0x80U)
        return CLetterWidths::NumLetters;
    return (uFirst & 0x1FU) << 6U | (static_cast<unsigned char>(*pc++) & 0x3FU);
}

bool isDigit(unsigned uLetter)
{
    return uLetter >= '0' && uLetter <= '9';
}

/// What stands for a letter in a text's shape.
char16_t inShape(unsigned uLetter)
{
    return isDigit(uLetter) ? u'0' : char16_t(uLetter);
}

/// Whether two letters may stand beside each other where digits shall be exchangeable.
bool keepDigitsAlike(unsigned uOne, unsigned uOther)
{
    const auto goesWithDigits = [](unsigned u) { return isDigit(u) || CLetterWidths::isNumberSign(u); };
    return (!isDigit(uOne) || goesWithDigits(uOther)) && (!isDigit(uOther) || goesWithDigits(uOne));
}

/// The most that the bounds of a text's letters may add up to if the text is to stay below a width in pixels.
/// A thirty-second and a pixel are for what three letters do together that no two of them do.
std::int64_t limit(int iWidth)
{
    return (std::int64_t(iWidth) - 1) * 64 * 32 / 33;
}

QString pieceOf(QStringView oText, std::size_t uLength)
{
    return oText.first(std::min(oText.size(), qsizetype(uLength))).toString();
}

QString pieceOf(std::string_view oText, std::size_t uLength)
{
    return beginning(oText, uLength);
}

} // namespace

CWidestText::CWidestText(std::shared_ptr<CLetterWidths> pLetterWidths, int iLeast)
    : pLetters(std::move(pLetterWidths))
    , iWidest(iLeast)
{
}

CWidestText::CWidestText(const QFontMetrics& oFontMetrics, int iLeast)
    : CWidestText(std::make_shared<CLetterWidths>(oFontMetrics), iLeast)
{
}

// What the letters' bounds add up to, in sixty-fourths of a pixel, or some of them if they are more than
// enough.
template <typename View> std::int64_t CWidestText::bound(View oText, std::int64_t iEnough)
{
    const auto* pc = oText.data();
    const auto* const pcEnd = pc + oText.size();
    CLetterWidths& oLetters = *pLetters;
    std::int64_t iSum = 0;
    for (unsigned uBefore = 0; pc != pcEnd && iSum <= iEnough;) {
        const unsigned uLetter = nextLetter(pc, pcEnd);
        if (uLetter >= CLetterWidths::NumLetters)
            return Unbounded;
        iSum += oLetters.after(uBefore, uLetter);
        uBefore = uLetter;
    }
    return iSum;
}

// Whether it differs in its digits only from the last text that was new. Most dates do.
template <typename View> bool CWidestText::isLikeLast(View oText) const
{
    const auto* pc = oText.data();
    const auto* const pcEnd = pc + oText.size();
    for (const char16_t cLast : sLastShape)
        if (pc == pcEnd || cLast != inShape(nextLetter(pc, pcEnd)))
            return false;
    return pc == pcEnd && !sLastShape.empty();
}

// Whether no text before differs in its digits only. What stands beside a letter may depend on which digit it
// is.
template <typename View> bool CWidestText::isNewShape(View oText)
{
    if (std::size_t(oText.size()) > LongestShape || !pLetters->areDigitsAlike())
        return true;
    std::u16string sShape;
    const auto* pc = oText.data();
    const auto* const pcEnd = pc + oText.size();
    for (unsigned uBefore = ' '; pc != pcEnd;) {
        const unsigned uLetter = nextLetter(pc, pcEnd);
        if (uLetter >= CLetterWidths::NumLetters || !keepDigitsAlike(uBefore, uLetter))
            return true;
        sShape += inShape(uLetter);
        uBefore = uLetter;
    }
    sLastShape = sShape;
    return oShapes.insert(std::move(sShape)).second;
}

// A text of millions of letters is laid out no further than the widest column reaches, and not at all if its
// letters would fill two of those: ligatures are narrower than their letters, but not by half.
template <typename View> void CWidestText::layOutLong(View oText)
{
    constexpr std::int64_t Plenty = std::int64_t(2) * 64 * Most;
    const std::int64_t iBound = bound(oText, Plenty);
    int iWidth = iBound > Plenty && iBound != Unbounded ? Most : 0;
    for (std::size_t uPiece = FirstPiece / 2; iWidth < Most && uPiece < std::size_t(oText.size());) {
        uPiece *= 2;
        iWidth = pLetters->metrics().horizontalAdvance(pieceOf(oText, uPiece));
    }
    iWidest = std::max(iWidest, std::min(iWidth, Most));
}

template <typename View> void CWidestText::addView(View oText)
{
    if (iWidest >= Most || isLikeLast(oText))
        return;
    const bool bLong = std::size_t(oText.size()) > FirstPiece;
    const std::int64_t iLimit = limit(iWidest);
    const std::int64_t iBound = bound(oText, bLong ? iLimit : Unbounded);
    if (iBound <= iLimit || !isNewShape(oText))
        return;
    if (bLong)
        return layOutLong(oText);
    vCandidates.push_back({iBound, pieceOf(oText, FirstPiece)});
    if (vCandidates.size() == MostCandidates)
        layOutCandidates();
}

void CWidestText::layOutCandidates()
{
    std::ranges::sort(vCandidates, std::greater(), &Candidate::iBound);
    for (const Candidate& oCandidate : vCandidates) {
        if (oCandidate.iBound <= limit(iWidest))
            break;
        const int iWidth = pLetters->metrics().horizontalAdvance(oCandidate.sText);
        iWidest = std::max(iWidest, std::min(iWidth, Most));
    }
    vCandidates.clear();
}

int CWidestText::width()
{
    layOutCandidates();
    return iWidest;
}

void CWidestText::add(const QString& sText)
{
    addView(QStringView(sText));
}

void CWidestText::add(std::string_view oText)
{
    addView(oText);
}
