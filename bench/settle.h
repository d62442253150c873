// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

/// Waits until all other threads of this process sleep and have nothing more to do, so that work that a round
/// has left behind (such as painting) doesn't disturb the next side's round.
void settle();

/// How often the other threads have gone to sleep so far.
long switchesOfOtherThreads();
