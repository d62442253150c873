// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTextView.h"

CTextView::CTextView(QWidget* pParent, const QString& sName)
    : QTextEdit(pParent)
{
    setObjectName(sName);
    setReadOnly(true);
}

void CTextView::showText(const QString& sText)
{
    sGivenText = sText;
    // Without this, plain text would take over the format at the cursor of the rich text before it.
    document()->clear();
    setText(sText);
}
