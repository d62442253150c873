// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDateTimeEdit>

/// A date field that has no date until somebody sets one. [ui-thread]
class CDateField : public QDateTimeEdit
{
    Q_OBJECT

public:
    explicit CDateField(QWidget* pParent = nullptr);

    /// The date and local time shown; null as long as nobody has changed the field.
    QDateTime chosen() const { return bTouched ? dateTime() : QDateTime(); }

    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

private:
    bool bTouched = false;
};
