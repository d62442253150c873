// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

/// Marks among the events that the X server sends to the application. Qt reads those in a thread of its own,
/// so that what the server has sent may still be on its way. [ui-thread]
namespace eventmarks {

/// Sends a mark, which comes behind all that the server has sent until now.
void send();

/// Whether the last mark has come.
bool hasCome();

} // namespace eventmarks
