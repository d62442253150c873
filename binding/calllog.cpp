// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "calllog.h"

#include "exitguard.h"

#include <QLoggingCategory>

#include <atomic>
#include <cstdarg>

namespace calllog {
namespace {

std::atomic<const QLoggingCategory*> pCategory = nullptr;

} // namespace

// The category is never destroyed: hosts may call while the process ends.
void open()
{
    static const auto* pMade = new QLoggingCategory("qtutils.host", QtWarningMsg);
    pCategory = pMade;
}

void tell(const char* pcFormat, ...)
{
    const QLoggingCategory* pOpen = pCategory;
    if (pOpen == nullptr || !pOpen->isDebugEnabled() || exitguard::isChild())
        return;
    va_list aArguments;
    va_start(aArguments, pcFormat);
    const QString sCall = QString::vasprintf(pcFormat, aArguments);
    va_end(aArguments);
    QMessageLogger(nullptr, 0, nullptr, pOpen->categoryName()).debug(*pOpen, "%s", qUtf8Printable(sCall));
}

} // namespace calllog
