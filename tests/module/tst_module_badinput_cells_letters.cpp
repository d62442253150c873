// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "CFakeBrowser.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "tests/support/spelling.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using spelling::spelled;
using State = CFakeBrowser::State;

namespace {

/// Bytes in the database, and what they are read as.
struct Sample
{
    const char* pcName;
    QByteArray oBytes;
    QString sRead;
};

/// Bytes that are no text in UTF-8, each of which is read as sBad.
QList<Sample> noText(const QString& sBad)
{
    const auto bad = [&](int iTimes) { return sBad.repeated(iTimes); };
    return {
        {"lone continuation", "a\x80z"_ba, u"a"_s + bad(1) + u'z'},
        {"two lone continuations", "a\x80\xbfz"_ba, u"a"_s + bad(2) + u'z'},
        {"overlong slash", "a\xc0\xafz"_ba, u"a"_s + bad(2) + u'z'},
        {"overlong slash of three", "a\xe0\x80\xafz"_ba, u"a"_s + bad(3) + u'z'},
        {"behind the last letter", "a\xf4\x90\x80\x80z"_ba, u"a"_s + bad(4) + u'z'},
        {"bytes that never stand", "a\xfe\xffz"_ba, u"a"_s + bad(2) + u'z'},
        {"cut at the end, two of three", "az\xe2\x82"_ba, u"az"_s + bad(2)},
        {"cut at the end, three of four", "az\xf0\x9f\x98"_ba, u"az"_s + bad(3)},
        {"cut in the middle", "a\xe2\x82z"_ba, u"a"_s + bad(2) + u'z'},
        {"bytes of latin1", "M\xe4rz"_ba, u"M"_s + bad(1) + u"rz"_s},
        {"surrogate", "a\xed\xa0\x80z"_ba, u"a\ufffd\ufffd\ufffdz"_s}, // which no server minds
    };
}

/// The same bytes, taken for latin1, which has a letter for each.
QList<Sample> latin1Letters()
{
    QList<Sample> lSamples = noText({});
    const QStringList slRead{u"a\u20acz"_s, u"a\u20ac\u00bfz"_s, u"a\u00c0\u00afz"_s,
        u"a\u00e0\u20ac\u00afz"_s, u"a\u00f4\u0090\u20ac\u20acz"_s, u"a\u00fe\u00ffz"_s, u"az\u00e2\u201a"_s,
        u"az\u00f0\u0178\u02dc"_s, u"a\u00e2\u201az"_s, u"M\u00e4rz"_s, u"a\u00ed\u00a0\u20acz"_s};
    for (qsizetype i = 0; i < lSamples.size(); i++)
        lSamples[i].sRead = slRead[i];
    return lSamples;
}

QList<Sample> unusualLetters()
{
    QList<Sample> lSamples{
        {"NUL inside", "a\0z\0"_ba, QString::fromLatin1("a\0z\0", 4)},
        {"NUL alone", "\0"_ba, QString(QChar(0))},
        {"byte order mark in front", "\xef\xbb\xbfz"_ba, u"z"_s},
    };
    const auto add = [&](const char* pcName, const QString& sText) {
        lSamples << Sample{pcName, sText.toUtf8(), sText};
    };
    add("right to left", u"\u05e9\u05dc\u05d5\u05dd 12 z \u0633\u0644\u0627\u0645"_s);
    add("turned round", u"abc\u202ede\u202c.\u2066z"_s);
    add("emoji", u"\U0001f469\u200d\U0001f469\u200d\U0001f467 \U0001f1e9\U0001f1ea \u2764\ufe0f z"_s);
    add("combining", u"e\u0301 a"_s + QString(200, QChar(0x0316)) + u" z"_s);
    add("combining alone", u"\u0301"_s);
    add("last letters", u"\uffff \U0010ffff\U0001d15e z"_s);
    add("private use", u"\ue000\U000f0000 z"_s);
    add("controls", u"\u0001\u0007\u0008\u001b[31m\u007f\u0085\t z"_s);
    add("no width", u"a\u200b\u200c\u200d\u2060\u00adz"_s);
    return lSamples;
}

} // namespace

