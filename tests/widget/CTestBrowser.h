// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "binding/CHandover.h"
#include "binding/CNodeLists.h"
#include "browser/CNodeBrowser.h"

#include <QTest>

#include <memory>

class QMenu;
class QTreeView;

/// A browser window on the test's server, over the databases "som" and "news", with its hand-over. Takes its
/// connection and the viewers along when it goes.
class CTestBrowser
{
public:
    /// The password is that of the environment unless another one is given.
    explicit CTestBrowser(const QString& sPassword = qEnvironmentVariable("MYSQL_PWD"));
    ~CTestBrowser();
    CTestBrowser(const CTestBrowser&) = delete;
    CTestBrowser& operator=(const CTestBrowser&) = delete;

    CNodeBrowser* operator->() { return pBrowser.get(); }
    CNodeBrowser& operator*() { return *pBrowser; }

    /// Assignment table and source table, in the order of a start.
    void setTables(const QString& sSOMTable = QStringLiteral("news_train"),
        const QString& sSourceTable = QStringLiteral("document"));
    /// Shows the window and waits until it is on the screen and has the focus.
    void show();
    /// Carries a host's command out (numbers and payloads: commands.h).
    void send(int iCommand, void* pData = nullptr);
    /// As the host's command does; announces the tree's debug line.
    void passHierarchy(CNodeLists vviNodes);
    /// As the host's command does.
    void select(int iNode);

    template <typename Widget> Widget* child(const char* pcName)
    {
        auto* pWidget = pBrowser->findChild<Widget*>(QLatin1String(pcName));
        if (pWidget == nullptr)
            qFatal("no child %s", pcName);
        return pWidget;
    }
    CTable& table();
    QTreeView& tree();
    QStringList tablePicture();
    QStringList treePicture();
    QStringList menuPicture(const char* pcMenu);
    /// Opens a menu of the menu bar with the mouse and clicks an entry.
    void click(const char* pcMenu, const QString& sEntry);
    QString panelText();
    /// The middle of a table cell on the table's viewport.
    QPoint cell(int iRow, int iColumn);
    void clickCell(int iRow, int iColumn);
    void doubleClickCell(int iRow, int iColumn);
    /// The full-text viewers, open and closed ones, in no order.
    static QList<QWidget*> viewers();

    CHandover oHandover;

private:
    std::unique_ptr<CNodeBrowser> pBrowser;
};
