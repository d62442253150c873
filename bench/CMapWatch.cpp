// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CMapWatch.h"

#include "workerloop.h"

#include <cstdlib>

CMapWatch::CMapWatch()
    : pConnection(xcb_connect(nullptr, nullptr), &xcb_disconnect)
{
    if (xcb_connection_has_error(pConnection.get()) != 0)
        workerloop::fail("no display");
    const xcb_window_t uRoot = xcb_setup_roots_iterator(xcb_get_setup(pConnection.get())).data->root;
    const uint32_t uMask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(pConnection.get(), uRoot, XCB_CW_EVENT_MASK, &uMask);
    std::free(xcb_get_input_focus_reply(
        pConnection.get(), xcb_get_input_focus(pConnection.get()), nullptr)); // until the server has done it
}

void CMapWatch::wait()
{
    for (;;) {
        const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> pEvent(
            xcb_wait_for_event(pConnection.get()), &std::free);
        if (!pEvent)
            workerloop::fail("the display is gone");
        if ((pEvent->response_type & 0x7f) == XCB_MAP_NOTIFY)
            return;
    }
}
