// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

#include <sys/types.h>

/// Waits until a thread of this process (the kernel's number) sleeps, or `orDone` says that there is no need
/// to wait. Needs no Qt. [any-thread]
void waitUntilAsleep(pid_t iThread, const std::function<bool()>& orDone);
