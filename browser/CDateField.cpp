// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CDateField.h"

#include <QEvent>
#include <QLineEdit>

CDateField::CDateField(QWidget* pParent)
    : QDateTimeEdit(pParent)
{
    setDisplayFormat(QStringLiteral("dd.MM.yyyy HH:mm:ss"));
    connect(this, &QDateTimeEdit::dateTimeChanged, this, [this] { bTouched = true; });
    lineEdit()->installEventFilter(this);
}

// A section that is clicked is ready for typing. Qt only puts the cursor there, and a section that is full
// takes no digit.
bool CDateField::eventFilter(QObject* pObject, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::MouseButtonRelease && !lineEdit()->hasSelectedText())
        setSelectedSection(currentSection());
    return QDateTimeEdit::eventFilter(pObject, pEvent);
}
