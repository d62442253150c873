// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPointer>

class CEdit;

/// Opens the full-text viewers. [ui-thread]
class CViewers
{
public:
    /// Shows a text in a further viewer, a little below and to the right of the one before. Its caption is
    /// the title, or without one the text's first line.
    void open(const QString& sText, const QString& sTitle);

private:
    QPointer<CEdit> pLast;
};
