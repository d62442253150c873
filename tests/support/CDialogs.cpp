// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CDialogs.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QInputDialog>
#include <QMessageBox>

namespace {

QString textOf(const QDialog& oDialog)
{
    if (const auto* pBox = qobject_cast<const QMessageBox*>(&oDialog))
        return pBox->text();
    if (const auto* pInput = qobject_cast<const QInputDialog*>(&oDialog))
        return pInput->labelText() + QStringLiteral(" [%1]").arg(pInput->textValue());
    return QStringLiteral("(another kind of dialog)");
}

} // namespace

CDialogs::CDialogs(std::function<void(QDialog&)> end)
    : endDialog(end ? std::move(end) : [](QDialog& oDialog) { oDialog.accept(); })
{
    qApp->installEventFilter(this);
}

// Not at once: the dialog's own loop has not begun yet.
bool CDialogs::eventFilter(QObject* pObject, QEvent* pEvent)
{
    auto* pDialog = qobject_cast<QDialog*>(pObject);
    if (pDialog != nullptr && pEvent->type() == QEvent::Show) {
        slTexts << pDialog->windowTitle() + QStringLiteral(": ") + textOf(*pDialog);
        QMetaObject::invokeMethod(
            pDialog, [this, pDialog] { endDialog(*pDialog); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(pObject, pEvent);
}
