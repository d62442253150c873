// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#ifdef __SANITIZE_THREAD__
#include <sanitizer/tsan_interface.h>
#endif

/// Tells the thread sanitizer that what a thread wrote before it posted an event is there when the event is
/// handled. Qt's own locks see to that, but the sanitizer doesn't see them. Nothing in other builds.
namespace eventorder {

inline void posted([[maybe_unused]] void* pEvent)
{
#ifdef __SANITIZE_THREAD__
    __tsan_release(pEvent);
#endif
}

inline void received([[maybe_unused]] void* pEvent)
{
#ifdef __SANITIZE_THREAD__
    __tsan_acquire(pEvent);
#endif
}

} // namespace eventorder
