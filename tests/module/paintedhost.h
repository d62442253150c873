// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayList>
#include <QColor>
#include <QImage>

class CAnalyst;

/// A host over the documents of painted.sql, whose cells of the column "title" show nothing but colours.
namespace paintedhost {

// Of the widgets' style.
constexpr QRgb Text = qRgb(0, 0, 0);
constexpr QRgb Base = qRgb(255, 255, 255);
constexpr QRgb Highlight = qRgb(48, 140, 198);
constexpr QRgb HighlightedText = qRgb(255, 255, 255);

// Of hues 0 and 120.
constexpr QRgb Red = qRgb(255, 0, 0);
constexpr QRgb Green = qRgb(0, 255, 0);

/// Loads the module, constructs, chooses a node, sets row colours if any are given, and shows the window, so
/// that the first paint has the colours.
void show(CAnalyst& oAnalyst, int iNode, const QByteArray& oColors = {});

/// Hides the window and shows it again, which paints every cell.
void repaint(CAnalyst& oAnalyst);

/// A cell as it is on the screen.
QImage cell(CAnalyst& oAnalyst, int iRow, const QByteArray& oColumn);

/// The colours in the middle of the titles' cells of some rows, such as "#ff0000"; "nowhere" for a row that
/// is out of sight.
QByteArrayList fills(CAnalyst& oAnalyst, int iFirst, int iLast);

} // namespace paintedhost
