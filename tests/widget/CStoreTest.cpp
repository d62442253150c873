// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CStoreTest.h"

#include "data/somconnection.h"

#include <QTest>

using namespace Qt::StringLiterals;

void CStoreTest::initTestCase()
{
    oServer.load(u"news.sql"_s);
    oDatabase = somconnection::add(qEnvironmentVariable("MYSQL_HOST"), qEnvironmentVariable("MYSQL_USER"),
        qEnvironmentVariable("MYSQL_PWD"), u"news"_s);
    QVERIFY(somconnection::open(oDatabase));
}

void CStoreTest::cleanupTestCase()
{
    oDatabase = QSqlDatabase();
    somconnection::remove();
}
