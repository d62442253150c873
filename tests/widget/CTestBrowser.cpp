// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestBrowser.h"

#include "binding/CCommandEvent.h"
#include "binding/commands.h"
#include "data/somconnection.h"
#include "table/CTable.h"
#include "tests/support/pictures.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTextEdit>
#include <QTreeView>

CTestBrowser::CTestBrowser(const QString& sPassword)
    : pBrowser(std::make_unique<CNodeBrowser>(qEnvironmentVariable("MYSQL_HOST"),
        qEnvironmentVariable("MYSQL_USER"), sPassword, QStringLiteral("som"), QStringLiteral("news"),
        oHandover.flag(), oHandover.mutex(), oHandover.condition(), nullptr, "NodeBrowser"))
{
}

CTestBrowser::~CTestBrowser()
{
    qDeleteAll(viewers());
    pBrowser.reset();
    somconnection::remove();
}

void CTestBrowser::setTables(const QString& sSOMTable, const QString& sSourceTable)
{
    pBrowser->setSOMTable(sSOMTable);
    pBrowser->setSourceTable(sSourceTable);
}

void CTestBrowser::show()
{
    send(commands::Show);
    QVERIFY(QTest::qWaitForWindowActive(pBrowser.get()));
}

void CTestBrowser::send(int iCommand, void* pData)
{
    CCommandEvent oEvent(iCommand, pData, nullptr);
    QCoreApplication::sendEvent(pBrowser.get(), &oEvent);
}

void CTestBrowser::passHierarchy(CNodeLists vviNodes)
{
    if (!table().somTable().isNull())
        QTest::ignoreMessage(QtDebugMsg, "Database is open. Commencing.");
    send(commands::PassNodeHierarchy, &vviNodes);
}

void CTestBrowser::select(int iNode)
{
    send(commands::Select, &iNode);
}

CTable& CTestBrowser::table()
{
    return *child<CTable>("table");
}

QTreeView& CTestBrowser::tree()
{
    return *child<QTreeView>("ListView");
}

QStringList CTestBrowser::tablePicture()
{
    return pictures::table(*static_cast<QTableView&>(table()).model());
}

QStringList CTestBrowser::treePicture()
{
    return pictures::tree(tree());
}

QStringList CTestBrowser::menuPicture(const char* pcMenu)
{
    return pictures::menu(*child<QMenu>(pcMenu));
}

void CTestBrowser::click(const char* pcMenu, const QString& sEntry)
{
    auto* pMenu = child<QMenu>(pcMenu);
    auto* pBar = child<QMenuBar>("mainBar");
    QTest::mouseClick(pBar, Qt::LeftButton, {}, pBar->actionGeometry(pMenu->menuAction()).center());
    QVERIFY(pMenu->isVisible());
    for (QAction* pAction : pMenu->actions()) {
        if (pAction->text() == sEntry) {
            QTest::mouseClick(pMenu, Qt::LeftButton, {}, pMenu->actionGeometry(pAction).center());
            QVERIFY(!pMenu->isVisible());
            return;
        }
    }
    QFAIL(qPrintable(QStringLiteral("no entry ") + sEntry));
}

QString CTestBrowser::panelText()
{
    return child<QTextEdit>("texteditor")->toPlainText();
}

QPoint CTestBrowser::cell(int iRow, int iColumn)
{
    return table().visualRect(static_cast<QTableView&>(table()).model()->index(iRow, iColumn)).center();
}

void CTestBrowser::clickCell(int iRow, int iColumn)
{
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, cell(iRow, iColumn));
}

void CTestBrowser::doubleClickCell(int iRow, int iColumn)
{
    clickCell(iRow, iColumn);
    QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, cell(iRow, iColumn));
}

QList<QWidget*> CTestBrowser::viewers()
{
    QList<QWidget*> lViewers;
    for (QWidget* pWidget : QApplication::topLevelWidgets())
        if (pWidget->inherits("CEdit"))
            lViewers << pWidget;
    return lViewers;
}
