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

// Whether a child that lives so ends, and with that code. The thread sanitizer calls handlers without the
// code.
bool endsWith(int iCode, const std::function<void()>& live)
{
#ifdef __SANITIZE_THREAD__
    constexpr bool HasCode = false;
#else
    constexpr bool HasCode = true;
#endif
    const pid_t iChild = fork();
    if (iChild == 0) {
        alarm(LongestLife);
        live();
        std::exit(99);
    }
    int iStatus = 0;
    waitpid(iChild, &iStatus, 0);
    return WIFEXITED(iStatus) && (!HasCode || WEXITSTATUS(iStatus) == iCode);
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
            QVERIFY(endsWith(5, [] { std::exit(5); }));
    }

    void aForkInTheMidstOfWorkDoesNotWaitForItsEnd()
    {
        forkguard::beginWork();
        QVERIFY(endsWith(5, [] { std::exit(5); }));
        forkguard::endWork();
    }

    void aForkGoesOnWhileWorkSleeps()
    {
        bool bEnds = false;
        forkguard::beginWork();
        std::thread([&] { bEnds = endsWith(7, [] { std::exit(7); }); }).join();
        forkguard::endWork();
        QVERIFY(bEnds);
    }

    void aForkGoesOnThoughWorkHasNoEnd()
    {
        std::atomic<bool> bDone = false;
        bool bEnds = false;
        forkguard::beginWork();
        std::thread oForking([&] {
            bEnds = endsWith(7, [] { std::exit(7); });
            bDone = true;
        });
        while (!bDone) { } // busy, not asleep
        oForking.join();
        forkguard::endWork();
        QVERIFY(bEnds);
    }

    void aChildIsKnown()
    {
        QVERIFY(!exitguard::isChild());
        QVERIFY(endsWith(1, [] { _exit(exitguard::isChild() ? 1 : 0); }));
    }

    void aChildsOwnChildEndsToo()
    {
        const CWorker worker;
        QVERIFY(endsWith(9, [] { std::exit(endsWith(8, [] { std::exit(8); }) ? 9 : 1); }));
    }

    void handlersOfTheParentDoNotRunInAChild()
    {
        static bool bOfParent = false;
        std::atexit([] {
            if (bOfParent)
                _exit(10);
        });
        QVERIFY(endsWith(5, [] {
            bOfParent = true;
            std::exit(5);
        }));
    }

    void handlersOfTheChildRun()
    {
        QVERIFY(endsWith(11, [] {
            std::atexit([] { _exit(11); });
            std::exit(5);
        }));
    }
};

QTEST_APPLESS_MAIN(TestForkguard)
#include "tst_forkguard.moc"
