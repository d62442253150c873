// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "eventmarks.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>

#include <xcb/xcb.h>

namespace eventmarks {
namespace {

/// Takes the marks out of the events: client messages to a window of its own.
class CFilter : public QAbstractNativeEventFilter
{
public:
    CFilter()
    {
        xcb_create_window(pConnection, 0, uWindow, uRoot, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
            XCB_COPY_FROM_PARENT, 0, nullptr);
        qGuiApp->installNativeEventFilter(this);
    }

    void send()
    {
        xcb_client_message_event_t oMark{};
        oMark.response_type = XCB_CLIENT_MESSAGE;
        oMark.format = 32;
        oMark.window = uWindow;
        oMark.type = XCB_ATOM_INTEGER;
        oMark.data.data32[0] = ++uSent;
        xcb_send_event(
            pConnection, 0, uWindow, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&oMark));
        xcb_flush(pConnection);
    }

    bool hasCome() const { return uCome == uSent; }

    bool nativeEventFilter(const QByteArray& /*oType*/, void* pMessage, qintptr* /*piResult*/) override
    {
        constexpr unsigned int SentByProgram = 0x80;
        const auto* pEvent = static_cast<const xcb_generic_event_t*>(pMessage);
        if ((pEvent->response_type & ~SentByProgram) != XCB_CLIENT_MESSAGE)
            return false;
        const auto* pMark = static_cast<const xcb_client_message_event_t*>(pMessage);
        if (pMark->window != uWindow)
            return false;
        uCome = pMark->data.data32[0];
        return true;
    }

private:
    xcb_connection_t* pConnection =
        qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    xcb_window_t uRoot = xcb_setup_roots_iterator(xcb_get_setup(pConnection)).data->root;
    xcb_window_t uWindow = xcb_generate_id(pConnection);
    std::uint32_t uSent = 0;
    std::uint32_t uCome = 0;
};

// Never destroyed: the application may go first.
CFilter& filter()
{
    static auto* pFilter = new CFilter;
    return *pFilter;
}

} // namespace

void send()
{
    filter().send();
}

bool hasCome()
{
    return filter().hasCome();
}

} // namespace eventmarks
