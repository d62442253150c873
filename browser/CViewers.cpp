// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CViewers.h"

#include "panes.h"
#include "viewer/CEdit.h"

#include <QScreen>

#include <algorithm>

namespace {

constexpr QPoint Step(24, 24);
constexpr qsizetype LongestCaption = 200; ///< letters

// At the right edge of the screen further down only, beside the browser; from the lower edge back to the top.
QPoint placeAfter(const CEdit& oBefore)
{
    const QRect oRoom = oBefore.screen()->availableGeometry();
    const QRect oFrame = oBefore.frameGeometry();
    QPoint oPlace = oFrame.topLeft() + Step;
    oPlace.setX(std::max(oRoom.left(), std::min(oPlace.x(), oRoom.right() + 1 - oFrame.width())));
    if (oPlace.y() + oFrame.height() > oRoom.bottom())
        oPlace.setY(oRoom.top());
    return oPlace;
}

} // namespace

// Deliberate: the viewer is never deleted; closing hides it. Test: tst_nodebrowser,
// everyDoubleClickOpensAFurtherViewer.
void CViewers::open(const QString& sText, const QString& sTitle)
{
    auto* pViewer = new CEdit;
    pViewer->setText(sText);
    const QString sName = sTitle.simplified();
    pViewer->setTitle((sName.isEmpty() ? pViewer->firstLine() : sName).left(LongestCaption));
    pViewer->resize(panes::FirstViewerSize);
    if (pLast != nullptr && pLast->isVisible())
        pViewer->move(placeAfter(*pLast));
    pViewer->show();
    pLast = pViewer;
}
