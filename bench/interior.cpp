// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// Loaded into a host's process: finds the module's widgets by their names, and asks them in the interface's
// thread.

#include "pages.h"
#include "views.h"
#include "workerloop.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTableView>
#include <QTreeView>

#include <cstring>

namespace {

using namespace Qt::StringLiterals;

template <typename Widget> Widget& part(const QString& sName)
{
    for (QWidget* pWindow : QApplication::topLevelWidgets())
        if (auto* pWidget = pWindow->findChild<Widget*>(sName))
            return *pWidget;
    workerloop::fail("no " + sName.toStdString());
}

QTreeView& tree()
{
    return part<QTreeView>(u"ListView"_s);
}

// By the menu of the root, as the user does.
QAction& actionThatOpens()
{
    const QPoint oPlace = tree().visualRect(tree().model()->index(0, 0)).center();
    QContextMenuEvent oEvent(QContextMenuEvent::Mouse, oPlace, tree().viewport()->mapToGlobal(oPlace));
    QCoreApplication::sendEvent(tree().viewport(), &oEvent);
    auto& oMenu = part<QMenu>(u"popup"_s);
    oMenu.close();
    return *oMenu.actions().first();
}

double secondsToOpen()
{
    QAction& oAction = actionThatOpens();
    return views::secondsToOpen(tree(), [&] { oAction.trigger(); });
}

// "pages WIDTH HEIGHT".
std::string reportOfPages(const std::string& sQuestion)
{
    const QStringList slWords = QString::fromStdString(sQuestion).split(u' ');
    auto& oTable = part<QTableView>(u"table"_s);
    pages::fit(*oTable.viewport(), {slWords.at(1).toInt(), slWords.at(2).toInt()});
    return pages::reportOf(pages::tableOf(oTable)).line();
}

std::string answer(const std::string& sQuestion)
{
    if (sQuestion == "tree sum")
        return views::sumOf(*tree().model());
    if (sQuestion == "tree current")
        return tree().currentIndex().siblingAtColumn(0).data().toString().toStdString();
    if (sQuestion == "open tree")
        return std::to_string(secondsToOpen());
    if (sQuestion == "open nodes")
        return std::to_string(views::numOpen(tree()));
    if (sQuestion == "repaint")
        return std::to_string(pages::secondsToRepaint(*part<QTableView>(u"table"_s).viewport()));
    if (sQuestion.starts_with("pages"))
        return reportOfPages(sQuestion);
    workerloop::fail("no such question: " + sQuestion);
}

} // namespace

extern "C" Q_DECL_EXPORT void interior_ask(const char* pcQuestion, char* pcAnswer, std::size_t uSize)
{
    std::string sAnswer;
    QMetaObject::invokeMethod(
        qApp, [&] { sAnswer = answer(pcQuestion); }, Qt::BlockingQueuedConnection);
    if (sAnswer.size() >= uSize)
        workerloop::fail("the answer is too long");
    std::memcpy(pcAnswer, sAnswer.c_str(), sAnswer.size() + 1);
}
