// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/CPrivateDisplay.h"

#include <QCoreApplication>
#include <QPoint>
#include <QTemporaryDir>
#include <QTest>

/// Where the tree's root and the table's first row lie in a window of the least size.
constexpr QPoint RootItem(60, 45);
constexpr QPoint FirstRow(500, 64);

/// Whether a sanitizer is at work: it keeps freed memory for a while, takes more than a limited host may
/// have, and counts what the C library keeps of a main thread that ended early as a leak.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool Sanitized = true;
#else
constexpr bool Sanitized = false;
#endif

/// Whether this is a thorough run: the variable QTUTILS_REPETITIONS says how often tests repeat what they do.
inline bool isThorough()
{
    return qEnvironmentVariableIsSet("QTUTILS_REPETITIONS");
}

/// How often a test repeats what it does; the argument is the number for the ordinary run.
inline int repetitions(int iOrdinary)
{
    return isThorough() ? qEnvironmentVariableIntValue("QTUTILS_REPETITIONS") : iOrdinary;
}

/// Waits until a condition has been true once; QTRY_VERIFY() would look again. The limit is for a hang only.
#define QTUTILS_WAIT_FOR(Condition)                                                                          \
    QVERIFY2(QTest::qWaitFor([&] { return bool(Condition); }, 20000), "waited in vain for " #Condition)

/// main() of a module test: a display with window manager, and an environment for the hosts that doesn't
/// depend on the user's.
#define QTUTILS_MODULE_TEST_MAIN(TestClass)                                                                  \
    int main(int iArguments, char** apcArguments)                                                            \
    {                                                                                                        \
        const CPrivateDisplay oDisplay(CPrivateDisplay::Manager::Running);                                   \
        const QTemporaryDir oRuntime;                                                                        \
        qputenv("XDG_RUNTIME_DIR", oRuntime.path().toUtf8());                                                \
        qputenv("LANG", "C.UTF-8");                                                                          \
        qputenv("LC_CTYPE", "C.UTF-8"); /* has a table of composed characters for the toolkit */             \
        qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");                                                         \
        qunsetenv("QT_QPA_PLATFORM");                                                                        \
        if (isThorough() || qEnvironmentVariableIsSet("QTUTILS_CALLS"))                                      \
            qputenv("QTEST_FUNCTION_TIMEOUT", "86400000"); /* milliseconds */                                \
        const QCoreApplication oApplication(iArguments, apcArguments);                                       \
        TestClass oTest;                                                                                     \
        return QTest::qExec(&oTest, iArguments, apcArguments);                                               \
    }
