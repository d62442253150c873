// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "weblink.h"

#include <QByteArray>
#include <QString>

#include <csignal>
#include <cstdlib>

namespace weblink {

// Deliberate: the address is not escaped. Test: tst_weblink, theAddressGoesInTwiceAsItStands.
QByteArray commandLine(const QString& sAddress)
{
    const QByteArray oAddress = sAddress.toUtf8();
    return "firefox -remote \"openURL(" + oAddress + ",new-tab)\"      || firefox \"" + oAddress + "\"";
}

void run(const QByteArray& oCommandLine)
{
    // This thread blocks all signals; the browser must not inherit that.
    sigset_t oNone;
    sigset_t oBefore;
    sigemptyset(&oNone);
    pthread_sigmask(SIG_SETMASK, &oNone, &oBefore);
    // Nobody asks whether the browser could be started.
    [[maybe_unused]] const int iStatus = std::system(oCommandLine.constData());
    pthread_sigmask(SIG_SETMASK, &oBefore, nullptr);
}

} // namespace weblink
