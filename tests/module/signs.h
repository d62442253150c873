// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CAnalyst.h"

/// Files of the topics' signs, each in a colour of its own, and what of them is seen in the tree.
namespace signs {

QRgb color(int iTopic);
/// The sign's file, below the working directory of the host.
QString file(int iTopic);
/// Writes a sign of that size.
void draw(int iTopic, const QSize& oSize, const char* pcFormat = "XPM");
/// The signs of the root and its children, from the top: the topics whose colours are there, or "none".
QByteArrayList seen(CAnalyst& oAnalyst);

} // namespace signs
