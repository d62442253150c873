// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CDateField.h"

CDateField::CDateField(QWidget* pParent)
    : QDateTimeEdit(pParent)
{
    setDisplayFormat(QStringLiteral("dd.MM.yyyy HH:mm:ss"));
    connect(this, &QDateTimeEdit::dateTimeChanged, this, [this] { bTouched = true; });
}
