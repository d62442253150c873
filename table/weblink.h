// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

class QByteArray;
class QString;

/// Opening an address in the external web browser.
namespace weblink {

/// The shell's command line: a running browser opens the address in a new tab, else a new browser is started.
/// The address is put in twice, as it stands, in UTF-8.
QByteArray commandLine(const QString& sAddress);

/// Runs a command line in the shell and waits for its end. [ui-thread]
void run(const QByteArray& oCommandLine);

} // namespace weblink
