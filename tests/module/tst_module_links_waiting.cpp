// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "CCover.h"
#include "CFakeBrowser.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <sys/syscall.h>

using State = CFakeBrowser::State;

/// The window while a browser that it has started is open. Node 1's documents by date: 4, 5, 1, 2, 3.
class TestModuleLinksWaiting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void aHostsQuestionWaits()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        CFakeBrowser oBrowser(oHost, State::Ready);
        openAddress(oAnalyst, oBrowser);
        // when
        const int iThread = oHost.command({"start", "1", "call", "getNumRows", "oi:1"}).toInt();
        // then
        QTUTILS_WAIT_FOR(oHost.sleepsIn(iThread, SYS_futex));
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        // when
        oBrowser.close();
        // then
        QCOMPARE(oHost.command({"join", "1"}), "5");
        QCOMPARE(oHost.numRows(), 5);
    }

    void questionsOfSeveralThreadsAreAllAnswered()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        CFakeBrowser oBrowser(oHost, State::Ready);
        openAddress(oAnalyst, oBrowser);
        const QList<QByteArrayList> lQuestions{{"getNumRows", "oi:1"}, {"getFirstDateInSelection", "ot:20"},
            {"getFirstDateInFrame", "oi:1"}, {"getNumRows", "oi:1"}};
        // when
        for (int i = 0; i < lQuestions.size(); i++) {
            const int iThread =
                oHost.command(QByteArrayList{"start", QByteArray::number(i), "call"} + lQuestions[i]).toInt();
            QTUTILS_WAIT_FOR(oHost.sleepsIn(iThread, SYS_futex));
        }
        for (int i = 0; i < lQuestions.size(); i++)
            QCOMPARE(oHost.command({"finished", QByteArray::number(i)}), "no");
        oBrowser.close();
        // then
        QCOMPARE(oHost.command({"join", "0"}), "5");
        QCOMPARE(oHost.command({"join", "1"}), "2005-02-27T23:59:59");
        QCOMPARE(oHost.command({"join", "2"}), "0");
        QCOMPARE(oHost.command({"join", "3"}), "5");
    }

    void commandsTakeEffectInTheirOrderAfterwards()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        CFakeBrowser oBrowser(oHost, State::Ready);
        openAddress(oAnalyst, oBrowser);
        oServer.startLog();
        // when
        oHost.call("select", {"i:2"});
        oHost.call("setRowColors", {"c:2x120,255,255"});
        oHost.call("markRow", {"k:2006-05-11 11:00:00", "i:1"});
        const int iThread = oHost.command({"start", "1", "call", "getNumRows", "oi:1"}).toInt();
        // then
        QTUTILS_WAIT_FOR(oHost.sleepsIn(iThread, SYS_futex));
        QCOMPARE(oServer.log(), QStringList());
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        // when
        oBrowser.close();
        // then
        QCOMPARE(oHost.command({"join", "1"}), "2");
        QCOMPARE(oAnalyst.currentCell(), "1 0");
        QCOMPARE(oServer.log().size(), 1);
        QTUTILS_WAIT_FOR(oScreen.pixels(Green) > 500);
    }

    void keysAndClicksTakeEffectAfterwards()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        CFakeBrowser oBrowser(oHost, State::Ready);
        openAddress(oAnalyst, oBrowser);
        const QRect oTitle = lTitles.last();
        // when
        oScreen.click(oTitle.center());
        oScreen.press({"Up", "Up", "Right"});
        oBrowser.close();
        // then
        QCOMPARE(oAnalyst.currentCell(), "2 2");
        QCOMPARE(oAnalyst.text("texteditor"), QByteArray("Es schneit in Zürich."));
    }

    void everyDoubleClickOpensItsAddressAfterwards()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        CFakeBrowser oBrowser(oHost, State::Ready);
        openAddress(oAnalyst, oBrowser);
        // when
        oScreen.doubleClick(lAddresses[1].center());
        oScreen.doubleClick(lAddresses[2].center());
        // then
        QCOMPARE(oBrowser.calls(), started("4"));
        // when
        oBrowser.close();
        // then
        QTUTILS_WAIT_FOR(oBrowser.calls() == started("4") + started("5"));
        // when
        oBrowser.close();
        // then
        QTUTILS_WAIT_FOR(oBrowser.calls() == started("4") + started("5") + started("1"));
        // when
        oBrowser.close();
        // then
        QCOMPARE(oAnalyst.viewers().size(), 3);
        QCOMPARE(oAnalyst.text("0/fullEdit"), QByteArray("Niemand wurde verletzt."));
        QCOMPARE(oAnalyst.text("1/fullEdit"), QByteArray("Die Brücke ist offen."));
        QCOMPARE(oAnalyst.text("2/fullEdit"), QByteArray("Es schneit in Zürich."));
    }

    void theFullTextComesAfterTheBrowser()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        CFakeBrowser oBrowser(oHost, State::Ready);
        openAddress(oAnalyst, oBrowser);
        // then
        QCOMPARE(oScreen.shown(), QByteArrayList{"Ombrel"});
        // when
        oBrowser.close();
        // then
        QTUTILS_WAIT_FOR(oScreen.shown() == QByteArrayList({"Ombrel", "Zug entgleist"}));
        QCOMPARE(oAnalyst.viewers(), QByteArrayList{"shown"});
    }

    void theWindowIsNotRepaintedMeanwhile()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        CFakeBrowser oBrowser(oHost, State::Ready);
        openAddress(oAnalyst, oBrowser);
        const QRect oPlace = lTitles[3].united(lTitles[4]);
        const QImage oBefore = oScreen.picture().copy(oPlace);
        // when
        CCover oCover(oPlace, Green);
        QCOMPARE(greenPixels(oPlace), oPlace.width() * oPlace.height());
        oCover.remove();
        oHost.call("show");
        const int iThread = oHost.command({"start", "1", "call", "getNumRows", "oi:1"}).toInt();
        // then
        QTUTILS_WAIT_FOR(oHost.sleepsIn(iThread, SYS_futex));
        QCOMPARE(greenPixels(oPlace), oPlace.width() * oPlace.height());
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        // when
        oBrowser.close();
        // then
        QTUTILS_WAIT_FOR(oScreen.picture().copy(oPlace) == oBefore);
        QCOMPARE(oHost.command({"join", "1"}), "5");
    }

    void theLastFreeTakesEffectAfterwards()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        CFakeBrowser oBrowser(oHost, State::Ready);
        openAddress(oAnalyst, oBrowser);
        // when
        oHost.free();
        // then
        QVERIFY(oScreen.isShown("Ombrel"));
        // when
        oBrowser.close();
        // then
        QTUTILS_WAIT_FOR(oHost.errors().contains("Terminating QApplication"));
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
    }

