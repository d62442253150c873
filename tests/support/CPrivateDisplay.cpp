// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPrivateDisplay.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sys/prctl.h>

#include <xcb/xcb.h>

namespace {

constexpr int LongestWait = 60000; // milliseconds

[[noreturn]] void giveUp(const char* pcWhat)
{
    std::fprintf(stderr, "private display: %s\n", pcWhat);
    std::exit(2);
}

void endWithUs()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

bool hasManager(xcb_connection_t* pConnection, xcb_window_t uRoot, xcb_atom_t uAtom)
{
    const auto oCookie = xcb_get_property(pConnection, 0, uRoot, uAtom, XCB_ATOM_WINDOW, 0, 1);
    const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> pReply(
        xcb_get_property_reply(pConnection, oCookie, nullptr), &std::free);
    return pReply && xcb_get_property_value_length(pReply.get()) > 0;
}

} // namespace

CPrivateDisplay::CPrivateDisplay(Manager eManager)
{
    oServer.setChildProcessModifier(endWithUs);
    oServer.start(QStringLiteral("Xvfb"),
        {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
            QStringLiteral("1280x1024x24"), QStringLiteral("-noreset"), QStringLiteral("-nolisten"),
            QStringLiteral("tcp")});
    QByteArray oOutput;
    while (!oOutput.endsWith('\n')) {
        if (!oServer.waitForReadyRead(LongestWait))
            giveUp("Xvfb doesn't start");
        oOutput += oServer.readAllStandardOutput();
    }
    oName = ':' + oOutput.trimmed();
    qputenv("DISPLAY", oName);
    if (eManager == Manager::Running)
        startManager();
}

CPrivateDisplay::~CPrivateDisplay()
{
    for (QProcess* pProcess : {&oManager, &oServer}) {
        pProcess->kill();
        pProcess->waitForFinished(LongestWait);
    }
}

// The manager says that it runs by a property of the root window.
void CPrivateDisplay::startManager()
{
    QProcessEnvironment oEnvironment = QProcessEnvironment::systemEnvironment();
    oEnvironment.insert(QStringLiteral("HOME"), oFolder.path());
    oManager.setProcessEnvironment(oEnvironment);
    oManager.setChildProcessModifier(endWithUs);
    oManager.start(QStringLiteral("openbox"), {});
    if (!oManager.waitForStarted(LongestWait))
        giveUp("openbox doesn't start");
    xcb_connection_t* pConnection = xcb_connect(nullptr, nullptr);
    const xcb_window_t uRoot = xcb_setup_roots_iterator(xcb_get_setup(pConnection)).data->root;
    const char* pcName = "_NET_SUPPORTING_WM_CHECK";
    const auto oCookie = xcb_intern_atom(pConnection, 0, std::uint16_t(std::strlen(pcName)), pcName);
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> pAtom(
        xcb_intern_atom_reply(pConnection, oCookie, nullptr), &std::free);
    const std::uint32_t uMask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(pConnection, uRoot, XCB_CW_EVENT_MASK, &uMask);
    xcb_flush(pConnection);
    while (!hasManager(pConnection, uRoot, pAtom->atom))
        std::free(xcb_wait_for_event(pConnection)); // a property of the root has changed
    xcb_disconnect(pConnection);
}
