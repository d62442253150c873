// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CCommandPost.h"

#include "CCommandEvent.h"
#include "eventorder.h"

#include <QCoreApplication>

void CCommandPost::open(QObject* pWindow)
{
    const std::lock_guard<std::mutex> lock(oMutex);
    pReceiver = pWindow;
}

void CCommandPost::close()
{
    open(nullptr);
}

void CCommandPost::closeWith(int iCommand)
{
    const std::lock_guard<std::mutex> lock(oMutex);
    postLocked(iCommand, nullptr, nullptr);
    pReceiver = nullptr;
}

bool CCommandPost::post(int iCommand, void* pData, std::shared_ptr<const void> pOwned)
{
    const std::lock_guard<std::mutex> lock(oMutex);
    return postLocked(iCommand, pData, std::move(pOwned));
}

bool CCommandPost::postLocked(int iCommand, void* pData, std::shared_ptr<const void> pOwned)
{
    if (pReceiver == nullptr)
        return false;
    auto* pEvent = new CCommandEvent(iCommand, pData, std::move(pOwned));
    eventorder::posted(pEvent);
    QCoreApplication::postEvent(pReceiver, pEvent);
    return true;
}
