// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CNodeBrowser.h"

// The module's one object with static storage; its constructor and destructor do nothing. Only the module
// links this file: tests bring their own application object.
COmbrelWin CNodeBrowser::oOmbrelWin;
