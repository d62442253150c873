// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <QBuffer>
#include <QFile>
#include <QImage>

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// Files, a pipe and a network address that nobody is to open.
class CTrap
{
public:
    CTrap()
        : iWatch(inotify_init1(IN_NONBLOCK))
        , iSocket(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0))
    {
        QImage oPicture(60, 60, QImage::Format_RGB32);
        oPicture.fill(Qt::green);
        oPicture.save(path(u"picture.png"_s));
        QFile oStyle(path(u"style.css"_s));
        oStyle.open(QFile::WriteOnly);
        oStyle.write("* { background-color: #00ff00 }");
        mkfifo(path(u"pipe"_s).toUtf8().constData(), S_IRUSR | S_IWUSR);
        inotify_add_watch(iWatch, oFolder.path().toUtf8().constData(), IN_OPEN | IN_ACCESS);
        listen(iSocket, 9);
        socklen_t uSize = sizeof oAddress;
        getsockname(iSocket, reinterpret_cast<sockaddr*>(&oAddress), &uSize);
    }
    ~CTrap()
    {
        ::close(iWatch);
        ::close(iSocket);
    }
    CTrap(const CTrap&) = delete;
    CTrap& operator=(const CTrap&) = delete;

    /// A text in which FOLDER and PORT stand for those of the trap.
    QString bait(QString sText) const
    {
        const int iPort = ntohs(oAddress.sin_port);
        return sText.replace(u"FOLDER"_s, oFolder.path()).replace(u"PORT"_s, QString::number(iPort));
    }

    /// What has been opened since the last time.
    QByteArray caught() const
    {
        std::array<char, 4096> acEvents{};
        QByteArray oCaught;
        if (read(iWatch, acEvents.data(), acEvents.size()) > 0)
            oCaught += reinterpret_cast<const inotify_event*>(acEvents.data())->name;
        if (const int iPipe = open(path(u"pipe"_s).toUtf8().constData(), O_WRONLY | O_NONBLOCK); iPipe >= 0) {
            ::close(iPipe);
            oCaught += "pipe";
        }
        if (const int iPeer = accept(iSocket, nullptr, nullptr); iPeer >= 0) {
            ::close(iPeer);
            oCaught += "network";
        }
        return oCaught;
    }

private:
    QString path(const QString& sFile) const { return oFolder.filePath(sFile); }

    QTemporaryDir oFolder;
    int iWatch;
    int iSocket;
    sockaddr_in oAddress{};
};

} // namespace

