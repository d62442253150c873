// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnsweringThread.h"

#include "binding/CHandover.h"

#include <QTest>

#include <future>

namespace {

constexpr std::chrono::seconds LongestWait(30);

template <typename Result> bool isDone(const std::future<Result>& oFuture)
{
    return oFuture.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

template <typename Result> bool endsInTime(const std::future<Result>& oFuture)
{
    return oFuture.wait_for(LongestWait) == std::future_status::ready;
}

} // namespace

class TestHandover : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aQuestionReturnsWithItsAnswer()
    {
        CAnsweringThread oThread;
        oThread.oHandover.open();
        for (int i = 0; i < 200; i++)
            QCOMPARE(oThread.ask(i), i + 1);
    }

    void severalThreadsEachGetTheirOwnAnswer()
    {
        CAnsweringThread oThread;
        oThread.oHandover.open();
        std::vector<std::future<int>> vWrong;
        for (int iHost = 0; iHost < 4; iHost++)
            vWrong.push_back(std::async(std::launch::async, [&oThread, iHost] {
                int iWrong = 0;
                for (int i = iHost * 1000; i < iHost * 1000 + 200; i++)
                    iWrong += oThread.ask(i) == i + 1 ? 0 : 1;
                return iWrong;
            }));
        for (auto& oWrong : vWrong)
            QCOMPARE(oWrong.get(), 0);
    }

    void aSecondQuestionIsNotPostedBeforeTheFirstIsAnswered()
    {
        CHandover oHandover;
        oHandover.open();
        const CAnswer oAnswer(oHandover.flag(), oHandover.mutex(), oHandover.condition());
        std::atomic<int> iPosted = 0;
        const auto ask = [&] { oHandover.ask([&] { return ++iPosted > 0; }); };
        CSleeper oFirst(ask);
        oFirst.waitUntilAsleepOrDone();
        CSleeper oSecond(ask);
        oSecond.waitUntilAsleepOrDone();
        const int iPostedBefore = iPosted;
        while (!oFirst.isDone() || !oSecond.isDone())
            oAnswer.give([] {});
        QCOMPARE(iPostedBefore, 1);
        QCOMPARE(iPosted.load(), 2);
    }

    void aNewHandoverIsClosed()
    {
        CHandover oHandover;
        bool bPosted = false;
        oHandover.ask([&] { return bPosted = true; });
        QVERIFY(!bPosted);
    }

    void aQuestionThatCannotBePostedReturns()
    {
        CHandover oHandover;
        oHandover.open();
        int iPosted = 0;
        oHandover.ask([&] {
            iPosted++;
            return false;
        });
        QCOMPARE(iPosted, 1);
    }

    void aWakeUpWithoutAnAnswerDoesNotEndTheWait()
    {
        CHandover oHandover;
        oHandover.open();
        CSleeper oHost([&] { oHandover.ask([] { return true; }); });
        oHost.waitUntilAsleepOrDone();
        for (int i = 0; i < 100; i++) {
            pthread_cond_broadcast(oHandover.condition());
            oHost.waitUntilAsleepOrDone();
        }
        const bool bEndedEarly = oHost.isDone();
        CAnswer(oHandover.flag(), oHandover.mutex(), oHandover.condition()).give([] {});
        oHost.join();
        QVERIFY(!bEndedEarly);
    }

    void theAnsweringSideIsBlockedUntilItIsReleased()
    {
        CAnsweringThread oThread;
        oThread.oHandover.open();
        std::future<void> oNext;
        oThread.afterPosting = [&] { oNext = oThread.whenFree(); };
        QCOMPARE(oThread.ask(1, CHandover::After::WaitsForRelease), 2);
        oThread.waitUntilAsleepOr(oNext);
        QVERIFY(!isDone(oNext));
        oThread.oHandover.release();
        QVERIFY(endsInTime(oNext));
    }

    void aQuestionWaitsWhileAReleaseIsDue()
    {
        // given an answering side that is blocked by a first question
        CAnsweringThread oThread;
        oThread.oHandover.open();
        oThread.ask(1, CHandover::After::WaitsForRelease);
        // when a second thread asks
        std::atomic<bool> bReleased = false;
        std::atomic<bool> bAskedTooEarly = false;
        std::atomic<int> iAnswer = 0;
        CSleeper oSecond([&] {
            oThread.beforePosting = [&] { bAskedTooEarly = !bReleased; };
            iAnswer = oThread.ask(10);
        });
        oSecond.waitUntilAsleepOrDone();
        bReleased = true;
        oThread.oHandover.release();
        oSecond.join();
        // then it asks behind the release only
        QVERIFY(!bAskedTooEarly);
        QCOMPARE(iAnswer.load(), 11);
    }

