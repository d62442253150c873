// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

/// What happens when the X server goes away.
namespace displayloss {

/// Has `pfLost` called when the connection to the X server breaks, in the thread that notices. Qt would end
/// the process next, so `pfLost` must not return to save it. Messages go on to where they went before, but
/// for those about questions of screen readers. [ui-thread]
void guard(void (*pfLost)());

} // namespace displayloss
