// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "table/CDocumentModel.h"

#include "CStoreTest.h"
#include "data/CStoredRows.h"
#include "tests/support/pictures.h"
#include "tests/support/testmain.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QSqlQuery>
#include <QSqlRecord>

using namespace Qt::StringLiterals;

class TestDocumentModel : public CStoreTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        CStrictTest::init();
        pModel = std::make_unique<CDocumentModel>();
        pModel->setLocale(QLocale(u"de_DE"_s));
        new QAbstractItemModelTester(
            pModel.get(), QAbstractItemModelTester::FailureReportingMode::QtTest, pModel.get());
    }

    void cleanup() { pModel.reset(); }

    void aNewModelIsEmpty()
    {
        QCOMPARE(pictures::table(*pModel), QStringList{u""_s});
        QCOMPARE(pModel->rowCount(), 0);
        QCOMPARE(pModel->columnCount(), 0);
        QVERIFY(pModel->record(0).isEmpty());
    }

    void theColumnsComeInTheOrderOfTheirNames()
    {
        show(result(u"WHERE id < 3 ORDER BY id"_s), {u"title"_s, u"id"_s});
        QCOMPARE(pictures::table(*pModel),
            (QStringList{u"title | id"_s, u"Schnee im März | 1"_s, u"Wahl in Köln | 2"_s}));
    }

    void aColumnThatTheResultLacksIsEmpty()
    {
        show(result(u"WHERE id=1"_s), {u"id"_s, u"mood"_s});
        QCOMPARE(pictures::table(*pModel), (QStringList{u"id | mood"_s, u"1 | "_s}));
        QCOMPARE(pModel->valueText(0, 1), u""_s);
    }

    void aNameIsFoundWhateverItsLetterCase()
    {
        show(result(u"WHERE id=1"_s), {u"url"_s, u"TITLE"_s});
        QCOMPARE(pictures::table(*pModel),
            (QStringList{u"url | TITLE"_s, u"http://news.example/1 | Schnee im März"_s}));
    }

    void ofTwoFieldsWithOneNameTheFirstIsShown()
    {
        show(run(u"SELECT 'a' AS x, 'b' AS x"_s), {u"x"_s});
        QCOMPARE(pictures::table(*pModel), (QStringList{u"x"_s, u"a"_s}));
    }

    void anEmptyResultHasHeadersOnly()
    {
        show(result(u"WHERE id=0"_s), {u"id"_s});
        QCOMPARE(pictures::table(*pModel), QStringList{u"id"_s});
        QCOMPARE(pModel->valueText(0, 0), QString());
    }

    void aFailedResultHasHeadersOnly()
    {
        show(run(u"SELECT nothing"_s), {u"id"_s});
        QCOMPARE(pictures::table(*pModel), QStringList{u"id"_s});
        QVERIFY(pModel->record(0).isEmpty());
    }

    void withoutColumnsTheRowsAreCounted()
    {
        show(result(u""_s), {});
        QCOMPARE(pModel->rowCount(), 7);
        QCOMPARE(pModel->columnCount(), 0);
    }

    void clearingLeavesNothing()
    {
        show(result(u""_s), {u"id"_s});
        pModel->clear();
        QCOMPARE(pictures::table(*pModel), QStringList{u""_s});
    }

    void aResultIsReplacedInOneReset()
    {
        show(result(u""_s), {u"id"_s});
        const QSignalSpy oBefore(pModel.get(), &QAbstractItemModel::modelAboutToBeReset);
        const QSignalSpy oAfter(pModel.get(), &QAbstractItemModel::modelReset);
        const QSignalSpy oRows(pModel.get(), &QAbstractItemModel::rowsInserted);
        show(result(u"WHERE id < 4"_s), {u"title"_s, u"id"_s});
        QCOMPARE(oBefore.size(), 1);
        QCOMPARE(oAfter.size(), 1);
        QCOMPARE(oRows.size(), 0);
        QCOMPARE(pModel->rowCount(), 3);
    }

    void rowsCanBeReadInAnyOrder()
    {
        show(result(u"ORDER BY id"_s), {u"id"_s});
        for (const int iRow : {6, 0, 3, 3, 2, 6})
            QCOMPARE(pModel->shownText(iRow, 0), QString::number(iRow + 1));
    }

    void anotherReaderDoesNotDisturb()
    {
        const auto pResult = result(u"ORDER BY id"_s);
        show(pResult, {u"id"_s});
        QCOMPARE(pModel->shownText(2, 0), u"3"_s);
        QCOMPARE(pResult->bytes(0, 0), "1");
        QCOMPARE(pModel->shownText(2, 0), u"3"_s);
        QCOMPARE(pModel->record(5).value(u"id"_s).toInt(), 6);
    }

    void rowsAreNumberedFromOne()
    {
        show(result(u""_s), {u"id"_s});
        QCOMPARE(pModel->headerData(0, Qt::Vertical), u"1"_s);
        QCOMPARE(pModel->headerData(6, Qt::Vertical), u"7"_s);
        QVERIFY(!pModel->headerData(1, Qt::Horizontal).isValid());
        QVERIFY(!pModel->headerData(0, Qt::Horizontal, Qt::DecorationRole).isValid());
    }

    void aColumnsTipIsItsType_data()
    {
        QTest::addColumn<QString>("sType");
        QTest::addColumn<QString>("sTip");
        for (const char* pcType : {"TINYINT", "SMALLINT", "MEDIUMINT", "INT", "BIGINT", "FLOAT", "DOUBLE",
                 "DATE", "TIME", "DATETIME", "TIMESTAMP", "YEAR", "TEXT", "BLOB"})
            QTest::newRow(pcType) << QString::fromLatin1(pcType) << QString::fromLatin1(pcType);
        for (const char* pcType :
            {"DECIMAL(5,2)", "BIT(3)", "CHAR(4)", "BINARY(4)", "VARCHAR(4)", "VARBINARY(4)", "GEOMETRY"})
            QTest::newRow(pcType) << QString::fromLatin1(pcType)
                                  << QString::fromLatin1(pcType).section(u'(', 0, 0);
        QTest::newRow("ENUM") << u"ENUM('a', 'b')"_s << u"ENUM"_s;
        QTest::newRow("SET") << u"SET('a', 'b')"_s << u"SET"_s;
        QTest::newRow("letters in the order of their bytes")
            << u"VARCHAR(9) COLLATE utf8mb4_bin"_s << u"VARCHAR"_s;
        QTest::newRow("JSON") << u"JSON"_s << u"TEXT"_s;
        QTest::newRow("unsigned") << u"INT UNSIGNED"_s << u"INT UNSIGNED"_s;
        QTest::newRow("long text") << u"LONGTEXT"_s << u"TEXT"_s;
    }

    void aColumnsTipIsItsType()
    {
        QFETCH(QString, sType);
        QFETCH(QString, sTip);
        oServer.sql(u"CREATE OR REPLACE TABLE news.types (cell %1)"_s.arg(sType));
        show(run(u"SELECT cell FROM types"_s), {u"cell"_s, u"missing"_s});
        const auto tip = [this](int i) { return pModel->headerData(i, Qt::Horizontal, Qt::ToolTipRole); };
        QCOMPARE(tip(0).toString(), u"cell: "_s + sTip);
        QCOMPARE(tip(1).toString(), u""_s);
        QCOMPARE(tip(2).toString(), u""_s);
    }

    void aColumnsTipHasNoTags()
    {
        show(run(u"SELECT id AS `<img src='x'>` FROM document"_s), {u"<img src='x'>"_s});
        QCOMPARE(
            pModel->headerData(0, Qt::Horizontal, Qt::ToolTipRole).toString(), u"&lt;img src='x'&gt;: INT"_s);
    }

    void aRecordHoldsTheHiddenFieldsToo()
    {
        show(result(u"ORDER BY id"_s), {u"id"_s});
        const QSqlRecord oRecord = pModel->record(1);
        QCOMPARE(oRecord.count(), 7);
        QCOMPARE(oRecord.value(u"text"_s).toString(), u"Die Wahl ist vorbei."_s);
    }

    void aRecordOfNoRowHasFieldsWithoutValues()
    {
        show(result(u""_s), {u"id"_s});
        for (const int iRow : {-1, 7}) {
            const QSqlRecord oRecord = pModel->record(iRow);
            QVERIFY(oRecord.contains(u"text"_s));
            QCOMPARE(oRecord.value(u"text"_s).toString(), u""_s);
        }
    }

    void outsideOfTheTableTheValueIsEmpty()
    {
        show(result(u""_s), {u"id"_s});
        QCOMPARE(pModel->valueText(0, 0), u"1"_s);
        for (const auto& [iRow, iColumn] : {std::pair(-1, 0), {7, 0}, {0, -1}, {0, 1}})
            QCOMPARE(pModel->valueText(iRow, iColumn), QString());
    }

    void theValueIsNotAlwaysWhatIsShown()
    {
        show(run(u"SELECT date, NULL AS nothing FROM document WHERE id=1"_s), {u"date"_s, u"nothing"_s});
        QCOMPARE(pictures::table(*pModel), (QStringList{u"date | nothing"_s, u"01.03.05 13:00 | NULL"_s}));
        QCOMPARE(pModel->valueText(0, 0), u"2005-03-01T13:00:00"_s);
        QCOMPARE(pModel->valueText(0, 1), u""_s);
    }

private:
    void show(const std::shared_ptr<CStoredRows>& pRows, const QStringList& slColumns)
    {
        pModel->setResult([&] { return pRows; }, slColumns);
    }

    std::shared_ptr<CStoredRows> run(const QString& sStatement)
    {
        QSqlQuery oQuery(oDatabase);
        oQuery.exec(sStatement);
        return std::make_shared<CStoredRows>(std::move(oQuery));
    }

    std::shared_ptr<CStoredRows> result(const QString& sCondition)
    {
        return run(u"SELECT * FROM document "_s + sCondition);
    }

    std::unique_ptr<CDocumentModel> pModel;
};

QTUTILS_WIDGET_TEST_MAIN(TestDocumentModel, CPrivateDisplay::Manager::None)
#include "tst_documentmodel.moc"
