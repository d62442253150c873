// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include <xcb/xcb.h>

/// Sees windows come up on the display.
class CMapWatch
{
public:
    /// Watches from now on; ends the program when there is no display.
    CMapWatch();

    /// Waits until a window has come up.
    void wait();

private:
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> pConnection;
};
