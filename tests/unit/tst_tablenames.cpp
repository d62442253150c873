// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "data/tablenames.h"

#include <QTest>

class TestTableNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTrailingTrainBecomesSom_data()
    {
        QTest::addColumn<QString>("sSOMTable");
        QTest::addColumn<QString>("sKeywordTable");
        QTest::newRow("suffix") << QStringLiteral("docs_train") << QStringLiteral("docs_som");
        QTest::newRow("whole name") << QStringLiteral("train") << QStringLiteral("som");
        QTest::newRow("longer word") << QStringLiteral("docs_training") << QStringLiteral("docs_training");
        QTest::newRow("at the beginning") << QStringLiteral("train_docs") << QStringLiteral("train_docs");
        QTest::newRow("capital letter") << QStringLiteral("news_Train") << QStringLiteral("news_Train");
        QTest::newRow("empty") << QStringLiteral("") << QStringLiteral("");
    }

    void aTrailingTrainBecomesSom()
    {
        QFETCH(QString, sSOMTable);
        QTEST(tablenames::keywordTable(sSOMTable), "sKeywordTable");
    }

    void aSourceTableIsQualifiedByItsDatabase()
    {
        QCOMPARE(tablenames::qualified(QStringLiteral("news"), QStringLiteral("articles")),
            QStringLiteral("news.articles"));
    }
};

QTEST_GUILESS_MAIN(TestTableNames)
#include "tst_tablenames.moc"
