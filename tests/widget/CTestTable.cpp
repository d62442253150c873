// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTable.h"

#include "data/somconnection.h"
#include "tests/support/CPrivateServer.h"
#include "tests/support/pictures.h"

#include <QTest>

CTestTable::CTestTable(const QString& sPassword)
    : pTable(std::make_unique<CTable>(qEnvironmentVariable("MYSQL_HOST"), qEnvironmentVariable("MYSQL_USER"),
        sPassword, QStringLiteral("som"), QStringLiteral("news"), oHandover.flag(), oHandover.mutex(),
        oHandover.condition(), nullptr, "table"))
{
}

CTestTable::~CTestTable()
{
    pTable.reset();
    somconnection::remove();
}

void CTestTable::setTables(const QString& sSourceTable, const QString& sSOMTable)
{
    pTable->setSourceTable(sSourceTable);
    pTable->setSOMTable(sSOMTable);
}

void CTestTable::showDates(const CPrivateServer& oServer, const QStringList& slDates)
{
    QStringList slDocuments;
    QStringList slPlaces;
    for (int i = 1; i <= slDates.size(); i++) {
        const QString& sDate = slDates[i - 1];
        const QString sValue =
            sDate.isNull() ? QStringLiteral("NULL") : QLatin1Char('\'') + sDate + QLatin1Char('\'');
        slDocuments << QStringLiteral("(%1, %2, 'row %1')").arg(i).arg(sValue);
        slPlaces << QStringLiteral("(0, 0, %1)").arg(i);
    }
    oServer.sql(
        QStringLiteral("SET sql_mode='';"
                       "CREATE OR REPLACE TABLE news.dated (id INT, date DATETIME, title VARCHAR(20));"
                       "CREATE OR REPLACE TABLE som.dates (node INT, dist DOUBLE, item INT);"
                       "INSERT INTO news.dated VALUES %1; INSERT INTO som.dates VALUES %2")
            .arg(slDocuments.join(QLatin1Char(',')), slPlaces.join(QLatin1Char(','))));
    setTables(QStringLiteral("dated"), QStringLiteral("dates"));
    pTable->changeSort(int(pTable->columns().indexOf(QStringLiteral("id"))));
    QCOMPARE(pTable->selection(0), slDates.size());
}

void CTestTable::show()
{
    pTable->resize(500, 200);
    pTable->show();
    QVERIFY(QTest::qWaitForWindowActive(pTable.get()));
}

void CTestTable::toggleColumns(const QStringList& slNames)
{
    for (const QString& sName : slNames)
        pTable->changeColumn(int(pTable->columns().indexOf(sName)));
}

QStringList CTestTable::picture()
{
    return pictures::table(*static_cast<QTableView&>(*pTable).model());
}

QRect CTestTable::cell(int iRow, int iColumn)
{
    return pTable->visualRect(static_cast<QTableView&>(*pTable).model()->index(iRow, iColumn));
}

void CTestTable::recordCurrentTitles(QStringList& slTitles)
{
    QObject::connect(pTable.get(), qOverload<QSqlRecord*>(&CDataTable::currentChanged),
        [&slTitles](QSqlRecord* pRecord) { slTitles << pRecord->value(QStringLiteral("title")).toString(); });
}

void CTestTable::recordDoubleClicks(QStringList& slClicks)
{
    QObject::connect(pTable.get(), qOverload<int, int, int, const QPoint&>(&CDataTable::doubleClicked),
        [&slClicks](int iRow, int iColumn, int iButton, const QPoint& oPos) {
            slClicks << QStringLiteral("%1, %2, %3, %4, %5")
                            .arg(iRow)
                            .arg(iColumn)
                            .arg(iButton)
                            .arg(oPos.x())
                            .arg(oPos.y());
        });
}
