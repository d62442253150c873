// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CDateField.h"

#include <QAction>
#include <QBoxLayout>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScreen>

namespace {

constexpr QSize RoomForSign(24, 0);

// A leaf of a calendar, in the text's colour.
QIcon calendarSign(const QPalette& oPalette, qreal fScale)
{
    constexpr int Size = 16;
    QPixmap oSign(QSize(Size, Size) * fScale);
    oSign.setDevicePixelRatio(fScale);
    oSign.fill(Qt::transparent);
    QPainter oPainter(&oSign);
    const QColor oColor = oPalette.color(QPalette::Text);
    oPainter.setPen(oColor);
    oPainter.drawRect(QRectF(2.5, 3.5, 11, 10));
    oPainter.fillRect(QRectF(2.5, 3.5, 11, 3), oColor);
    for (int iDay = 0; iDay < 6; iDay++)
        oPainter.fillRect(QRectF(4.5 + 3 * (iDay % 3), 8.5 + 3 * int(iDay / 3), 1.5, 1.5), oColor);
    return oSign;
}

} // namespace

CDateField::CDateField(QWidget* pParent)
    : QDateTimeEdit(pParent)
{
    setDisplayFormat(QStringLiteral("dd.MM.yyyy HH:mm:ss"));
    connect(this, &QDateTimeEdit::dateTimeChanged, this, [this] { bTouched = true; });
    lineEdit()->installEventFilter(this);
    addCalendarSign();
}

void CDateField::addCalendarSign()
{
    QAction* pOpen =
        lineEdit()->addAction(calendarSign(palette(), devicePixelRatioF()), QLineEdit::TrailingPosition);
    pOpen->setToolTip(QStringLiteral("Pick a day (F4)"));
    connect(pOpen, &QAction::triggered, this, &CDateField::openCalendar);
}

QSize CDateField::sizeHint() const
{
    return QDateTimeEdit::sizeHint() + RoomForSign;
}

QSize CDateField::minimumSizeHint() const
{
    return QDateTimeEdit::minimumSizeHint() + RoomForSign;
}

void CDateField::makeCalendar()
{
    pPopup = new QFrame(this, Qt::Popup);
    pPopup->setObjectName(QStringLiteral("calendar"));
    auto* pLayout = new QVBoxLayout(pPopup);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pCalendar = new QCalendarWidget(pPopup);
    pLayout->addWidget(pCalendar);
    pCalendar->setDateRange(minimumDate(), maximumDate());
    connect(pCalendar, &QCalendarWidget::clicked, this, &CDateField::pick);
    connect(pCalendar, &QCalendarWidget::activated, this, &CDateField::pick);
}

// Below the field, or where the screen has room.
void CDateField::openCalendar()
{
    if (pPopup == nullptr)
        makeCalendar();
    interpretText(); // what has been typed counts
    pCalendar->setSelectedDate(date());
    const QRect oRoom = screen()->availableGeometry();
    const QSize oSize = pPopup->sizeHint();
    const QPoint oBelow = mapToGlobal(rect().bottomLeft());
    const int iY = oBelow.y() + oSize.height() > oRoom.bottom() ? mapToGlobal(QPoint()).y() - oSize.height()
                                                                : oBelow.y();
    pPopup->move(
        std::clamp(oBelow.x(), oRoom.left(), std::max(oRoom.left(), oRoom.right() - oSize.width())), iY);
    pPopup->show();
    pCalendar->setFocus();
}

// The time stays. A day that the field shows already is a choice, too, as long as nothing has been chosen.
void CDateField::pick(QDate oDay)
{
    pPopup->hide();
    setFocus();
    if (oDay != date())
        setDate(oDay);
    else if (!bTouched)
        Q_EMIT dateTimeChanged(dateTime());
}

void CDateField::keyPressEvent(QKeyEvent* pEvent)
{
    const bool bAltDown = pEvent->key() == Qt::Key_Down && pEvent->modifiers() == Qt::AltModifier;
    if (bAltDown || (pEvent->key() == Qt::Key_F4 && pEvent->modifiers() == Qt::NoModifier))
        openCalendar();
    else
        QDateTimeEdit::keyPressEvent(pEvent);
}

// A section that is clicked is ready for typing. Qt only puts the cursor there, and a section that is full
// takes no digit.
bool CDateField::eventFilter(QObject* pObject, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::MouseButtonRelease && !lineEdit()->hasSelectedText())
        setSelectedSection(currentSection());
    return QDateTimeEdit::eventFilter(pObject, pEvent);
}
