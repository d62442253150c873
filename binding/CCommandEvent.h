// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QEvent>

#include <memory>
#include <utility>

/// A host call on its way to the browser window.
class CCommandEvent : public QEvent
{
public:
    /// `pData` is the payload that the command's number calls for (see commands.h). `pOwned` is what the
    /// event keeps alive until it has been handled: set where the payload is the module's own memory.
    /// [any-thread]
    CCommandEvent(int iCommand, void* pData, std::shared_ptr<const void> pOwned)
        : QEvent(QEvent::Type(iCommand))
        , pPayload(pData)
        , pKept(std::move(pOwned))
    {
    }

    template <typename T> T* payload() const { return static_cast<T*>(pPayload); }

private:
    void* pPayload;
    std::shared_ptr<const void> pKept;
};
