// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// What one would otherwise take: the toolkit's query model in its table view, made as wide as the texts of
// all rows. Arguments as those of select_module.cpp.

#include "memory.h"
#include "peer.h"
#include "workerloop.h"

#include <QApplication>
#include <QDateTime>
#include <QHeaderView>
#include <QSqlQueryModel>
#include <QTableView>

namespace {

void showTitleAndDate(QTableView& oView, const QSqlQueryModel& oModel)
{
    for (int i = 0; i < oModel.columnCount(); i++) {
        const QString sName = oModel.headerData(i, Qt::Horizontal).toString();
        oView.setColumnHidden(i, sName != QStringLiteral("title") && sName != QStringLiteral("date"));
    }
}

} // namespace

int main(int iArguments, char** apcArguments)
{
    QApplication oApplication(iArguments, apcArguments);
    const QSqlDatabase oDatabase = peer::connection(apcArguments[1]);
    QSqlQueryModel oModel;
    QTableView oView;
    oView.horizontalHeader()->setResizeContentsPrecision(-1); // all rows
    oView.setWordWrap(false);
    oView.setModel(&oModel);
    oView.resize(600, 500);
    if (qstrcmp(apcArguments[4], "shown") == 0)
        oView.show();
    QApplication::processEvents();
    const auto select = [&](const QString& sStatement) {
        oModel.setQuery(sStatement, oDatabase);
        while (oModel.canFetchMore())
            oModel.fetchMore();
        showTitleAndDate(oView, oModel);
        oView.resizeColumnsToContents();
    };
    CReport oReady;
    oReady.figure("own", double(memory::own()));
    oReady.figure("resident", double(memory::resident()));
    workerloop::serve(oReady, [&](const workerloop::Words& vsWords) {
        const QString sStatement = peer::documentsOf(apcArguments[2], apcArguments[3], vsWords.at(0));
        CReport oReport;
        memory::resetPeak();
        oReport.figure("time", workerloop::seconds([&] { select(sStatement); }));
        oReport.figure("peak", double(memory::peak()));
        QApplication::processEvents();
        oReport.figure("own", double(memory::own()));
        oReport.result("rows", oModel.rowCount());
        oReport.result("first",
            oModel.index(0, 3)
                .data()
                .toDateTime()
                .toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"))
                .toStdString());
        return oReport;
    });
    return 0;
}
