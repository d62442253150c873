// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "topicicons.h"

#include <QPixmap>
#include <QTransform>

#include <algorithm>

namespace topicicons {
namespace {

// Deliberate: by a whole number, not to an exact fit. Test: tst_topicicons, aSignIsScaledByAWholeNumber.
QPixmap scaled(const QPixmap& oPixmap, int iRowHeight)
{
    const int iTimes = oPixmap.height() / std::max(iRowHeight, 1);
    if (iTimes == 0)
        return {};
    const double fScale = 1.0 / static_cast<float>(iTimes);
    return oPixmap.transformed(QTransform::fromScale(fScale, fScale));
}

// Qt would colour the sign of a selected item.
QIcon untinted(const QPixmap& oPixmap)
{
    QIcon oIcon(oPixmap);
    oIcon.addPixmap(oPixmap, QIcon::Selected);
    return oIcon;
}

} // namespace

QIcon Icons::forTopic(int iTopic) const
{
    return iTopic < 0 ? QIcon() : aIcons[std::size_t(std::min(iTopic, NumTopics - 1))];
}

Icons load(int iRowHeight)
{
    Icons oIcons;
    for (int i = 0; i < NumTopics; i++) {
        const QPixmap oPixmap = scaled(QPixmap(QStringLiteral("Images/%1.xpm").arg(i)), iRowHeight);
        if (!oPixmap.isNull())
            oIcons.aIcons[std::size_t(i)] = untinted(oPixmap);
        oIcons.oLargest = oIcons.oLargest.expandedTo(oPixmap.size());
    }
    return oIcons;
}

} // namespace topicicons
