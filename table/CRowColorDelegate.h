// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStyledItemDelegate>

/// Paints the cells of a CDocumentModel, in the host's row colours while it has some. [ui-thread]
class CRowColorDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Three floats a row: hue (0 to 359), saturation and value (0 to 255). The host's memory, read at each
    /// paint until other colours are set; null for plain painting. Repaints nothing.
    void setRowColors(const float* pfColors) { pfRowColors = pfColors; }

    void paint(
        QPainter* pPainter, const QStyleOptionViewItem& oOption, const QModelIndex& oIndex) const override;

private:
    QColor rowColor(int iRow) const;
    static QString textInSight(
        const QPainter& oPainter, const QStyleOptionViewItem& oOption, const QModelIndex& oIndex);

    const float* pfRowColors = nullptr;
};