    void aReleaseBeforeTheAskerHasWokenUpKeepsTheAnswer()
    {
        CHandover oHandover;
        oHandover.open();
        const CAnswer oAnswer(oHandover.flag(), oHandover.mutex(), oHandover.condition());
        // in the asker's own thread, so that it can't have woken up
        const auto oHost = std::async(std::launch::async, [&] {
            oHandover.ask(
                [&] {
                    oAnswer.give([] {});
                    oHandover.release();
                    return true;
                },
                CHandover::After::WaitsForRelease);
        });
        const bool bEnded = endsInTime(oHost);
        oHandover.abandon();
        QVERIFY(bEnded);
    }

    void aReleaseThatIsNotDueDoesNothing()
    {
        CAnsweringThread oThread;
        oThread.oHandover.open();
        oThread.oHandover.release();
        QCOMPARE(oThread.ask(1), 2);
        oThread.oHandover.release();
        QCOMPARE(*oThread.oHandover.flag(), 1);
        std::future<void> oNext;
        oThread.afterPosting = [&] { oNext = oThread.whenFree(); };
        QCOMPARE(oThread.ask(2, CHandover::After::WaitsForRelease), 3);
        oThread.waitUntilAsleepOr(oNext);
        QVERIFY(!isDone(oNext));
        oThread.oHandover.release();
        QVERIFY(endsInTime(oNext));
    }

    void closingReleasesTheAnsweringSide()
    {
        CAnsweringThread oThread;
        oThread.oHandover.open();
        oThread.ask(1, CHandover::After::WaitsForRelease);
        oThread.oHandover.close();
        QVERIFY(endsInTime(oThread.whenFree()));
    }

    void closingBeforeTheAskerHasWokenUpReleasesToo()
    {
        CAnsweringThread oThread;
        oThread.oHandover.open();
        oThread.beforePosting = [&] { oThread.oHandover.close(); };
        QCOMPARE(oThread.ask(1, CHandover::After::WaitsForRelease), 2);
        const auto oFree = oThread.whenFree();
        const bool bReleased = endsInTime(oFree);
        oThread.oHandover.abandon();
        QVERIFY(bReleased);
    }

    void closingFreesAQuestionThatWaitsForTheRelease()
    {
        CAnsweringThread oThread;
        oThread.oHandover.open();
        oThread.ask(1, CHandover::After::WaitsForRelease);
        int iAnswer = -1;
        CSleeper oSecond([&] { iAnswer = oThread.ask(10); });
        oSecond.waitUntilAsleepOrDone();
        oThread.oHandover.close();
        oSecond.join();
        QCOMPARE(iAnswer, 0); // never asked
    }

    void anOpenedHandoverAnswersAgain()
    {
        CAnsweringThread oThread;
        oThread.oHandover.open();
        oThread.oHandover.close();
        QCOMPARE(oThread.ask(1), 0);
        oThread.oHandover.open();
        QCOMPARE(oThread.ask(1), 2);
    }

    void anAbandonedQuestionReturnsWithoutAnAnswer()
    {
        CHandover oHandover;
        oHandover.open();
        CSleeper oHost([&] { oHandover.ask([] { return true; }); });
        oHost.waitUntilAsleepOrDone();
        QVERIFY(!oHost.isDone());
        oHandover.abandon();
        oHost.join();
    }

    void anAbandonedHandoverReleasesTheAnsweringSide()
    {
        CAnsweringThread oThread;
        oThread.oHandover.open();
        oThread.ask(1, CHandover::After::WaitsForRelease);
        oThread.oHandover.abandon();
        QVERIFY(endsInTime(oThread.whenFree()));
    }

    void anAbandonedHandoverStaysClosed()
    {
        CAnsweringThread oThread;
        oThread.oHandover.open();
        oThread.oHandover.abandon();
        oThread.oHandover.open();
        QCOMPARE(oThread.ask(1), 0);
    }
};

QTEST_GUILESS_MAIN(TestHandover)
#include "tst_handover.moc"
