// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CHostLife.h"

#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

namespace {

constexpr const char* Terminating = "Terminating QApplication";

// How long it takes about, in microseconds, what these have begun.
const std::map<QByteArray, int> Lengths{{"being constructed", 60000}, {"just freed", 5000},
    {"painting", 100000}, {"query runs", 1200000}, {"tree is built", 100000}};

void changeTable(CPlainHost& oHost, const QByteArray& oTable)
{
    oHost.call("setSOMTable", {"t:" + oTable});
    QTUTILS_WAIT_FOR(oHost.errors().contains("CNodeBrowser: Changed Table to " + oTable));
}

} // namespace

void CHostLife::prepare(const CPrivateServer& oServer)
{
    oServer.sql(QStringLiteral(
        "USE som; CREATE VIEW many AS SELECT 1 node, 0.5 dist, 1 + seq % 7 item FROM seq_1_to_100000; "
        "CREATE VIEW endless AS SELECT node, dist, item FROM news_train WHERE SLEEP(3600)=0"));
}

const std::map<QByteArray, CHostLife::Step>& CHostLife::steps()
{
    static const std::map<QByteArray, Step> Steps{
        {"being constructed", &CHostLife::construct},
        {"find dialog open", &CHostLife::openFind},
        {"fillDate waits", &CHostLife::fillDate},
        {"freed", &CHostLife::windUp},
        {"hidden", &CHostLife::start},
        {"just freed", &CHostLife::free},
        {"menu open", &CHostLife::openMenu},
        {"message box open", &CHostLife::openBox},
        {"never constructed", &CHostLife::load},
        {"painting", &CHostLife::paint},
        {"query runs", &CHostLife::query},
        {"question waits", &CHostLife::ask},
        {"server hangs", &CHostLife::queryForEver},
        {"shown", &CHostLife::show},
        {"tree is built", &CHostLife::buildTree},
        {"viewer open", &CHostLife::openViewer},
        {"web browser open", &CHostLife::openWebBrowser},
    };
    return Steps;
}

QByteArrayList CHostLife::names()
{
    QByteArrayList lNames;
    for (const auto& [oName, pfStep] : steps())
        lNames << oName;
    return lNames;
}

bool CHostLife::isHeldUp(const QByteArray& oName)
{
    return oName == "server hangs" || oName == "web browser open";
}

bool CHostLife::mayStillSpeak(const QByteArray& oName)
{
    return oName == "just freed" || oName == "tree is built";
}

void CHostLife::lead(const QByteArray& oName)
{
    QTUTILS_WAIT_FOR(oAnalyst.screen().shown().isEmpty()); // another host's windows are gone
    (this->*steps().at(oName))();
}

void CHostLife::giveAt(const QByteArray& oName, int iMoment, const QByteArrayList& lCommand)
{
    const auto pLength = Lengths.find(oName);
    if (pLength != Lengths.end() && iMoment > 0)
        oHost.give({"pass", QByteArray::number(pLength->second / Moments * iMoment)});
    oHost.give(lCommand);
}

void CHostLife::goOn(const QByteArray& oName)
{
    if (oName == "fillDate waits" || oName == "question waits")
        oHost.call("setRowColors", {"c:5x0,0,0"});
    if (oName == "message box open")
        oAnalyst.press({"Return"});
    if (oName == "message box open" || oName == "being constructed")
        oHost.command({"join", "1"});
    if (pBrowser)
        pBrowser->close();
}

void CHostLife::load()
{
    oHost.load();
}

void CHostLife::start()
{
    oHost.start();
}

void CHostLife::construct()
{
    oHost.load();
    oHost.call("setSOMTable", {"t:news_train"});
    oHost.command({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"});
}

void CHostLife::show()
{
    oAnalyst.startAt(1);
}

void CHostLife::openMenu()
{
    show();
    oAnalyst.click(oAnalyst.menuTitle("Show"));
    QTUTILS_WAIT_FOR(oAnalyst.openMenu().size() > 1);
}

void CHostLife::openViewer()
{
    show();
    oAnalyst.openViewer(0);
}

void CHostLife::openFind()
{
    openViewer();
    oAnalyst.askWhatToFind();
}

void CHostLife::openBox()
{
    oHost.load();
    oHost.command({"env", "MYSQL_PWD", "wrong"});
    oHost.announceOutput({"show error"});
    oHost.command({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"});
    QTUTILS_WAIT_FOR(oAnalyst.screen().isActive("SQL Error"));
    oHost.command({"env", "MYSQL_PWD", qgetenv("MYSQL_PWD")});
}

void CHostLife::openWebBrowser()
{
    pBrowser = std::make_unique<CFakeBrowser>(oHost, CFakeBrowser::State::Ready);
    show();
    oAnalyst.choose("Show", "URL");
    oAnalyst.doubleClickCell(0, "URL");
    QTUTILS_WAIT_FOR(pBrowser->calls().size() == 2);
}

void CHostLife::paint()
{
    show();
    changeTable(oHost, "many");
    oHost.call("select", {"i:1"});
    oHost.call("setRowColors", {"c:100000x120,255,255"});
    oHost.numRows();
    oAnalyst.clickCell(0, "title");
    oAnalyst.press({"End", "Prior", "Home", "Next"});
}

void CHostLife::query()
{
    start();
    changeTable(oHost, "many");
    oHost.call("select", {"i:1"});
}

void CHostLife::queryForEver()
{
    start();
    changeTable(oHost, "endless");
    oHost.call("select", {"i:1"});
    // The client library waits there; the window's own loop waits in another call.
    QTUTILS_WAIT_FOR(oHost.sleepsIn(oHost.threads().at(1), SYS_poll));
}

void CHostLife::buildTree()
{
    constexpr int Nodes = 20000;
    show();
    oHost.announceErrors(
        {"mirta_passNodeHierarchy: WARNING: Number of nodes has                    changed during runtime or "
         "you a not using this function                    in its planned way! The array containing all "
         "children                    for each node has been resized, but the data may be corrupted!",
            "Database is open. Commencing."});
    for (int i = 0; i < Nodes; i++)
        oHost.give({"call", "passNodeHierarchy",
            "n:" + QByteArray::number(2 * i + 1) + ',' + QByteArray::number(2 * i + 2),
            2 * i + 2 < Nodes ? "i:2" : "i:0", "i:" + QByteArray::number(i),
            "i:" + QByteArray::number(Nodes)});
    for (int i = 0; i < Nodes; i++)
        oHost.answer();
}

void CHostLife::fillDate()
{
    start();
    oHost.call("select", {"i:1"});
    oHost.call("fillDate", {"oi:5"});
}

void CHostLife::ask()
{
    fillDate();
    oHost.command({"start", "1", "call", "getNumRows", "oi:1"});
}

void CHostLife::free()
{
    show();
    oHost.announceErrors({Terminating});
    oHost.free();
}

void CHostLife::windUp()
{
    free();
    QTUTILS_WAIT_FOR(oHost.errors().contains(Terminating));
    QTUTILS_WAIT_FOR(oHost.sleepsIn(oHost.threads().at(1), SYS_futex)); // parked
}
