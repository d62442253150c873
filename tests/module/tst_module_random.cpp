// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "CMapModel.h"
#include "datedhost.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

#include <memory>

/// Calls of a host in random order, with clicks between them; every answer is worked out beforehand. The
/// variable QTUTILS_SEED repeats a run that failed, QTUTILS_CALLS makes a longer one.
class TestModuleRandom : public QObject
{
    Q_OBJECT

private:
    struct Deed
    {
        int iWeight; ///< out of the sum of all
        const char* pcName;
        void (TestModuleRandom::*pfDo)();
    };

private Q_SLOTS:
    void initTestCase()
    {
        const QByteArray oSeed = qgetenv("QTUTILS_SEED");
        uSeed = oSeed.isEmpty() ? QRandomGenerator::system()->generate() : oSeed.toUInt();
        oRandom.seed(uSeed);
        pModel = std::make_unique<CMapModel>(oRandom);
        oServer.sql(pModel->sql());
    }

    void everyAnswerIsRight()
    {
        const int iCalls = qEnvironmentVariable("QTUTILS_CALLS", QStringLiteral("3000")).toInt();
        QList<Deed> lAll;
        for (const Deed& oDeed : lDeeds)
            lAll.resize(lAll.size() + oDeed.iWeight, oDeed);
        begin();
        QByteArrayList lLast;
        for (int i = 0; i < iCalls && !QTest::currentTestFailed(); i++) {
            const Deed& oDeed = lAll[oRandom.bounded(lAll.size())];
            lLast << oDeed.pcName;
            (this->*oDeed.pfDo)();
            if (QTest::currentTestFailed())
                qWarning("QTUTILS_SEED=%u, call %d; the last ones: %s", uSeed, i,
                    lLast.last(std::min<qsizetype>(lLast.size(), 20)).join(", ").constData());
        }
        finish();
    }

private:
    void begin()
    {
        pHost = std::make_unique<CPlainHost>();
        pAnalyst = std::make_unique<CAnalyst>(*pHost, oScreen);
        pHost->load();
        construct();
    }

    void construct()
    {
        const QByteArray oTable = anyTable();
        pHost->call("setSOMTable", {"t:" + oTable});
        QVERIFY(pHost->construct().endsWith("window"));
        pModel->begin(oTable);
        oMark = "none";
        bFieldFilled = false;
        bBoxChecked = false;
        pAnalyst->showWindow();
        passHierarchy();
        // Until the first selection the dates are those of any one document.
        pHost->call("select", {"i:0"});
        pModel->select(0);
        oMark = "0";
    }

    void constructAnew()
    {
        pHost->announceErrors({"Terminating QApplication"});
        pHost->free();
        QCOMPARE(pHost->numRows(), -7777);
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        construct();
    }

    void constructTwice()
    {
        QCOMPARE(pHost->construct(), "same window");
        pHost->free();
    }

    void select()
    {
        const int iNode = oRandom.bounded(-1, CMapModel::Nodes + 1);
        pHost->call("select", {"i:" + QByteArray::number(iNode)});
        pModel->select(iNode);
        oMark = iNode >= 0 && iNode < CMapModel::Nodes ? QByteArray::number(iNode) : QByteArray("none");
    }

    void changeTable()
    {
        const QByteArray oTable = anyTable();
        const int iNode = oRandom.bounded(CMapModel::Nodes);
        pHost->announceErrors({"CNodeBrowser: Changed Table to " + oTable});
        pHost->call("setSOMTable", {"t:" + oTable});
        QCOMPARE(pHost->numRows(), pModel->numRows());
        pHost->call("select", {"i:" + QByteArray::number(iNode)});
        pModel->changeTable(oTable, iNode);
        oMark = QByteArray::number(iNode);
    }

    void show() { pHost->call("show"); }
    void askNumRows() { QCOMPARE(pHost->numRows(), pModel->numRows()); }

    void fillDate()
    {
        const int iRows = pModel->numRows();
        const QByteArray oResult = pHost->call("fillDate", {"oi:" + QByteArray::number(iRows + 1)});
        const QByteArray oMinutes = pModel->minutes();
        QCOMPARE(oResult, oMinutes + (iRows == 0 ? "-7777" : " -7777"));
        pHost->call("setRowColors", {"c:" + QByteArray::number(iRows + 1) + "x120,255,255"});
    }

    void mark()
    {
        const std::time_t tDate = pModel->anyTime(oRandom);
        const int iFrame = oRandom.bounded(-2, 1500);
        pHost->call("markRow",
            {"k:" + CMapModel::dateText(tDate, ' '),
                iFrame == -2 ? QByteArray("null") : "i:" + QByteArray::number(iFrame)});
        pModel->mark(tDate, iFrame);
    }

    void askFrame()
    {
        QCOMPARE(
            pHost->call("getFirstDateInFrame", {"oi:1"}), QByteArray::number(pModel->firstMinuteInFrame()));
    }

    void askFirstDate()
    {
        const auto oDate = pModel->firstDate();
        if (!oDate)
            pHost->announceErrors(
                {"CTable: An Error occurred while getting first date in selection                ",
                    "SelectCursor is empty!"});
        QCOMPARE(pHost->call("getFirstDateInSelection", {"ot:20"}), oDate.value_or("untouched"));
    }

