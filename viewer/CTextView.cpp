// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTextView.h"

#include <QStyle>
#include <QUrl>

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

QVariant CTextView::loadResource(int iType, const QUrl& oAddress)
{
    if (oAddress.scheme() == QStringLiteral("data"))
        return QTextEdit::loadResource(iType, oAddress);
    // Not null: the document would then look for the file itself.
    if (iType == QTextDocument::ImageResource)
        return style()->standardPixmap(QStyle::SP_FileIcon);
    return QByteArray();
}
