// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "CFakeBrowser.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <QFile>

using State = CFakeBrowser::State;

/// The command line that opens an address, and what the shell makes of it.
class TestModuleLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        oServer.sql(QStringLiteral("ALTER TABLE news.document MODIFY URL MEDIUMTEXT"));
    }

    void theShellGetsOneLine_data()
    {
        QTest::addColumn<QByteArray>("oAddress");
        QTest::addColumn<QByteArray>("oLine");
        QTest::newRow("short") << QByteArray(
            "abc") << QByteArray("firefox -remote \"openURL(abc,new-tab)\"      || firefox \"abc\"");
        QTest::newRow("nothing") << QByteArray("")
                                 << QByteArray("firefox -remote \"openURL(,new-tab)\"      || firefox \"\"");
        QTest::newRow("quotation marks")
            << QByteArray("a\" \"b'c'")
            << QByteArray("firefox -remote \"openURL(a\" \"b'c',new-tab)\"      || firefox \"a\" \"b'c'\"");
        QTest::newRow("shell characters")
            << QByteArray("\\a $(:) `:` %1")
            << QByteArray("firefox -remote \"openURL(\\a $(:) `:` %1,new-tab)\"      || firefox \"\\a $(:) "
                          "`:` %1\"");
        QTest::newRow("other scripts") << QByteArray(
            "ä/雪") << QByteArray("firefox -remote \"openURL(ä/雪,new-tab)\"      || firefox \"ä/雪\"");
    }

    void theShellGetsOneLine()
    {
        QFETCH(QByteArray, oAddress);
        QFETCH(QByteArray, oLine);
        CPlainHost oHost;
        const CFakeBrowser oBrowser(oHost, State::Running);
        openAddress(oHost, oAddress);
        QCOMPARE(oBrowser.commandLine(), oLine);
    }

    void aRunningBrowserTakesTheAddress()
    {
        CPlainHost oHost;
        const CFakeBrowser oBrowser(oHost, State::Running);
        openAddress(oHost, "http://news.example/6");
        QCOMPARE(oBrowser.calls(), QByteArrayList{"<-remote> <openURL(http://news.example/6,new-tab)>"});
    }

    void withoutARunningBrowserANewOneIsStarted_data()
    {
        QTest::addColumn<QByteArray>("oAddress");
        QTest::addColumn<QByteArray>("oRemote");
        QTest::addColumn<QByteArray>("oNew");
        addAddress("plain", "http://news.example/6");
        addAddress("nothing", "");
        addAddress("blanks", "  a  b ");
        addAddress("umlauts", "http://zürich.example/Straße?q=€&r=雪");
        addAddress("apostrophes", "it's 'quoted'");
        addAddress("what means nothing inside quotation marks",
            "~a;b|c&d<e>f(g)h*i?j[k]l{m,n}o#p%q=r^s!t:u@v+w-x_y.z/");
        addAddress("line feed, tabulator", "a\nb\tc");
        addAddress("commands in parentheses", "$(echo 'a  b')c", "a  bc");
        addAddress("commands in backquotes", "`echo a; echo b`c", "a\nbc");
        addAddress("a number to work out", "$((6 * 7))", "42");
        addAddress("a variable", "a${WORD}b$WORD", "aspringbspring");
        addAddress("a variable that isn't set", "a$b", "a");
        addAddress("backslashes", "\\\\ \\$ \\` \\\" \\a", "\\ $ ` \" \\a");
        QTest::newRow("quotation marks")
            << QByteArray("a\" b \"c") << QByteArray("<-remote> <openURL(a> <b> <c,new-tab)>")
            << QByteArray("<a> <b> <c>");
    }

    void withoutARunningBrowserANewOneIsStarted()
    {
        QFETCH(QByteArray, oAddress);
        QFETCH(QByteArray, oRemote);
        QFETCH(QByteArray, oNew);
        // given
        CPlainHost oHost;
        const CFakeBrowser oBrowser(oHost, State::Ended);
        oHost.command({"env", "WORD", "spring"});
        // when
        openAddress(oHost, oAddress);
        // then
        QCOMPARE(oBrowser.calls(), QByteArrayList({oRemote, oNew}));
    }

    void anAddressCanHoldCommands_data()
    {
        QTest::addColumn<QByteArray>("oAddress");
        QTest::addColumn<QByteArray>("oWritten");
        QTest::addColumn<QByteArrayList>("lCalls");
        const QByteArray oCut("<-remote> <openURL(a>");
        QTest::newRow("behind a semicolon")
            << QByteArray("a\"; echo ran > FILE; : \"") << QByteArray("ran\n") << QByteArrayList{oCut};
        QTest::newRow("behind an ampersand: the window goes on at once")
            << QByteArray("a\" & echo ran > FILE; : \"") << QByteArray("ran\n") << QByteArrayList{oCut};
        QTest::newRow("behind a bar")
            << QByteArray("a\" | echo ran > FILE; : \"") << QByteArray("ran\n") << QByteArrayList{oCut};
        QTest::newRow("behind a line feed")
            << QByteArray("a\"\necho ran > FILE\n: \"") << QByteArray("ran\n") << QByteArrayList{oCut};
        QTest::newRow("in parentheses, once for each browser")
            << QByteArray("a$(echo ran >> FILE)") << QByteArray("ran\nran\n")
            << QByteArrayList{"<-remote> <openURL(a,new-tab)>", "<a>"};
        QTest::newRow("in backquotes, once for each browser")
            << QByteArray("a`echo ran >> FILE`") << QByteArray("ran\nran\n")
            << QByteArrayList{"<-remote> <openURL(a,new-tab)>", "<a>"};
        QTest::newRow("a file for the output")
            << QByteArray("a\" > FILE \"") << QByteArray("")
            << QByteArrayList{"<-remote> <openURL(a> <,new-tab)>", "<a> <>"};
        QTest::newRow("the end of the shell") << QByteArray("a\"; echo ran > FILE; kill -9 $$; \"")
                                              << QByteArray("ran\n") << QByteArrayList{oCut};
    }

    // This is wanted: the address isn't escaped.
    void anAddressCanHoldCommands()
    {
        QFETCH(QByteArray, oAddress);
        QFETCH(QByteArray, oWritten);
        QFETCH(QByteArrayList, lCalls);
        // given
        CPlainHost oHost;
        const CFakeBrowser oBrowser(oHost, State::Ended);
        // when
        openAddress(oHost, oAddress.replace("FILE", oBrowser.file().toUtf8()));
        // then
        QTUTILS_WAIT_FOR(oBrowser.calls() == lCalls);
        QFile oFile(oBrowser.file());
        QVERIFY(oFile.open(QIODevice::ReadOnly));
        QCOMPARE(oFile.readAll(), oWritten);
    }

    void whatTheShellDoesNotUnderstandOpensNothing_data()
    {
        QTest::addColumn<QByteArray>("oAddress");
        QTest::addColumn<QByteArray>("oError");
        QTest::newRow("a quotation mark")
            << QByteArray("a\"b") << QByteArray("sh: 1: Syntax error: \")\" unexpected");
        QTest::newRow("an open command")
            << QByteArray("a$(b") << QByteArray("sh: 1: Syntax error: Unterminated quoted string");
    }

    void whatTheShellDoesNotUnderstandOpensNothing()
    {
        QFETCH(QByteArray, oAddress);
        QFETCH(QByteArray, oError);
        CPlainHost oHost;
        const CFakeBrowser oBrowser(oHost, State::Ended);
        openAddress(oHost, oAddress);
        oHost.announceErrors({oError});
        QCOMPARE(oBrowser.calls(), QByteArrayList());
    }

    void withoutABrowserOnlyTheShellSaysSomething()
    {
        CPlainHost oHost;
        const CFakeBrowser oBrowser(oHost, State::Missing);
        openAddress(oHost, "http://news.example/6");
        oHost.announceErrors({"sh: 1: firefox: not found", "sh: 1: firefox: not found"});
    }

    void anAddressTooLongForACommandOpensNothing()
    {
        CPlainHost oHost;
        const CFakeBrowser oBrowser(oHost, State::Ended);
        openAddress(oHost, QByteArray(70000, 'a'));
        QCOMPARE(oBrowser.calls(), QByteArrayList());
    }

private:
    static void addAddress(const char* pcName, const QByteArray& oAddress, const QByteArray& oGiven)
    {
        QTest::newRow(pcName) << oAddress << "<-remote> <openURL(" + oGiven + ",new-tab)>"
                              << '<' + oGiven + '>';
    }
    static void addAddress(const char* pcName, const QByteArray& oAddress)
    {
        addAddress(pcName, oAddress, oAddress);
    }

    // A double click on it; then the full text comes up and the window goes on, whatever has become of the
    // address.
    void openAddress(CPlainHost& oHost, const QByteArray& oAddress)
    {
        oServer.sql(QStringLiteral("UPDATE news.document SET URL=X'%1' WHERE id=6")
                        .arg(QString::fromLatin1(oAddress.toHex())));
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(2);
        oAnalyst.choose("Show", "URL");
        oAnalyst.doubleClickCell(0, "URL");
        QCOMPARE(oAnalyst.viewers(), QByteArrayList{"shown"});
        QCOMPARE(oAnalyst.text("0/fullEdit"), QByteArray("Es ist warm."));
        QCOMPARE(oHost.numRows(), 2);
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleLinks)
#include "tst_module_links.moc"
