// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <vector>

class QTextEdit;

/// All places of a text in an editor that show what was searched for. Marks those in sight, so that a long
/// text with many of them stays quick. [ui-thread]
class CFoundTexts
{
public:
    /// The editor must live as long.
    explicit CFoundTexts(QTextEdit& oItsEditor);

    /// Looks for a text from the beginning, whatever its letter case, as the editor's own search does, and
    /// marks it; an empty one marks nothing. To be called again when the editor has another content.
    void search(const QString& sText);
    /// Marks what has come into sight.
    void mark();

    int count() const { return int(viPlaces.size()); }
    /// The number, from 1, of the one that is selected; 0 if none is.
    int current() const;

private:
    int firstFrom(int iPosition) const;

    QTextEdit& oEditor;
    std::vector<int> viPlaces; ///< where they start in the document, ascending
    int iLength = 0; ///< of each
};