    void askDate()
    {
        const std::time_t tDate = pModel->anyTime(oRandom);
        QCOMPARE(pHost->call("dateToInt", {"t:" + CMapModel::dateText(tDate, ' '), "oi:1"}),
            QByteArray::number(CMapModel::roundToMinutes(double(tDate))));
    }

    // A binary tree, its nodes below the root in random order.
    void passHierarchy()
    {
        QList<int> lNodes(CMapModel::Nodes);
        std::iota(lNodes.begin(), lNodes.end(), 0);
        std::shuffle(lNodes.begin() + 1, lNodes.end(), oRandom);
        QByteArrayList lChildren(CMapModel::Nodes);
        for (int i = 1; i < CMapModel::Nodes; i++) {
            QByteArray& oList = lChildren[lNodes[(i - 1) / 2]];
            oList += (oList.isEmpty() ? "" : ",") + QByteArray::number(lNodes[i]);
        }
        treehost::pass(*pHost, lChildren);
        oMark = "none";
    }

    void look()
    {
        QCOMPARE(pAnalyst->table().size(), pModel->numRows() + 1);
        QCOMPARE(pAnalyst->text("texteditor"), pModel->text());
        QCOMPARE(pAnalyst->currentCell().split(' ').first(),
            pModel->currentRow() < 0 ? QByteArray("none") : QByteArray::number(pModel->currentRow()));
        QCOMPARE(pAnalyst->currentNode(), oMark);
    }

    // Never twice at one place: that would be a double click.
    void clickOnce(const QRect& oPlace)
    {
        bOnTheLeft = !bOnTheLeft;
        const int iHalf = oPlace.width() / 2;
        pAnalyst->click(bOnTheLeft ? oPlace.adjusted(0, 0, -iHalf, 0) : oPlace.adjusted(iHalf, 0, 0, 0));
    }

    void clickRow()
    {
        if (pModel->numRows() == 0)
            return;
        const int iRow = oRandom.bounded(pModel->numRows());
        const QRect oPlace = pAnalyst->cell(iRow, "title");
        if (oPlace.isEmpty())
            return;
        clickOnce(oPlace);
        pModel->clickRow(iRow);
        look();
    }

    void clickNode()
    {
        const int iNode = oRandom.bounded(CMapModel::Nodes);
        const QRect oPlace = pAnalyst->item(iNode);
        if (oPlace.isEmpty())
            return;
        clickOnce(oPlace);
        if (oMark != QByteArray::number(iNode))
            pModel->select(iNode);
        oMark = QByteArray::number(iNode);
        look();
    }

    void sort()
    {
        const QByteArray oColumn = QByteArrayList({"date", "title", "id"})[oRandom.bounded(3)];
        pAnalyst->choose("Sort", oColumn);
        pModel->sortBy(oColumn);
        look();
    }

    // The date is filled in once, with the box off; its changes select anew, too.
    void clickBox()
    {
        if (!bFieldFilled) {
            clickCheckBox();
            pAnalyst->press({"Tab"});
            pAnalyst->type(pModel->someDay());
            clickCheckBox();
            bFieldFilled = true;
        }
        clickCheckBox();
        bBoxChecked = !bBoxChecked;
        pModel->setFilter(bBoxChecked);
        look();
    }

    void clickCheckBox()
    {
        const QRect oBox = pAnalyst->part("checkdate");
        oScreen.click({oBox.left() + 8, oBox.center().y()});
    }

    void finish()
    {
        pHost->numRows();
        QByteArrayList lWarnings;
        lWarnings.resize(pModel->warnings(), datedhost::warning());
        pHost->announceOutput(lWarnings);
        pAnalyst.reset();
        pHost.reset();
    }

    QByteArray anyTable() { return pModel->tables()[oRandom.bounded(pModel->tables().size())]; }

    const QList<Deed> lDeeds{
        {250, "select", &TestModuleRandom::select},
        {200, "getNumRows", &TestModuleRandom::askNumRows},
        {100, "fillDate", &TestModuleRandom::fillDate},
        {150, "markRow", &TestModuleRandom::mark},
        {100, "getFirstDateInFrame", &TestModuleRandom::askFrame},
        {100, "getFirstDateInSelection", &TestModuleRandom::askFirstDate},
        {50, "dateToInt", &TestModuleRandom::askDate},
        {20, "setSOMTable", &TestModuleRandom::changeTable},
        {10, "show", &TestModuleRandom::show},
        {10, "passNodeHierarchy", &TestModuleRandom::passHierarchy},
        {10, "CNodeBrowser, FREE_CNodeBrowser", &TestModuleRandom::constructTwice},
        {1, "FREE_CNodeBrowser, CNodeBrowser", &TestModuleRandom::constructAnew},
        {10, "look", &TestModuleRandom::look},
        {3, "click on a row", &TestModuleRandom::clickRow},
        {3, "click on a node", &TestModuleRandom::clickNode},
        {2, "sort", &TestModuleRandom::sort},
        {2, "click on the box", &TestModuleRandom::clickBox},
    };

    quint32 uSeed = 0;
    QRandomGenerator oRandom;
    std::unique_ptr<CMapModel> pModel;
    std::unique_ptr<CPlainHost> pHost;
    std::unique_ptr<CAnalyst> pAnalyst;
    QByteArray oMark; ///< the tree's current node, or "none"
    bool bFieldFilled = false;
    bool bBoxChecked = false;
    bool bOnTheLeft = false;

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleRandom)
#include "tst_module_random.moc"
