// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

class CAnalyst;

/// A host whose window gets no connection to the database.
namespace refusedhost {

/// Loads the module, names the assignment table, and constructs in the host's thread 1, which waits for the
/// box.
void construct(CAnalyst& oAnalyst);

/// Waits for the box, whose reason must begin with that text, and closes it. The window comes, without rows.
void checkBox(CAnalyst& oAnalyst, const QByteArray& oReason);

} // namespace refusedhost
