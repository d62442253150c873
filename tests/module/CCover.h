// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QRect>

#include <xcb/xcb.h>

/// A plain area in front of all windows, as somebody else's window would be. What it has hidden stays as it
/// is, in the area's colour, until the window below shows it again.
class CCover
{
public:
    CCover(const QRect& oPlace, QRgb uColor);
    ~CCover();
    CCover(const CCover&) = delete;
    CCover& operator=(const CCover&) = delete;

    /// Takes the area away.
    void remove();

private:
    void finish() const;

    xcb_connection_t* pConnection;
    xcb_window_t uWindow;
};
