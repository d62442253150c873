// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "tree/keywords.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestKeywords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theQueryReadsTheKeywordTable_data()
    {
        QTest::addColumn<QString>("sSOMTable");
        QTest::addColumn<QString>("sQuery");
        QTest::newRow("suffix train")
            << u"docs_train"_s << u"SELECT _assigned_topic, _keywords FROM docs_som "_s;
        QTest::newRow("train alone") << u"train"_s << u"SELECT _assigned_topic, _keywords FROM som "_s;
        QTest::newRow("another word")
            << u"docs_training"_s << u"SELECT _assigned_topic, _keywords FROM docs_training "_s;
        QTest::newRow("train in front")
            << u"train_docs"_s << u"SELECT _assigned_topic, _keywords FROM train_docs "_s;
        QTest::newRow("capital letter")
            << u"news_Train"_s << u"SELECT _assigned_topic, _keywords FROM news_Train "_s;
    }

    void theQueryReadsTheKeywordTable()
    {
        QFETCH(QString, sSOMTable);
        QTEST(keywords::query(sSOMTable), "sQuery");
    }

    void aTextIsShortened_data()
    {
        QTest::addColumn<QString>("sText");
        QTest::addColumn<QString>("sShortened");
        QTest::newRow("nothing") << QString() << QString();
        QTest::newRow("one keyword") << u"red"_s << u"red"_s;
        QTest::newRow("two: the first only") << u"red\ngreen"_s << u"red"_s;
        QTest::newRow("three") << u"red\ngreen\nblue"_s << u"red, green, blue"_s;
        QTest::newRow("four") << u"red\ngreen\nblue\ngrey"_s << u"red, green, blue"_s;
        QTest::newRow("five") << u"red\ngreen\nblue\ngrey\npink"_s << u"red, green, blue"_s;
        QTest::newRow("one, ended") << u"red\n"_s << u"red"_s;
        QTest::newRow("two, ended") << u"red\ngreen\n"_s << u"red, green, "_s;
        QTest::newRow("three, ended") << u"red\ngreen\nblue\n"_s << u"red, green, blue"_s;
        QTest::newRow("a line feed alone") << u"\n"_s << u""_s;
        QTest::newRow("a line feed first") << u"\nred\ngreen"_s << u", red, green"_s;
        QTest::newRow("other scripts") << u"Äpfel\nснег\n雪\nx"_s << u"Äpfel, снег, 雪"_s;
    }

    void aTextIsShortened()
    {
        QFETCH(QString, sText);
        std::string oShown = "what was before";
        keywords::shorten(sText.toStdString(), oShown);
        QTEST(QString::fromStdString(oShown), "sShortened");
    }
};

QTEST_GUILESS_MAIN(TestKeywords)
#include "tst_keywords.moc"
