// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "table/weblink.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

class TestWebLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theAddressGoesInTwiceAsItStands_data()
    {
        QTest::addColumn<QString>("sAddress");
        QTest::addColumn<QByteArray>("oCommandLine");
        QTest::newRow("address") << u"abc"_s
                                 << "firefox -remote \"openURL(abc,new-tab)\"      || firefox \"abc\""_ba;
        QTest::newRow("nothing") << u""_s << "firefox -remote \"openURL(,new-tab)\"      || firefox \"\""_ba;
        QTest::newRow("quotation mark")
            << u"a\"; b \"c"_s
            << "firefox -remote \"openURL(a\"; b \"c,new-tab)\"      || firefox \"a\"; b \"c\""_ba;
        QTest::newRow("shell characters")
            << u"$(x)`y`\\%1"_s
            << "firefox -remote \"openURL($(x)`y`\\%1,new-tab)\"      || firefox \"$(x)`y`\\%1\""_ba;
        QTest::newRow("other scripts")
            << u"http://ä/雪"_s
            << "firefox -remote \"openURL(http://ä/雪,new-tab)\"      || firefox \"http://ä/雪\""_ba;
    }

    void theAddressGoesInTwiceAsItStands()
    {
        QFETCH(QString, sAddress);
        QTEST(weblink::commandLine(sAddress), "oCommandLine");
    }

    void aCommandHasEndedWhenRunReturns()
    {
        const QTemporaryDir oFolder;
        const QString sFile = oFolder.filePath(u"done"_s);
        weblink::run(
            "i=0; while [ $i -lt 20000 ]; do i=$((i+1)); done; echo done > '" + sFile.toUtf8() + '\'');
        QVERIFY(QFile::exists(sFile));
    }

    void aFailingCommandIsNoError()
    {
        weblink::run("exit 3");
        weblink::run("kill -9 $$");
    }

    void aCommandBlocksNoSignals()
    {
        // given a thread that blocks all signals, as the user interface's does
        sigset_t oAll;
        sigset_t oBefore;
        sigfillset(&oAll);
        pthread_sigmask(SIG_SETMASK, &oAll, &oBefore);
        // when it runs a command that waits until its caller blocks only what the C library blocks for itself
        const QTemporaryDir oFolder;
        const QString sFile = oFolder.filePath(u"seen"_s);
        weblink::run("i=0; until grep -q 'SigBlk:.*" + mask({SIGCHLD})
            + "' /proc/$PPID/status; do i=$((i+1));" + " [ $i -lt 200 ] || exit; done; touch '"
            + sFile.toUtf8() + '\'');
        sigset_t oAfter;
        pthread_sigmask(SIG_SETMASK, &oBefore, &oAfter);
        // then that was so, and all is blocked again
        QVERIFY(QFile::exists(sFile));
        QCOMPARE(sigismember(&oAfter, SIGTERM), 1);
    }

private:
    /// As the kernel writes a set of signals: a bit for each, in hexadecimal digits.
    static QByteArray mask(const QList<int>& liSignals)
    {
        quint64 uMask = 0;
        for (const int iSignal : liSignals)
            uMask |= quint64(1) << (iSignal - 1);
        return QByteArray::number(uMask, 16).rightJustified(16, '0');
    }
};

QTEST_GUILESS_MAIN(TestWebLink)
#include "tst_weblink.moc"
