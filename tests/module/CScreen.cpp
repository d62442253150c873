// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CScreen.h"

#include <QProcess>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

template <typename Reply> auto held(Reply* pReply)
{
    return std::unique_ptr<Reply, decltype(&std::free)>(pReply, &std::free);
}

QByteArrayList moveTo(const QPoint& oPlace)
{
    return {"mousemove", QByteArray::number(oPlace.x()), QByteArray::number(oPlace.y())};
}

} // namespace

CScreen::CScreen()
    : pConnection(xcb_connect(nullptr, nullptr))
    , pScreen(xcb_setup_roots_iterator(xcb_get_setup(pConnection)).data)
{
}

CScreen::~CScreen()
{
    xcb_disconnect(pConnection);
}

xcb_atom_t CScreen::atom(const char* pcName) const
{
    const auto oCookie = xcb_intern_atom(pConnection, 0, std::uint16_t(std::strlen(pcName)), pcName);
    return held(xcb_intern_atom_reply(pConnection, oCookie, nullptr))->atom;
}

QByteArray CScreen::property(xcb_window_t uWindow, xcb_atom_t uProperty) const
{
    const auto oCookie = xcb_get_property(pConnection, 0, uWindow, uProperty, XCB_ATOM_ANY, 0, 1000);
    const auto pReply = held(xcb_get_property_reply(pConnection, oCookie, nullptr));
    if (!pReply)
        return {};
    const auto* pcValue = static_cast<const char*>(xcb_get_property_value(pReply.get()));
    return {pcValue, xcb_get_property_value_length(pReply.get())};
}

QByteArray CScreen::title(xcb_window_t uWindow) const
{
    return property(uWindow, atom("_NET_WM_NAME"));
}

// The window manager lists the windows that it manages.
QList<xcb_window_t> CScreen::clients() const
{
    const QByteArray oList = property(pScreen->root, atom("_NET_CLIENT_LIST"));
    QList<xcb_window_t> lAll(oList.size() / qsizetype(sizeof(xcb_window_t)));
    if (!oList.isEmpty())
        std::memcpy(lAll.data(), oList.constData(), std::size_t(oList.size()));
    lAll.removeIf([this](xcb_window_t uWindow) {
        return !property(uWindow, XCB_ATOM_WM_CLASS).contains("Ombrel") || !isViewable(uWindow);
    });
    return lAll;
}

int CScreen::windowsIn(xcb_window_t uWindow) const
{
    const auto oCookie = xcb_query_tree(pConnection, uWindow);
    const auto pReply = held(xcb_query_tree_reply(pConnection, oCookie, nullptr));
    if (!pReply)
        return 0;
    const int iChildren = xcb_query_tree_children_length(pReply.get());
    int iWindows = iChildren;
    for (int i = 0; i < iChildren; i++)
        iWindows += windowsIn(xcb_query_tree_children(pReply.get())[i]);
    return iWindows;
}

bool CScreen::isViewable(xcb_window_t uWindow) const
{
    const auto oCookie = xcb_get_window_attributes(pConnection, uWindow);
    const auto pReply = held(xcb_get_window_attributes_reply(pConnection, oCookie, nullptr));
    return pReply && pReply->map_state == XCB_MAP_STATE_VIEWABLE;
}

QByteArrayList CScreen::shown() const
{
    QByteArrayList lTitles;
    for (const xcb_window_t uWindow : clients())
        lTitles << title(uWindow);
    std::sort(lTitles.begin(), lTitles.end());
    return lTitles;
}

std::optional<xcb_window_t> CScreen::find(const QByteArray& oTitle) const
{
    for (const xcb_window_t uWindow : clients())
        if (title(uWindow) == oTitle)
            return uWindow;
    return std::nullopt;
}

// A window manager that has just been started may sleep on what it has read already; any message wakes it.
bool CScreen::isActive(const QByteArray& oTitle) const
{
    send(pScreen->root, "QTUTILS_LOOK");
    const auto uWindow = find(oTitle);
    const QByteArray oActive = property(pScreen->root, atom("_NET_ACTIVE_WINDOW"));
    return uWindow && oActive.size() == sizeof *uWindow
        && std::memcmp(oActive.constData(), &*uWindow, sizeof *uWindow) == 0;
}

QRect CScreen::place(const QByteArray& oTitle) const
{
    const auto uWindow = find(oTitle);
    if (!uWindow)
        return {};
    const auto pSize =
        held(xcb_get_geometry_reply(pConnection, xcb_get_geometry(pConnection, *uWindow), nullptr));
    const auto pOrigin = held(xcb_translate_coordinates_reply(
        pConnection, xcb_translate_coordinates(pConnection, *uWindow, pScreen->root, 0, 0), nullptr));
    if (!pSize || !pOrigin)
        return {};
    return {pOrigin->dst_x, pOrigin->dst_y, pSize->width, pSize->height};
}

