// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTable.h"

#include "data/somconnection.h"
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
