// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

/// Memory of this process in kilobytes.
namespace memory {

/// What is its own: without the pages of program files and libraries.
long own();
/// All that is resident, and the most that it was since the last reset.
long resident();
long peak();
void resetPeak();

} // namespace memory
