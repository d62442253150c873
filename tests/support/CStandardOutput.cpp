// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CStandardOutput.h"

#include <cstdio>
#include <unistd.h>

CStandardOutput::CStandardOutput()
    : iBefore(dup(STDOUT_FILENO))
{
    std::fflush(stdout);
    if (!oFile.open() || iBefore < 0 || dup2(oFile.handle(), STDOUT_FILENO) < 0)
        qFatal("standard output can't be caught");
}

CStandardOutput::~CStandardOutput()
{
    giveBack();
}

void CStandardOutput::giveBack()
{
    if (iBefore < 0)
        return;
    std::fflush(stdout);
    dup2(iBefore, STDOUT_FILENO);
    close(iBefore);
    iBefore = -1;
}

QStringList CStandardOutput::lines()
{
    giveBack();
    oFile.seek(0);
    QStringList slLines = QString::fromUtf8(oFile.readAll()).split(QLatin1Char('\n'));
    if (slLines.last().isEmpty())
        slLines.removeLast();
    else
        slLines.last() += QStringLiteral(" (no line feed)");
    return slLines;
}
