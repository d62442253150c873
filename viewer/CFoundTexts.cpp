// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CFoundTexts.h"

#include <QTextBlock>
#include <QTextEdit>

#include <algorithm>

namespace {

// Readable whatever the palette.
QTextCharFormat markedFormat()
{
    QTextCharFormat oFormat;
    oFormat.setBackground(QColor(255, 224, 102));
    oFormat.setForeground(Qt::black);
    return oFormat;
}

} // namespace

CFoundTexts::CFoundTexts(QTextEdit& oItsEditor)
    : oEditor(oItsEditor)
{
}

void CFoundTexts::search(const QString& sText)
{
    viPlaces.clear();
    iLength = int(sText.size());
    for (QTextBlock oLine = oEditor.document()->begin(); oLine.isValid() && iLength > 0;
         oLine = oLine.next()) {
        const QString sLine = oLine.text().replace(QChar::Nbsp, QLatin1Char(' '));
        for (qsizetype i = sLine.indexOf(sText, 0, Qt::CaseInsensitive); i >= 0;
             i = sLine.indexOf(sText, i + iLength, Qt::CaseInsensitive))
            viPlaces.push_back(oLine.position() + int(i));
    }
    mark();
}

int CFoundTexts::firstFrom(int iPosition) const
{
    return int(std::lower_bound(viPlaces.begin(), viPlaces.end(), iPosition) - viPlaces.begin());
}

int CFoundTexts::current() const
{
    const QTextCursor oCursor = oEditor.textCursor();
    const int iFound = firstFrom(oCursor.selectionStart());
    const bool bSelected = iFound < count() && viPlaces[std::size_t(iFound)] == oCursor.selectionStart()
        && oCursor.selectionEnd() - oCursor.selectionStart() == iLength;
    return bSelected ? iFound + 1 : 0;
}

void CFoundTexts::mark()
{
    const QRect oSeen = oEditor.viewport()->rect();
    const int iFirst = oEditor.cursorForPosition(oSeen.topLeft()).position();
    const int iLast = oEditor.cursorForPosition(oSeen.bottomRight()).position();
    const QTextCharFormat oFormat = markedFormat();
    QList<QTextEdit::ExtraSelection> lMarks;
    for (int i = firstFrom(iFirst - iLength); i < count() && viPlaces[std::size_t(i)] <= iLast; i++) {
        QTextCursor oPlace(oEditor.document());
        oPlace.setPosition(viPlaces[std::size_t(i)]);
        oPlace.setPosition(viPlaces[std::size_t(i)] + iLength, QTextCursor::KeepAnchor);
        lMarks.append({oPlace, oFormat});
    }
    oEditor.setExtraSelections(lMarks);
}
