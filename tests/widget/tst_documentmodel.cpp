// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "table/CDocumentModel.h"

#include "data/CStoredRows.h"
#include "data/somconnection.h"
#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/pictures.h"
#include "tests/support/testmain.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QSqlQuery>
#include <QSqlRecord>

using namespace Qt::StringLiterals;

class TestDocumentModel : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        oDatabase = somconnection::add(qEnvironmentVariable("MYSQL_HOST"), qEnvironmentVariable("MYSQL_USER"),
            qEnvironmentVariable("MYSQL_PWD"), u"news"_s);
        QVERIFY(somconnection::open(oDatabase));
    }

    void cleanupTestCase()
    {
        oDatabase = QSqlDatabase();
        somconnection::remove();
    }

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

    CPrivateServer oServer;
    QSqlDatabase oDatabase;
    std::unique_ptr<CDocumentModel> pModel;
};

QTUTILS_WIDGET_TEST_MAIN(TestDocumentModel, CPrivateDisplay::Manager::None)
#include "tst_documentmodel.moc"
