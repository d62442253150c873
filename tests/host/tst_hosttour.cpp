// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "hostrun.h"
#include "tests/module/CScreen.h"
#include "tests/module/moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

const QString sModule = QStringLiteral(QTUTILS_MODULE);
const QString sTour = QStringLiteral("host/scripts/tour.qth");

QByteArray tour()
{
    QFile oFile(sTour);
    return oFile.open(QIODevice::ReadOnly) ? oFile.readAll() : QByteArray();
}

SRun check(const QString& sScript)
{
    return run({sModule, QStringLiteral("--check"), sScript});
}

} // namespace

/// The tour of the module, as a programmer reads it.
class TestHostTour : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        oServer.load(QStringLiteral("drafts.sql"));
    }

    void everythingPrintedIsWrittenInTheTour()
    {
        const SRun oRun = check(sTour);
        QCOMPARE(oRun.sError, QString());
        const QRegularExpression oAnswer(
            QStringLiteral("^[^#\n]*#=!?( |$)"), QRegularExpression::MultilineOption);
        const auto iAnswers = QString::fromUtf8(tour()).count(oAnswer);
        QCOMPARE(oRun.sOut, sTour + QStringLiteral(": answers as written: %1\n").arg(iAnswers));
        QCOMPARE(oRun.iCode, 0);
    }

    void everyCommandIsInTheTour()
    {
        const QString sList = run({QStringLiteral("--list"), sModule}).sOut;
        auto oSymbols = QRegularExpression(QStringLiteral(" nodeBrowser_(\\w+) ")).globalMatch(sList);
        int iCommands = 0;
        for (; oSymbols.hasNext(); iCommands++) {
            const QString sCommand = oSymbols.next().captured(1);
            const QRegularExpression oCall(
                QStringLiteral("^%1\\b").arg(sCommand), QRegularExpression::MultilineOption);
            QVERIFY2(oCall.match(QString::fromUtf8(tour())).hasMatch(), qPrintable(sCommand));
        }
        QCOMPARE(iCommands, 14);
    }

    void anotherAnswerInACopyIsFound()
    {
        // given
        QByteArray oScript = tour();
        const QByteArray oRight = "#= piNumRows = 5";
        const qsizetype iPlace = oScript.indexOf(oRight);
        QVERIFY(iPlace > 0);
        oScript.replace(iPlace, oRight.size(), "#= piNumRows = 6");
        QFile oCopy(oFolder.filePath(QStringLiteral("copy.qth")));
        QVERIFY(oCopy.open(QIODevice::WriteOnly));
        oCopy.write(oScript);
        oCopy.close();
        // when
        const SRun oRun = check(oCopy.fileName());
        // then
        QCOMPARE(oRun.sError,
            QStringLiteral("%1:%2: wanted \"piNumRows = 6\", got \"piNumRows = 5\"\n")
                .arg(oCopy.fileName())
                .arg(oScript.left(iPlace).count('\n') + 1));
        QCOMPARE(oRun.iCode, 1);
    }

    void theWindowIsSeenFromShowToTheEnd()
    {
        // given
        const QByteArray oScript = tour();
        const qsizetype iShow = oScript.indexOf("\nshow\nshow\n");
        const qsizetype iHide = oScript.indexOf("\nhideTable\n");
        const qsizetype iSelect = oScript.indexOf("\nselect ", iHide);
        QVERIFY(0 < iShow && iShow < iHide && iHide < iSelect);
        QProcess oHost;
        start(oHost, {sModule, QStringLiteral("--interactive")});
        // when: every command before
        oHost.write(oScript.left(iShow) + "\n.echo hidden\n");
        QVERIFY(waitForOutput(oHost, "hidden\n"));
        // then
        QCOMPARE(oScreen.shown(), QByteArrayList());
        // when
        oHost.write(oScript.mid(iShow, iHide - iShow) + '\n');
        // then
        QTUTILS_WAIT_FOR(oScreen.isShown("Ombrel") && oScreen.pixels(Green) > 5000);
        // when: up to the next selection, which takes the colours away
        oHost.write(oScript.mid(iHide, iSelect - iHide) + '\n');
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(Green) == 0);
        QCOMPARE(oScreen.shown(), QByteArrayList({"Ombrel"}));
        // when
        oHost.write(oScript.mid(iSelect));
        // then
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        QCOMPARE(finish(oHost).iCode, 0);
    }

private:
    static constexpr QRgb Green = qRgb(0, 255, 0); // of the rows that are shown

    CPrivateServer oServer;
    CScreen oScreen;
    QTemporaryDir oFolder;
};

QTUTILS_MODULE_TEST_MAIN(TestHostTour)
#include "tst_hosttour.moc"
