// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CRowColorDelegate.h"

#include "CDocumentModel.h"

#include <QPainter>

#include <algorithm>
#include <limits>

namespace {

constexpr int TextMargin = 2;

// Toward zero. What has no int becomes one that is no colour component either.
int truncated(float fValue)
{
    constexpr float Limit = 2147483648.0F;
    const bool bFits = fValue > -Limit && fValue < Limit;
    return bFits ? static_cast<int>(fValue) : std::numeric_limits<int>::min();
}

// Every second pixel of the outline.
QPen focusPen(const QColor& oColor)
{
    QPen oPen(oColor, 1);
    oPen.setCapStyle(Qt::FlatCap);
    oPen.setDashPattern({1, 1});
    return oPen;
}

} // namespace

QColor CRowColorDelegate::rowColor(int iRow) const
{
    const float* pfColor = pfRowColors + 3 * std::ptrdiff_t(iRow);
    QColor oColor;
    oColor.setHsv(truncated(pfColor[0]), truncated(pfColor[1]), truncated(pfColor[2]));
    return oColor;
}

// Of a long text only what can be seen is laid out.
QString CRowColorDelegate::textInSight(
    const QPainter& oPainter, const QStyleOptionViewItem& oOption, const QModelIndex& oIndex)
{
    const int iWidth = std::max(oPainter.device()->width() - oOption.rect.left(), 1);
    return static_cast<const CDocumentModel*>(oIndex.model())->shownPart(oIndex, oOption.fontMetrics, iWidth);
}

void CRowColorDelegate::paint(
    QPainter* pPainter, const QStyleOptionViewItem& oOption, const QModelIndex& oIndex) const
{
    const QPalette& oPalette = oOption.palette;
    const bool bSelected = (oOption.state & QStyle::State_Selected) != 0;
    const QRect oCell(QPoint(0, 0), oOption.rect.size());
    const QRect oOutline = oCell.adjusted(0, 0, -1, -1);
    const bool bHostColors = pfRowColors != nullptr;

    pPainter->save();
    pPainter->translate(oOption.rect.topLeft());
    pPainter->setClipRect(oCell);
    pPainter->fillRect(oCell, bSelected ? oPalette.highlight() : oPalette.base());
    if (bHostColors) {
        const QColor oColor = rowColor(oIndex.row());
        pPainter->setPen(bSelected ? focusPen(oColor) : QPen(oPalette.color(QPalette::Text)));
        pPainter->setBrush(bSelected ? QBrush() : QBrush(oColor));
        pPainter->drawRect(oOutline);
    }
    pPainter->setPen(oPalette.color(bSelected && !bHostColors ? QPalette::HighlightedText : QPalette::Text));
    pPainter->setFont(oOption.font);
    pPainter->drawText(oCell.adjusted(TextMargin, TextMargin, -TextMargin, -TextMargin),
        Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, textInSight(*pPainter, oOption, oIndex));
    pPainter->restore();
}
