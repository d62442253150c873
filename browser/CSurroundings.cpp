// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CSurroundings.h"

#include <clocale>

CSurroundings::CVariable::CVariable(const char* pcVariable, const QByteArray& oValue)
    : pcName(pcVariable)
{
    if (qEnvironmentVariableIsSet(pcName))
        oBefore = qgetenv(pcName);
    qputenv(pcName, oValue);
}

CSurroundings::CVariable::~CVariable()
{
    if (oBefore)
        qputenv(pcName, *oBefore);
    else
        qunsetenv(pcName);
}

// With GLib's event loop, message boxes would iterate the host's default context. The X11 platform is asked
// for by name, because Qt may take another one on its own.
CSurroundings::CSurroundings()
    : sLocale(std::setlocale(LC_ALL, nullptr))
    , oNoGLib("QT_NO_GLIB", "1")
    , oPlatform("QT_QPA_PLATFORM",
          qEnvironmentVariableIsSet("QT_QPA_PLATFORM") ? qgetenv("QT_QPA_PLATFORM") : "xcb")
{
}

CSurroundings::~CSurroundings()
{
    std::setlocale(LC_ALL, sLocale.c_str());
}
