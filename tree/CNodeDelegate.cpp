// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CNodeDelegate.h"

#include <QIcon>
#include <QWidget>

#include <algorithm>

namespace {

constexpr int MostSizes = 100;

// In one line, without letters that may come from another, higher font.
bool isPlain(const QString& sText)
{
    return std::all_of(sText.begin(), sText.end(), [](QChar c) { return c >= u' ' && c < u'\x180'; });
}

} // namespace

CNodeDelegate::CNodeDelegate(QObject* pParent)
    : QStyledItemDelegate(pParent)
{
}

QSize CNodeDelegate::sizeHint(const QStyleOptionViewItem& oOption, const QModelIndex& oIndex) const
{
    if (!isPlain(oIndex.data().toString()))
        return QStyledItemDelegate::sizeHint(oOption, oIndex);
    const QStyle* pNow = oOption.widget != nullptr ? oOption.widget->style() : nullptr;
    if (pStyle != pNow || oDecorationSize != oOption.decorationSize || oFont != oOption.font
        || hSizes.size() > MostSizes) {
        hSizes.clear();
        pStyle = pNow;
        oDecorationSize = oOption.decorationSize;
        oFont = oOption.font;
    }
    const qint64 iSign = oIndex.data(Qt::DecorationRole).value<QIcon>().cacheKey();
    QSize& oSize = hSizes[iSign];
    if (!oSize.isValid())
        oSize = QStyledItemDelegate::sizeHint(oOption, oIndex);
    return oSize;
}
