// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QTextEdit>

/// A read-only text that remembers what it was given. [ui-thread]
class CTextView : public QTextEdit
{
    Q_OBJECT

public:
    CTextView(QWidget* pParent, const QString& sName);

    /// Replaces the whole content; rich text is recognised by its tags and leaves no format behind.
    void showText(const QString& sText);
    /// The text as it was given last, with its markup, which toPlainText() would drop.
    const QString& givenText() const { return sGivenText; }

protected:
    /// Loads nothing but what the text has in itself ("data:"): a text that comes from anywhere must neither
    /// read files, which may be endless or keep the window waiting, nor ask the network. A picture gets a
    /// sign.
    QVariant loadResource(int iType, const QUrl& oAddress) override;

private:
    QString sGivenText;
};
