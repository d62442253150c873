// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

/// Keeps this thread, and threads that it starts later, on the last of the machine's cores.
void stayOnOneCore();
