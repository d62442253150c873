// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayList>
#include <QImage>
#include <QRect>

#include <optional>

#include <xcb/xcb.h>

/// The display as somebody in front of it: sees windows and colours, moves the mouse, presses keys. Windows
/// are those of the application "Ombrel", found by their titles. Needs a window manager.
class CScreen
{
public:
    CScreen();
    ~CScreen();
    CScreen(const CScreen&) = delete;
    CScreen& operator=(const CScreen&) = delete;

    /// Titles of the windows on the screen, sorted.
    QByteArrayList shown() const;
    bool isShown(const QByteArray& oTitle) const { return shown().contains(oTitle); }
    /// Number of all windows of all programs, seen or not.
    int windows() const { return windowsIn(pScreen->root); }
    /// Whether the window has the focus.
    bool isActive(const QByteArray& oTitle) const;
    /// The window's place on the screen, without its frame; empty if it isn't there.
    QRect place(const QByteArray& oTitle) const;
    /// What is on the screen.
    QImage picture() const;
    /// Number of pixels of exactly this colour on the screen, or at a place of it.
    int pixels(QRgb uColor) const { return pixels(uColor, {}); }
    int pixels(QRgb uColor, const QRect& oPlace) const;

    /// Presses keys, such as "Return" or "alt+f", one after the other.
    void press(const QByteArrayList& lKeys) const;
    /// Types a text with the keyboard of the display.
    void type(const QByteArray& oText) const;
    /// Moves the mouse to a place of the screen.
    void hover(const QPoint& oPlace) const;
    /// Clicks at a place of the screen; button 1 is the left one, 2 the middle one, 3 the right one.
    void click(const QPoint& oPlace, int iButton = 1) const;
    void doubleClick(const QPoint& oPlace, int iButton = 1) const;
    /// Presses the left button at a place and lets it go at another one.
    void drag(const QPoint& oFrom, const QPoint& oTo) const;
    /// The steps of a drag, for looks between them: presses the left button, and lets it go.
    void hold(const QPoint& oPlace) const;
    void letGo(const QPoint& oPlace) const;
    void move(const QByteArray& oTitle, const QPoint& oPlace) const;
    void resize(const QByteArray& oTitle, const QSize& oSize) const;
    void minimize(const QByteArray& oTitle) const;
    /// Closes a window, or all of that title, by way of the window manager, as its button does.
    void close(const QByteArray& oTitle) const;
    void closeAll(const QByteArray& oTitle) const;
    /// Closes the display's connection of the program that has made the window.
    void throwOut(const QByteArray& oTitle) const;

private:
    void drive(const QByteArrayList& lArguments) const;
    void waitForManager() const;
    void send(xcb_window_t uWindow, const char* pcMessage) const;
    QList<xcb_window_t> clients() const;
    std::optional<xcb_window_t> find(const QByteArray& oTitle) const;
    int windowsIn(xcb_window_t uWindow) const;
    bool isViewable(xcb_window_t uWindow) const;
    xcb_atom_t atom(const char* pcName) const;
    QByteArray property(xcb_window_t uWindow, xcb_atom_t uProperty) const;
    QByteArray title(xcb_window_t uWindow) const;

    xcb_connection_t* pConnection;
    const xcb_screen_t* pScreen;
};
