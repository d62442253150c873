// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CHeader.h"

#include "CLetterWidths.h"

#include <QEvent>

#include <algorithm>

namespace {

constexpr int MostRemembered = 1000;

template <typename Hash, typename Measure> auto remembered(Hash& hKnown, const QString& sKey, Measure measure)
{
    if (const auto oKnown = hKnown.constFind(sKey); oKnown != hKnown.constEnd())
        return *oKnown;
    if (hKnown.size() >= MostRemembered)
        hKnown.clear();
    return *hKnown.insert(sKey, measure());
}

} // namespace

CHeader::CHeader(Qt::Orientation eDirection, QWidget* pParent)
    : QHeaderView(eDirection, pParent)
{
}

int CHeader::textWidth(const QString& sText) const
{
    return remembered(hWidths, sText, [&] { return fontMetrics().horizontalAdvance(sText); });
}

// The style makes a picture of the whole section, which may be a million pixels wide. What is cut off, and
// the label if it is not in sight, stays beside the header.
void CHeader::paintSection(QPainter* pPainter, const QRect& oRect, int iSection) const
{
    constexpr int Beside = 100;
    QRect oInSight = oRect;
    if (orientation() == Qt::Horizontal) {
        const int iLabel = sectionSizeFromContents(iSection).width();
        oInSight.setLeft(std::max(oRect.left(), -iLabel - Beside));
        oInSight.setRight(std::min(oRect.right(), viewport()->width() + Beside));
    }
    QHeaderView::paintSection(pPainter, oInSight, iSection);
}

QSize CHeader::sectionSizeFromContents(int iSection) const
{
    const QString sLabel = model()->headerData(iSection, orientation()).toString();
    return remembered(hSizes, shape(sLabel), [&] { return QHeaderView::sectionSizeFromContents(iSection); });
}

// Numbers of as many digits are equally wide.
QString CHeader::shape(const QString& sLabel) const
{
    const auto isDigit = [](QChar oLetter) { return oLetter >= u'0' && oLetter <= u'9'; };
    const bool bNumber = std::all_of(sLabel.begin(), sLabel.end(), isDigit);
    if (!bNumber)
        return sLabel;
    if (!pLetterWidths)
        pLetterWidths = CLetterWidths::shared(fontMetrics());
    return pLetterWidths->areDigitsAlike() ? QString(sLabel.size(), u'0') : sLabel;
}

bool CHeader::event(QEvent* pEvent)
{
    switch (pEvent->type()) {
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::ScreenChangeInternal:
        pLetterWidths.reset();
        hWidths.clear();
        hSizes.clear();
        break;
    default:
        break;
    }
    return QHeaderView::event(pEvent);
}
