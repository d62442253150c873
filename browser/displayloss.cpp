// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "displayloss.h"

#include <QString>

namespace displayloss {
namespace {

QtMessageHandler pfBefore = nullptr;
void (*pfOnLoss)() = nullptr;

// Warnings of questions that a screen reader has about what has gone meanwhile, which is nobody's mistake.
bool isAboutGoneParts(const QMessageLogContext& oContext)
{
    return qstrcmp(oContext.category, "qt.accessibility.atspi") == 0;
}

// Qt says so in this line, and then calls exit(). There is no signal before it.
void handle(QtMsgType eType, const QMessageLogContext& oContext, const QString& sMessage)
{
    if (isAboutGoneParts(oContext))
        return;
    pfBefore(eType, oContext, sMessage);
    if (sMessage.startsWith(QStringLiteral("The X11 connection broke")))
        pfOnLoss();
}

} // namespace

void guard(void (*pfLost)())
{
    pfOnLoss = pfLost;
    pfBefore = qInstallMessageHandler(handle);
}

} // namespace displayloss
