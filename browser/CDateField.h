// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDateTimeEdit>

class QCalendarWidget;

/// A date field that has no date until somebody sets one, by typing or from a calendar, which its sign, F4
/// and Alt+Down open. [ui-thread]
class CDateField : public QDateTimeEdit
{
    Q_OBJECT

public:
    explicit CDateField(QWidget* pParent = nullptr);

    /// The date and local time shown; null as long as nobody has changed the field.
    QDateTime chosen() const { return bTouched ? dateTime() : QDateTime(); }

    /// With room for the calendar's sign.
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    void addCalendarSign();
    void makeCalendar();
    void openCalendar();
    void pick(QDate oDay);

    bool bTouched = false;
    QWidget* pPopup = nullptr; ///< null until it is opened for the first time
    QCalendarWidget* pCalendar = nullptr; ///< in it
};
