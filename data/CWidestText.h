// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CLetterWidths.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

/// Finds the width of the widest of many texts in one font, without laying out each of them.
///
/// Laying out a text costs fifty times more than adding up its letters' bounds, so only texts that could
/// still win are laid out, and not before a few of them have come, of which the likeliest are first. Numbers
/// and dates are nearly all of the same width: of texts that differ in their digits only, one is laid out.
/// Texts with letters that have no bound always are.
class CWidestText
{
public:
    /// Pixels; what is wider counts as so wide. Columns can't be much wider.
    static constexpr int Most = 1'000'000;

    /// `iLeast` is the width in pixels to start from. The letter widths may serve many objects.
    CWidestText(std::shared_ptr<CLetterWidths> pLetterWidths, int iLeast);
    CWidestText(const QFontMetrics& oFontMetrics, int iLeast);

    void add(const QString& sText);
    /// A text in UTF-8.
    void add(std::string_view oText);
    /// Width in pixels of the widest text so far, as QFontMetrics::horizontalAdvance() gives it.
    int width();

private:
    struct Candidate
    {
        std::int64_t iBound;
        QString sText;
    };

    template <typename View> std::int64_t bound(View oText, std::int64_t iEnough);
    template <typename View> bool isLikeLast(View oText) const;
    template <typename View> bool isNewShape(View oText);
    template <typename View> void layOutLong(View oText);
    template <typename View> void addView(View oText);
    void layOutCandidates();

    std::shared_ptr<CLetterWidths> pLetters;
    int iWidest;
    std::vector<Candidate> vCandidates; ///< not laid out yet
    std::unordered_set<std::u16string> oShapes; ///< of short texts so far, with 0 for each digit
    std::u16string sLastShape;
};
