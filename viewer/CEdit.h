// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMainWindow>

#include <memory>

class CFoundTexts;
class CTextView;

/// A window of its own with one document's text, and a find function. [ui-thread]
///
/// Ctrl+F asks for a text and selects its next occurrence after the cursor, whatever the letter case; F3 asks
/// again with the last text as default. There is no wrap-around. All occurrences are marked, and the caption
/// counts them. Closing hides the window and keeps it.
class CEdit : public QMainWindow
{
    Q_OBJECT

public:
    explicit CEdit(QWidget* parent = nullptr, const char* name = nullptr);
    ~CEdit() override;

    /// Names the document in the caption; by itself the viewer has none.
    void setTitle(const QString& sNewTitle);
    /// The first line of the text that has anything to read, with single blanks; may be empty.
    QString firstLine() const;

public Q_SLOTS:
    /// Replaces the whole content; rich text is recognised by its tags.
    void setText(QString sText);

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

private:
    QWidget* makeButtonRow();
    bool isFindKey(const QKeyEvent& oEvent) const;
    void askAndFind();
    void find(const QString& sText);
    void showFound(const QString& sText);
    void showCaption();

    CTextView* pTextEdit = nullptr;
    std::unique_ptr<CFoundTexts> pFound;
    QString sTitle;
    QString sLastSearch;
};