QImage CScreen::picture() const
{
    const auto oCookie = xcb_get_image(pConnection, XCB_IMAGE_FORMAT_Z_PIXMAP, pScreen->root, 0, 0,
        pScreen->width_in_pixels, pScreen->height_in_pixels, ~0U);
    const auto pImage = held(xcb_get_image_reply(pConnection, oCookie, nullptr));
    const QImage oPicture(xcb_get_image_data(pImage.get()), pScreen->width_in_pixels,
        pScreen->height_in_pixels, QImage::Format_RGB32);
    return oPicture.copy();
}

int CScreen::pixels(QRgb uColor, const QRect& oPlace) const
{
    const QImage oPicture = picture().copy(oPlace);
    const auto* puFirst = reinterpret_cast<const QRgb*>(oPicture.constBits());
    return int(std::count_if(puFirst, puFirst + oPicture.sizeInBytes() / qsizetype(sizeof *puFirst),
        [&](QRgb uPixel) { return (uPixel & RGB_MASK) == (uColor & RGB_MASK); }));
}

void CScreen::press(const QByteArrayList& lKeys) const
{
    drive(QByteArrayList{"key"} + lKeys);
}

void CScreen::type(const QByteArray& oText) const
{
    drive({"type", "--delay", "0", "--args", "1", oText});
}

void CScreen::hover(const QPoint& oPlace) const
{
    drive(moveTo(oPlace));
}

void CScreen::click(const QPoint& oPlace, int iButton) const
{
    drive(moveTo(oPlace) + QByteArrayList{"click", QByteArray::number(iButton)});
}

void CScreen::doubleClick(const QPoint& oPlace, int iButton) const
{
    // One by one: of two presses at once the window manager may keep one.
    click(oPlace, iButton);
    drive({"click", QByteArray::number(iButton)});
}

void CScreen::drag(const QPoint& oFrom, const QPoint& oTo) const
{
    // One by one, as for a double click.
    hold(oFrom);
    drive(moveTo((oFrom + oTo) / 2));
    letGo(oTo);
}

void CScreen::hold(const QPoint& oPlace) const
{
    drive(moveTo(oPlace) + QByteArrayList{"mousedown", "1"});
}

void CScreen::letGo(const QPoint& oPlace) const
{
    drive(moveTo(oPlace) + QByteArrayList{"mouseup", "1"});
}

void CScreen::move(const QByteArray& oTitle, const QPoint& oPlace) const
{
    drive({"windowmove", QByteArray::number(find(oTitle).value_or(0)), QByteArray::number(oPlace.x()),
        QByteArray::number(oPlace.y())});
}

void CScreen::resize(const QByteArray& oTitle, const QSize& oSize) const
{
    drive({"windowsize", QByteArray::number(find(oTitle).value_or(0)), QByteArray::number(oSize.width()),
        QByteArray::number(oSize.height())});
}

void CScreen::minimize(const QByteArray& oTitle) const
{
    drive({"windowminimize", QByteArray::number(find(oTitle).value_or(0))});
}

void CScreen::close(const QByteArray& oTitle) const
{
    send(find(oTitle).value_or(0), "_NET_CLOSE_WINDOW");
    xcb_flush(pConnection);
}

void CScreen::closeAll(const QByteArray& oTitle) const
{
    for (const xcb_window_t uWindow : clients())
        if (title(uWindow) == oTitle)
            send(uWindow, "_NET_CLOSE_WINDOW");
    xcb_flush(pConnection);
}

void CScreen::throwOut(const QByteArray& oTitle) const
{
    xcb_kill_client(pConnection, find(oTitle).value_or(0));
    xcb_flush(pConnection);
}

void CScreen::drive(const QByteArrayList& lArguments) const
{
    QStringList slArguments;
    for (const QByteArray& oArgument : lArguments)
        slArguments << QString::fromUtf8(oArgument);
    // The answer to a last question comes when the display has done all before it.
    slArguments << QStringLiteral("getmouselocation");
    QProcess oProcess;
    oProcess.setStandardOutputFile(QProcess::nullDevice());
    oProcess.start(QStringLiteral("xdotool"), slArguments);
    oProcess.waitForFinished();
    waitForManager();
}

// A press goes to the window manager first, which lets it go on to its window. A question that it is asked
// now it answers behind that, by a property of the window that the question is about.
void CScreen::waitForManager() const
{
    const xcb_window_t uWindow = xcb_generate_id(pConnection);
    const std::uint32_t uEvents = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(pConnection, XCB_COPY_FROM_PARENT, uWindow, pScreen->root, 0, 0, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, pScreen->root_visual, XCB_CW_EVENT_MASK, &uEvents);
    send(uWindow, "_NET_REQUEST_FRAME_EXTENTS");
    xcb_flush(pConnection);
    std::free(xcb_wait_for_event(pConnection));
    xcb_destroy_window(pConnection, uWindow);
}

// To the window manager, about a window.
void CScreen::send(xcb_window_t uWindow, const char* pcMessage) const
{
    xcb_client_message_event_t oMessage{};
    oMessage.response_type = XCB_CLIENT_MESSAGE;
    oMessage.format = 32;
    oMessage.window = uWindow;
    oMessage.type = atom(pcMessage);
    xcb_send_event(pConnection, 0, pScreen->root,
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char*>(&oMessage));
}
