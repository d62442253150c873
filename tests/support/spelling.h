// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

class QString;

/// A text as one line of plain letters, whatever is in it and however long it is.
namespace spelling {

/// All letters but the plain ones as their code units, such as "\u000a"; of a long text only the number of
/// its code units and a hash.
QByteArray spelled(const QString& sText);

} // namespace spelling
