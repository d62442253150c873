// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTree.h"

#include "data/somconnection.h"
#include "tests/support/pictures.h"

#include <QTest>

CTestTree::CTestTree()
    : pTree(std::make_unique<CListView>(nullptr, "ListView"))
    , oModelTester(pTree->model(), QAbstractItemModelTester::FailureReportingMode::QtTest)
{
}

CTestTree::~CTestTree()
{
    pTree.reset();
    oDatabase = QSqlDatabase();
    somconnection::remove();
}

void CTestTree::setConnection(const QString& sPassword, const QString& sDatabase)
{
    oDatabase = somconnection::add(
        qEnvironmentVariable("MYSQL_HOST"), qEnvironmentVariable("MYSQL_USER"), sPassword, sDatabase);
    pTree->pSOMDB = &oDatabase;
}

void CTestTree::connectTo(const QString& sDatabase)
{
    setConnection(qEnvironmentVariable("MYSQL_PWD"), sDatabase);
    QVERIFY(somconnection::open(oDatabase));
}

void CTestTree::fill(const CNodeLists& vviNodes, const QString& sSOMTable)
{
    if (oDatabase.isOpen() && !sSOMTable.isNull())
        QTest::ignoreMessage(QtDebugMsg, "Database is open. Commencing.");
    pTree->fillList(&vviNodes, sSOMTable);
}

void CTestTree::show()
{
    pTree->resize(400, 300);
    pTree->show();
    QVERIFY(QTest::qWaitForWindowActive(pTree.get()));
}

QStringList CTestTree::picture() const
{
    return pictures::tree(*pTree);
}

QModelIndex CTestTree::item(int iNode) const
{
    return pTree->model()
        ->match(root(), Qt::DisplayRole, QString::number(iNode), 1, Qt::MatchExactly | Qt::MatchRecursive)
        .value(0);
}

QModelIndex CTestTree::root() const
{
    return pTree->model()->index(0, 0);
}

QPoint CTestTree::place(int iNode) const
{
    return pTree->visualRect(item(iNode)).center();
}
