// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

/// Stops the user-interface thread before the process takes Qt apart.
///
/// Exit handlers run last registered first, and Qt registers more of them while it runs. A thread that still
/// uses Qt when those have run crashes the host. So our handler is registered anew until it is the last one.
namespace exitguard {

/// Registers `stop`, to be called at process exit, behind every handler there is now. [ui-thread]
void renew(void (*stop)());

/// Lets `stop` also run when the main thread's thread-local objects go, which is before any exit handler.
/// Only acts when called in the main thread. [host-thread]
void guardMainThread(void (*stop)());

/// Makes our handler the last one, and keeps it so until afterFork(). [any-thread]
void beforeFork();

/// The other end of beforeFork(). In a child, our handler flushes the standard streams and ends the process
/// with its exit code: Qt's own would wait for threads that don't exist there. [any-thread]
void afterFork(bool bInChild);

/// Whether this process is such a child: nothing of the user interface works in it. [any-thread]
bool isChild();

} // namespace exitguard
