// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHandover.h"

#include "workerloop.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

CPlainHandover::CPlainHandover(std::function<int(int)> answerer)
    : answer(std::move(answerer))
    , iEvents(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , oThread([this] { run(); })
{
}

CPlainHandover::~CPlainHandover()
{
    {
        const std::lock_guard<std::mutex> lock(oMutex);
        bEnd = true;
    }
    wake();
    oThread.join();
    close(iEvents);
}

void CPlainHandover::wake() const
{
    if (eventfd_write(iEvents, 1) != 0)
        workerloop::fail("can't wake the other thread");
}

int CPlainHandover::ask(int iNewQuestion)
{
    {
        const std::lock_guard<std::mutex> lock(oMutex);
        bAnswered = false;
        iQuestion = iNewQuestion;
    }
    wake();
    std::unique_lock<std::mutex> lock(oMutex);
    oAnswered.wait(lock, [this] { return bAnswered; });
    return iAnswer;
}

void CPlainHandover::run()
{
    pollfd oPoll{iEvents, POLLIN, 0};
    for (;;) {
        poll(&oPoll, 1, -1);
        eventfd_t uEvents = 0;
        eventfd_read(iEvents, &uEvents);
        const std::lock_guard<std::mutex> lock(oMutex);
        if (bEnd)
            return;
        iAnswer = answer(iQuestion);
        bAnswered = true;
        oAnswered.notify_all();
    }
}
