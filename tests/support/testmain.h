// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CPrivateDisplay.h"

#include <QApplication>
#include <QTest>

#include <clocale>

/// main() of a widget test: a display of its own, German dates, Berlin time, no ending with the last window.
#define QTUTILS_WIDGET_TEST_MAIN(TestClass, eManager)                                                        \
    int main(int iArguments, char** apcArguments)                                                            \
    {                                                                                                        \
        const CPrivateDisplay oDisplay(eManager);                                                            \
        qputenv("LANG", "de_DE");                                                                            \
        qputenv("TZ", "Europe/Berlin");                                                                      \
        qputenv("QT_QPA_PLATFORM", "xcb");                                                                   \
        QApplication oApplication(iArguments, apcArguments);                                                 \
        QApplication::setQuitOnLastWindowClosed(false);                                                      \
        std::setlocale(LC_NUMERIC, "C");                                                                     \
        TestClass oTest;                                                                                     \
        return QTest::qExec(&oTest, iArguments, apcArguments);                                               \
    }

/// main() of a test that needs fonts or pictures but no display.
#define QTUTILS_OFFSCREEN_TEST_MAIN(TestClass)                                                               \
    int main(int iArguments, char** apcArguments)                                                            \
    {                                                                                                        \
        qputenv("QT_QPA_PLATFORM", "offscreen");                                                             \
        QApplication oApplication(iArguments, apcArguments);                                                 \
        TestClass oTest;                                                                                     \
        return QTest::qExec(&oTest, iArguments, apcArguments);                                               \
    }
