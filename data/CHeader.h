// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QHeaderView>

#include <memory>

class CLetterWidths;

/// The names of columns, or the numbers of rows. Remembers how much room they take: Qt by itself lays out up
/// to forty row numbers and all column names at every change of what is shown. Paints of a wide column what
/// is in sight. [ui-thread]
class CHeader : public QHeaderView
{
public:
    CHeader(Qt::Orientation eDirection, QWidget* pParent);

    /// Width in pixels of a text in the header's font, without margins.
    int textWidth(const QString& sText) const;

protected:
    void paintSection(QPainter* pPainter, const QRect& oRect, int iSection) const override;
    QSize sectionSizeFromContents(int iSection) const override;
    bool event(QEvent* pEvent) override;

private:
    QString shape(const QString& sLabel) const;

    mutable std::shared_ptr<CLetterWidths> pLetterWidths;
    mutable QHash<QString, int> hWidths;
    mutable QHash<QString, QSize> hSizes;
};
