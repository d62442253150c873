// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "binding/forkguard.h"

#include "binding/exitguard.h"

#include <QTest>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

// The interface between the compiler's run-time library and the C library.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" int __cxa_atexit(void (*pfHandler)(void*), void* pArgument, void* pOwner);
extern "C" void __cxa_finalize(void* pOwner);
// NOLINTEND(bugprone-reserved-identifier)

namespace {

constexpr unsigned LongestLife = 20; // seconds

void doNothing(void* /*pArgument*/) { }

// What the making of Qt's shared objects does many times.
void registerHandlers()
{
    static char cOwner;
    for (int i = 0; i < 100; i++)
        __cxa_atexit(doNothing, nullptr, &cOwner);
    __cxa_finalize(&cOwner);
}

/// A thread that registers exit handlers all the time, as work.
class CWorker
{
public:
    CWorker()
        : oThread([this] {
            while (!bEnd) {
                forkguard::beginWork();
                registerHandlers();
                forkguard::endWork();
            }
        })
    {
    }
    CWorker(const CWorker&) = delete;
    CWorker& operator=(const CWorker&) = delete;
    ~CWorker()
    {
        bEnd = true;
        oThread.join();
    }

private:
    std::atomic<bool> bEnd = false;
    std::thread oThread;
};

// The child's exit code; -1 if it didn't live to its end.
int endOfChild(const std::function<void()>& live)
{
    const pid_t iChild = fork();
    if (iChild == 0) {
        alarm(LongestLife);
        live();
        std::exit(99);
    }
    int iStatus = 0;
    waitpid(iChild, &iStatus, 0);
    return WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : -1;
}

} // namespace

/// Exit handlers and children of a process with several threads.
class TestForkguard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    static void initTestCase() { forkguard::guardChildren(); }

    void aChildEndsWhileAnotherThreadRegistersHandlers()
    {
        const CWorker worker;
        for (int i = 0; i < 300; i++)
            QCOMPARE(endOfChild([] { std::exit(5); }), 5);
    }

    void aForkInTheMidstOfWorkDoesNotWaitForItsEnd()
    {
        forkguard::beginWork();
        QCOMPARE(endOfChild([] { std::exit(5); }), 5);
        forkguard::endWork();
    }

    void aForkGoesOnWhileWorkSleeps()
    {
        forkguard::beginWork();
        int iCode = 0;
        std::thread([&] { iCode = endOfChild([] { std::exit(7); }); }).join();
        forkguard::endWork();
        QCOMPARE(iCode, 7);
    }

    void aForkGoesOnThoughWorkHasNoEnd()
    {
        forkguard::beginWork();
        std::atomic<int> iCode = 0;
        std::thread oForking([&] { iCode = endOfChild([] { std::exit(7); }); });
        while (iCode == 0) { } // busy, not asleep
        oForking.join();
        forkguard::endWork();
        QCOMPARE(iCode.load(), 7);
    }

    void aChildIsKnown()
    {
        QVERIFY(!exitguard::isChild());
        QCOMPARE(endOfChild([] { std::exit(exitguard::isChild() ? 1 : 0); }), 1);
    }

    void aChildsOwnChildEndsToo()
    {
        const CWorker worker;
        QCOMPARE(endOfChild([] { std::exit(endOfChild([] { std::exit(8); }) + 1); }), 9);
    }

    void handlersOfTheParentDoNotRunInAChild()
    {
        static bool bOfParent = false;
        std::atexit([] {
            if (bOfParent)
                _exit(10);
        });
        QCOMPARE(endOfChild([] {
            bOfParent = true;
            std::exit(5);
        }),
            5);
    }

    void handlersOfTheChildRun()
    {
        QCOMPARE(endOfChild([] {
            std::atexit([] { _exit(11); });
            std::exit(5);
        }),
            11);
    }
};

QTEST_APPLESS_MAIN(TestForkguard)
#include "tst_forkguard.moc"
