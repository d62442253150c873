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

/// Lets a child that the host makes with fork() and that calls exit() end with its code: it has the threads'
/// objects, but not the threads that Qt's own exit handlers would wait for. Standard streams are flushed;
/// exit handlers that were registered before the fork don't run in the child. [any-thread]
void guardChildren();

/// What the calling thread does from here to endWork() may register exit handlers. A child made in such a
/// moment would wait for their list in exit(), so fork() waits for the end, 250 milliseconds at most. Calls
/// nest. [ui-thread]
void beginWork();

/// The thread is about to wait for events in the midst of work; the next beginWork() goes on. [ui-thread]
void pauseWork();

/// The other end of beginWork(). [ui-thread]
void endWork();

/// Whether this process is such a child: nothing of the user interface works in it. [any-thread]
bool isChild();

} // namespace exitguard
