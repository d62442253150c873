// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

class QDialog;

/// Ends every dialog that opens during its lifetime, and remembers what it said. Make it before the action
/// that opens one.
class CDialogs : public QObject
{
    Q_OBJECT

public:
    /// `end` gets each dialog once it is shown; it must end it. By default the dialog is accepted.
    explicit CDialogs(std::function<void(QDialog&)> end = {});

    /// "title: text" of each dialog so far.
    const QStringList& texts() const { return slTexts; }

    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

private:
    std::function<void(QDialog&)> endDialog;
    QStringList slTexts;
};
