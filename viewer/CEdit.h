// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMainWindow>

class CTextView;

/// A window of its own with one document's text, and a find function. [ui-thread]
///
/// Ctrl+F asks for a text and selects its next occurrence after the cursor, whatever the letter case; F3 asks
/// again with the last text as default. There is no wrap-around. Closing hides the window and keeps it.
class CEdit : public QMainWindow
{
    Q_OBJECT

public:
    explicit CEdit(QWidget* parent = nullptr, const char* name = nullptr);

public Q_SLOTS:
    /// Replaces the whole content; rich text is recognised by its tags.
    void setText(QString sText);

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    QWidget* makeButtonRow();
    bool isFindKey(const QKeyEvent& oEvent) const;
    void askAndFind();
    void find(const QString& sText);

    CTextView* pTextEdit = nullptr;
    QString sLastSearch;
};
