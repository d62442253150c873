// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

/// The host's calls, told by the logging category "qtutils.host", which is silent unless "QT_LOGGING_RULES"
/// switches it on. [any-thread]
namespace calllog {

/// Lets calls be told from now on. Not before the application object has been made: the thread that touches
/// Qt first counts as its main thread. [ui-thread]
void open();

/// Tells a call, with a format and arguments as for printf(), as soon as its answer is there.
[[gnu::format(printf, 1, 2)]] void tell(const char* pcFormat, ...);

} // namespace calllog
