// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QBoxLayout>
#include <QGroupBox>
#include <QSplitter>

/// The window's building blocks and its sizes, in pixels. [ui-thread]
namespace panes {

constexpr QSize LeastSize(732, 800); ///< of the window, which opens with it
constexpr int FirstTreeWidth = 340; ///< of a tree that has just been filled
constexpr int TableShare = 480; ///< of the right side's height, in proportion to TextShare
constexpr int TextShare = 320;
constexpr QSize FirstViewerSize(540, 500); ///< of a full text; fits beside LeastSize on 1280 pixels
constexpr int HandleWidth = 5;
constexpr int GroupMargin = 11;
constexpr int GroupSpacing = 5;

/// A splitter whose panes change when the handle is let go.
inline QSplitter* makeSplitter(Qt::Orientation eOrientation, QWidget* pParent)
{
    auto* pSplitter = new QSplitter(eOrientation, pParent);
    pSplitter->setHandleWidth(HandleWidth);
    pSplitter->setOpaqueResize(false);
    return pSplitter;
}

/// A group box whose layout has the given direction.
inline QGroupBox* makeGroup(const QString& sName, QBoxLayout::Direction eDirection, QWidget* pParent)
{
    auto* pGroup = new QGroupBox(pParent);
    pGroup->setObjectName(sName);
    auto* pLayout = new QBoxLayout(eDirection, pGroup);
    pLayout->setContentsMargins(GroupMargin, GroupMargin, GroupMargin, GroupMargin);
    pLayout->setSpacing(GroupSpacing);
    return pGroup;
}

/// Adds a widget to a group made by makeGroup(); `iStretch` is its share of the room that is left.
inline void addTo(QGroupBox& oGroup, QWidget* pWidget, int iStretch)
{
    static_cast<QBoxLayout*>(oGroup.layout())->addWidget(pWidget, iStretch);
}

} // namespace panes