private:
    static constexpr QRgb Green = qRgb(0, 255, 0);

    static QByteArrayList started(const QByteArray& oDocument)
    {
        const QByteArray oAddress = "http://news.example/" + oDocument;
        return {"<-remote> <openURL(" + oAddress + ",new-tab)>", '<' + oAddress + '>'};
    }

    // A browser is started for the address of node 1's first document.
    void openAddress(CAnalyst& oAnalyst, const CFakeBrowser& oBrowser)
    {
        oAnalyst.startAt(1);
        oAnalyst.choose("Show", "URL");
        lTitles.clear();
        lAddresses.clear();
        for (int iRow = 0; iRow < 5; iRow++) {
            lTitles << oAnalyst.cell(iRow, "title");
            lAddresses << oAnalyst.cell(iRow, "URL");
        }
        oAnalyst.doubleClickCell(0, "URL");
        QTUTILS_WAIT_FOR(oBrowser.calls() == started("4"));
    }

    int greenPixels(const QRect& oPlace) const
    {
        const QImage oPicture = oScreen.picture().copy(oPlace);
        int iPixels = 0;
        for (int y = 0; y < oPicture.height(); y++)
            for (int x = 0; x < oPicture.width(); x++)
                iPixels += oPicture.pixel(x, y) == Green ? 1 : 0;
        return iPixels;
    }

    QList<QRect> lTitles; ///< places of the cells of node 1
    QList<QRect> lAddresses;
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleLinksWaiting)
#include "tst_module_links_waiting.moc"