Q_DECLARE_METATYPE(QList<Sample>)

/// Letters and bytes that aren't usual, in cells, panel, viewer and addresses. Each document has a sample as
/// its title, text and address, and is alone in its node, which has the sample's number.
class TestModuleBadInputCellsLetters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.sql(u"CREATE DATABASE som; USE som; "
                    "CREATE VIEW news_train AS SELECT seq node, 0.5 dist, seq item FROM seq_0_to_99"_s);
        make("letters", "utf8mb4", unusualLetters());
        make("bytes", "binary", noText({}));
        for (const char* pcLetters : {"latin1", "utf8mb3", "utf8mb4"})
            label(pcLetters);
    }

    void aSampleIsShown_data()
    {
        QTest::addColumn<QByteArray>("oDatabase");
        QTest::addColumn<QList<Sample>>("lSamples");
        QTest::newRow("letters") << "letters"_ba << unusualLetters();
        QTest::newRow("bytes") << "bytes"_ba << noText(Replacement);
        QTest::newRow("bytes labelled as utf8mb4") << "utf8mb4_bytes"_ba << noText(Replacement);
        QTest::newRow("bytes labelled as utf8mb3") << "utf8mb3_bytes"_ba << noText(u"?"_s);
        QTest::newRow("bytes labelled as latin1") << "latin1_bytes"_ba << latin1Letters();
    }

    void aSampleIsShown()
    {
        QFETCH(QByteArray, oDatabase);
        QFETCH(QList<Sample>, lSamples);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst, oDatabase);
        for (int i = 0; i < lSamples.size(); i++) {
            // when
            oHost.call("select", {"i:" + QByteArray::number(i)});
            oHost.call("markRow", {"k:2005-03-01 12:00:00", "i:0"});
            // then
            const QString& sRead = lSamples[i].sRead;
            const QString sPanel = QString(sRead).replace(QChar::Nbsp, u' '); // as the panel gives it back
            const QByteArrayList lShown =
                oHost.ask({"spell", "table"}) + oHost.ask({"spell", "text", "texteditor"});
            QVERIFY2(lShown
                    == QByteArrayList(
                        {spelled(u"date | title\n01.03.05 12:00 | "_s + sRead), spelled(sPanel)}),
                lSamples[i].pcName + (": " + lShown.join(" and ")));
        }
    }

    void whatStandsBehindIsFoundInTheViewer_data()
    {
        QTest::addColumn<QByteArray>("oDatabase");
        QTest::addColumn<QByteArray>("oNode");
        QTest::addColumn<QByteArray>("oFound");
        const auto row = [](const char* pcName, const QByteArray& oDatabase, const QList<Sample>& lSamples) {
            for (int i = 0; i < lSamples.size(); i++)
                if (const qsizetype iPlace = lSamples[i].sRead.indexOf(u'z');
                    lSamples[i].pcName == QByteArray(pcName))
                    QTest::newRow(pcName) << oDatabase << QByteArray::number(i)
                                          << u"%1-%2: z"_s.arg(iPlace).arg(iPlace + 1).toUtf8();
        };
        for (const char* pcName :
            {"NUL inside", "right to left", "emoji", "combining", "last letters", "controls"})
            row(pcName, "letters", unusualLetters());
        for (const char* pcName : {"overlong slash of three", "surrogate", "cut in the middle"})
            row(pcName, "bytes", noText(Replacement));
    }

    void whatStandsBehindIsFoundInTheViewer()
    {
        QFETCH(QByteArray, oDatabase);
        QFETCH(QByteArray, oNode);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        show(oAnalyst, oDatabase);
        oHost.call("select", {"i:" + oNode});
        oAnalyst.openViewer(0);
        oAnalyst.find("z");
        QTEST(oAnalyst.selectedText("0/fullEdit"), "oFound");
        QCOMPARE(oHost.ask({"spell", "text", "0/fullEdit"}), oHost.ask({"spell", "text", "texteditor"}));
    }

    void anAddressIsGivenToTheShellInUtf8_data()
    {
        QTest::addColumn<QByteArray>("oDatabase");
        QTest::addColumn<QByteArray>("oNode");
        QTest::addColumn<QByteArrayList>("lCalls");
        QTest::addColumn<QByteArrayList>("lErrors");
        const auto row = [](const char* pcName, const QByteArray& oDatabase, int iNode,
                             const QByteArray& oAddress) {
            QTest::newRow(pcName) << oDatabase << QByteArray::number(iNode)
                                  << QByteArrayList{"<-remote> <openURL(" + oAddress + ",new-tab)>"}
                                  << QByteArrayList();
        };
        row("right to left", "letters", 3, unusualLetters()[3].oBytes);
        row("emoji", "letters", 5, unusualLetters()[5].oBytes);
        row("lone continuation", "bytes", 0, "a\ufffdz");
        QTest::newRow("NUL: the command is cut")
            << "letters"_ba
            << "0"_ba << QByteArrayList()
            << QByteArrayList{"sh: 1: Syntax error: Unterminated quoted string"};
    }

    void anAddressIsGivenToTheShellInUtf8()
    {
        QFETCH(QByteArray, oDatabase);
        QFETCH(QByteArray, oNode);
        QFETCH(QByteArrayList, lErrors);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, State::Running);
        show(oAnalyst, oDatabase);
        for (const char* pcColumn : {"URL", "title", "date"})
            oAnalyst.choose("Show", pcColumn);
        oHost.call("select", {"i:" + oNode});
        oAnalyst.doubleClickCell(0, "URL");
        QCOMPARE(oAnalyst.viewers(), QByteArrayList{"shown"});
        QTEST(oBrowser.calls(), "lCalls");
        oHost.announceErrors(lErrors);
    }

