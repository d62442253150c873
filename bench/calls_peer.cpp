// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// What one would otherwise take: the toolkit's call that blocks until the other thread has answered. The
// argument is the answer.

#include "callrounds.h"
#include "onecore.h"

#include <QApplication>
#include <QThread>

int main(int iArguments, char** apcArguments)
{
    stayOnOneCore();
    QApplication oApplication(iArguments, apcArguments);
    const int iRows = std::stoi(apcArguments[1]);
    QThread* pHost = QThread::create([&] {
        serveCalls([&] {
            int iAnswer = 0;
            QMetaObject::invokeMethod(
                &oApplication, [&] { iAnswer = iRows; }, Qt::BlockingQueuedConnection);
            return iAnswer;
        });
        QApplication::quit();
    });
    pHost->start();
    QApplication::exec();
    pHost->wait();
    delete pHost;
    return 0;
}
