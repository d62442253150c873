// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// Loaded by a host, it makes that one with a Qt application object of its own.

#include <QCoreApplication>

namespace {

char acName[] = "host";
char* apcArguments[] = {acName, nullptr};
int iArguments = 1;
const QCoreApplication oApplication(iArguments, apcArguments);

} // namespace
