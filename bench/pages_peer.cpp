// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// What one would otherwise take: the toolkit's table view over its query model, which gives the colours.
// Arguments: database and table of the map, database of the documents, width and height of the page.

#include "pages.h"
#include "peer.h"
#include "workerloop.h"

#include <QApplication>
#include <QColor>
#include <QDateTime>
#include <QHeaderView>
#include <QLocale>
#include <QScrollBar>
#include <QSqlQueryModel>
#include <QTableView>

namespace {

class CColoredModel : public QSqlQueryModel
{
public:
    QVariant data(const QModelIndex& oIndex, int iRole) const override
    {
        if (iRole == Qt::BackgroundRole)
            return pages::colorOf(oIndex.row());
        QVariant oValue = QSqlQueryModel::data(oIndex, iRole);
        if (iRole != Qt::DisplayRole || oValue.typeId() != QMetaType::QDateTime)
            return oValue;
        const QDateTime oTime = oValue.toDateTime();
        return oLocale.toString(oTime.date(), QLocale::ShortFormat) + QLatin1Char(' ')
            + oLocale.toString(oTime.time(), QLocale::ShortFormat);
    }

private:
    QLocale oLocale;
};

void setUp(QTableView& oView)
{
    oView.setWordWrap(false);
    oView.setFocusPolicy(Qt::NoFocus); // nor a frame around a cell
    oView.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    oView.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    oView.verticalHeader()->setMinimumSectionSize(1);
    oView.verticalHeader()->setDefaultSectionSize(pages::RowHeight);
    oView.show();
}

void showTitleAndDate(QTableView& oView)
{
    for (int i = 0; i < oView.model()->columnCount(); i++) {
        const QString sName = oView.model()->headerData(i, Qt::Horizontal).toString();
        oView.setColumnHidden(i, sName != QStringLiteral("title") && sName != QStringLiteral("date"));
        oView.setColumnWidth(i, sName == QStringLiteral("title") ? 700 : 100);
    }
}

} // namespace

int main(int iArguments, char** apcArguments)
{
    QApplication oApplication(iArguments, apcArguments);
    const QSqlDatabase oDatabase = peer::connection(apcArguments[1]);
    const QSize oPage(std::stoi(apcArguments[4]), std::stoi(apcArguments[5]));
    CColoredModel oModel;
    QTableView oView;
    oView.setModel(&oModel);
    setUp(oView);
    std::string sSelected;
    workerloop::serve({}, [&](const workerloop::Words& vsWords) {
        if (sSelected != vsWords.at(0)) {
            sSelected = vsWords.at(0);
            oModel.setQuery(peer::documentsOf(apcArguments[2], apcArguments[3], sSelected), oDatabase);
            while (oModel.canFetchMore())
                oModel.fetchMore();
            showTitleAndDate(oView);
            pages::fit(*oView.viewport(), oPage);
        }
        return pages::reportOf(pages::tableOf(oView));
    });
    return 0;
}
