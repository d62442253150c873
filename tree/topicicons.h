// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QIcon>
#include <QSize>

#include <array>

/// The signs of the topics.
namespace topicicons {

constexpr int NumTopics = 21; ///< 0 to 20; greater topics share the last sign

/// The signs, and the size in pixels of the largest, at least 1 x 1.
struct Icons
{
    std::array<QIcon, NumTopics> aIcons;
    QSize oLargest{1, 1};

    /// Null for a negative topic.
    QIcon forTopic(int iTopic) const;
};

/// Reads Images/0.xpm to Images/20.xpm below the working directory and scales each for rows of `iRowHeight`
/// pixels: down by as many times as its height holds a row's. A missing file or a sign lower than a row gives
/// a null icon. [ui-thread]
Icons load(int iRowHeight);

} // namespace topicicons