private:
    const QString Replacement{QChar(QChar::ReplacementCharacter)};

    /// Makes a database of documents whose columns are of that set of letters.
    void make(const QByteArray& oDatabase, const char* pcLetters, const QList<Sample>& lSamples) const
    {
        QString sStatements =
            u"CREATE DATABASE %1; CREATE TABLE %1.document (id INT, date DATETIME, title MEDIUMTEXT, "
            "text MEDIUMTEXT, URL MEDIUMTEXT) ENGINE=MyISAM CHARSET %2; "_s;
        for (int i = 0; i < lSamples.size(); i++)
            sStatements += u"INSERT INTO %1.document VALUES (%2, '2005-03-01 12:00:00', 0x%3, 0x%3, 0x%3); "_s
                               .replace(u"%2"_s, QString::number(i))
                               .replace(u"%3"_s, QString::fromLatin1(lSamples[i].oBytes.toHex()));
        oServer.sql(sStatements.replace(u"%1"_s, QString::fromLatin1(oDatabase))
                        .replace(u"%2"_s, QString::fromLatin1(pcLetters)));
    }

    /// Makes the database "LETTERS_bytes": the bytes as if the server had taken them for letters of that set.
    /// It would not, so the table gets the files of the other one.
    void label(const QByteArray& oLetters) const
    {
        const QByteArray oDatabase = oLetters + "_bytes";
        make(oDatabase, oLetters.constData(), {});
        oServer.sql(u"FLUSH TABLES"_s);
        const QString sFile = QFileInfo(oServer.socket()).path() + u"/data/%1/document.%2"_s;
        for (const auto& sSuffix : {u"MYD"_s, u"MYI"_s}) {
            const QString sCopy = sFile.arg(QString::fromLatin1(oDatabase), sSuffix);
            QVERIFY(QFile::remove(sCopy) && QFile::copy(sFile.arg(u"bytes"_s, sSuffix), sCopy));
        }
    }

    static void show(CAnalyst& oAnalyst, const QByteArray& oDatabase)
    {
        CPlainHost& oHost = oAnalyst.host();
        oHost.load();
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.call("CNodeBrowser", {"t:som", "t:" + oDatabase});
        oAnalyst.showWindow();
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleBadInputCellsLetters)
#include "tst_module_badinput_cells_letters.moc"
