// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CCover.h"

#include <cstdlib>

CCover::CCover(const QRect& oPlace, QRgb uColor)
    : pConnection(xcb_connect(nullptr, nullptr))
    , uWindow(xcb_generate_id(pConnection))
{
    const xcb_screen_t* pScreen = xcb_setup_roots_iterator(xcb_get_setup(pConnection)).data;
    const std::uint32_t auValues[] = {uColor & RGB_MASK, 1}; // the window manager leaves it alone
    xcb_create_window(pConnection, XCB_COPY_FROM_PARENT, uWindow, pScreen->root, std::int16_t(oPlace.x()),
        std::int16_t(oPlace.y()), std::uint16_t(oPlace.width()), std::uint16_t(oPlace.height()), 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, pScreen->root_visual, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT,
        auValues);
    xcb_map_window(pConnection, uWindow);
    finish();
}

CCover::~CCover()
{
    xcb_disconnect(pConnection); // takes the window along
}

void CCover::remove()
{
    xcb_destroy_window(pConnection, uWindow);
    finish();
}

// Waits until the display has done all that was asked for.
void CCover::finish() const
{
    std::free(xcb_get_input_focus_reply(pConnection, xcb_get_input_focus(pConnection), nullptr));
}
