// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

/// Lets the host make children with fork().
///
/// A child has the objects of all threads, but not the threads. What another thread holds locked at that
/// moment stays locked in the child; the C library's list of exit handlers is such a thing. So fork() waits
/// until the user-interface thread has done what it is at.
namespace forkguard {

/// From now on children end with their code when they call exit(): standard streams are flushed, exit
/// handlers that were registered before the fork don't run. See exitguard::isChild(). [any-thread]
void guardChildren();

/// What the calling thread does from here to endWork() may register exit handlers. A fork waits for the end,
/// unless the thread sleeps for 20 milliseconds (for an answer of the database, say), and 250 milliseconds at
/// most. Calls nest. [ui-thread]
void beginWork();

/// The thread is about to wait for events in the midst of work; the next beginWork() goes on. [ui-thread]
void pauseWork();

/// The other end of beginWork(). [ui-thread]
void endWork();

} // namespace forkguard