/// Markup that asks for files or for something from the network. The only document has it as its title, and
/// as its text where that counts; the root has it as its keywords.
class TestModuleBadInputCellsMarkup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.sql(u"CREATE DATABASE som; CREATE DATABASE news; USE som; "
                    "CREATE TABLE news_train AS SELECT 1 node, 0.5 dist, 1 item"_s);
    }

    void cellsHeadersAndKeywordsFetchNothing()
    {
        // given
        const CTrap oTrap;
        const QString sMarkup = oTrap.bait(
            u"<img src='file://FOLDER/picture.png'><img src='http://127.0.0.1:PORT/x'><img "
            u"src='file://FOLDER/pipe'>"
            "<link rel='stylesheet' type='text/css' href='file://FOLDER/style.css'><style>@import url('FOLDER/style.css');</style>"_s);
        make(sMarkup, {});
        oServer.sql(oTrap.bait(u"ALTER TABLE news.document ADD COLUMN `<img src='FOLDER/pipe'>` INT"_s));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        show(oAnalyst);
        const QByteArray oColumn = oTrap.bait(u"<img src='FOLDER/pipe'>"_s).toUtf8();
        oAnalyst.choose("Show", oColumn);
        oScreen.hover(oAnalyst.item(0).center());
        oScreen.hover(oAnalyst.tableHeader("title").center());
        oAnalyst.doubleClickCell(0, "date");
        // then
        const QByteArray oMarkup = sMarkup.toUtf8();
        QCOMPARE(oAnalyst.tree(), QByteArrayList({"v 0 | " + oMarkup, "  - 1 |  <", "  - 2 | ", "  - 3 | "}));
        QCOMPARE(
            oAnalyst.table(), QByteArrayList({"date | title | " + oColumn, "NULL | " + oMarkup + " | NULL"}));
        QTUTILS_WAIT_FOR(oScreen.isShown("Ombrel") && oScreen.isShown(oMarkup.first(200)));
        QCOMPARE(oTrap.caught(), "");
    }

    void aTextFetchesNothing_data()
    {
        QTest::addColumn<QString>("sMarkup");
        QTest::addColumn<QByteArray>("oRead");
        const auto row = [](const char* pcName, const QString& sMarkup, const char* pcRead) {
            QTest::newRow(pcName) << sMarkup << QByteArray(pcRead);
        };
        row("picture", u"<img src='http://127.0.0.1:PORT/x'>"_s, "\ufffc\nend");
        row("picture of a file", u"<img src='file://FOLDER/picture.png'>"_s, "\ufffc\nend");
        row("picture without a scheme", u"<img src='FOLDER/picture.png'>"_s, "\ufffc\nend");
        row("pipe for a picture", u"<img src='file://FOLDER/pipe'>"_s, "\ufffc\nend");
        row("pipe without a scheme", u"<img src='FOLDER/pipe'>"_s, "\ufffc\nend");
        row("endless file", u"<img src='file:///dev/zero'>"_s, "\ufffc\nend");
        row("background of a file", u"<body background='FOLDER/picture.png'>"_s, "end");
        row("style of a file",
            u"<html><head><link rel='stylesheet' type='text/css' href='file://FOLDER/style.css'></head>"_s,
            "end");
        row("imported style of a file", u"<style>@import url('FOLDER/style.css');</style>"_s, "end");
        row("style",
            u"<html><head><link rel='stylesheet' type='text/css' href='http://127.0.0.1:PORT/x'></head>"_s,
            "end");
        row("imported style", u"<style>@import url('http://127.0.0.1:PORT/x');</style>"_s, "end");
        row("background", u"<body background='http://127.0.0.1:PORT/x'>"_s, "end");
        row("frame", u"<b>x</b><iframe src='http://127.0.0.1:PORT/x'></iframe>"_s, "x\nend");
        row("script", u"<script src='http://127.0.0.1:PORT/x'>open('FOLDER/style.css')</script>"_s, "end");
        row("links",
            u"<a href='http://127.0.0.1:PORT/x'>link</a> <a href='file://FOLDER/style.css'>file</a>"_s,
            "link file\nend");
        row("object",
            u"<b>x</b><object data='FOLDER/picture.png'></object><embed src='FOLDER/picture.png'>"_s,
            "x\nend");
    }

    void aTextFetchesNothing()
    {
        QFETCH(QString, sMarkup);
        // given
        const CTrap oTrap;
        make(u"title"_s, oTrap.bait(sMarkup) + u"<p>end</p>"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        // when
        oAnalyst.openViewer(0);
        // then
        QTEST(oAnalyst.text("texteditor"), "oRead");
        QTEST(oAnalyst.text("0/fullEdit"), "oRead");
        QCOMPARE(oTrap.caught(), "");
    }

    void aPictureThatTheTextHoldsIsShown()
    {
        // given
        QImage oPicture(60, 60, QImage::Format_RGB32);
        oPicture.fill(Qt::green);
        QBuffer oFile;
        QVERIFY(oPicture.save(&oFile, "PNG"));
        make(u"title"_s,
            u"<img src='data:image/png;base64,%1'>"_s.arg(QString::fromLatin1(oFile.data().toBase64())));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst);
        // when
        oAnalyst.clickCell(0, "title");
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(qRgb(0, 255, 0), oAnalyst.part("texteditor")) == 60 * 60);
    }

private:
    void make(const QString& sTitle, const QString& sText) const
    {
        const auto hex = [](const QString& s) { return QString::fromLatin1(s.toUtf8().toHex()); };
        oServer.sql(
            u"CREATE OR REPLACE TABLE som.news_som AS SELECT 0 _assigned_topic, X'%1' _keywords; "
            "CREATE OR REPLACE TABLE news.document AS SELECT 1 id, NULL date, X'%1' title, X'%2' text"_s.arg(
                hex(sTitle), hex(sText)));
    }

    static void show(CAnalyst& oAnalyst)
    {
        oAnalyst.host().start();
        oAnalyst.host().call("select", {"i:1"});
        oAnalyst.showWindow();
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleBadInputCellsMarkup)
#include "tst_module_badinput_cells_markup.moc"
