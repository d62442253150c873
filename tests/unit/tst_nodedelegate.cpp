// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "tree/CNodeDelegate.h"

#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QPixmap>
#include <QStandardItemModel>
#include <QStyle>
#include <QTreeView>

using namespace Qt::StringLiterals;

/// Rows are as high as the toolkit's own.
class TestNodeDelegate : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        for (const int iHeight : {1, 13, 40})
            for (const QString& sText :
                {u"1"_s, u"snow, ice, winter"_s, u""_s, u"大雪"_s, u"😀"_s, u"a\u2028b"_s}) {
                QPixmap oSign(10, iHeight);
                oSign.fill(Qt::red);
                oModel.appendRow(new QStandardItem(QIcon(oSign), sText));
                oModel.appendRow(new QStandardItem(sText));
            }
        oView.setModel(&oModel);
        oView.setIconSize(QSize(10, 40));
    }

    void rowsAreAsHighAsTheToolkits() { compare(); }

    void everyFontHasItsOwnHeight()
    {
        compare();
        oView.setFont(QFont(u"Sans Serif"_s, 30));
        compare();
        oView.setFont(QFont(u"Sans Serif"_s, 8));
        compare();
    }

    void everySizeOfSignsHasItsOwnHeight()
    {
        compare();
        oView.setIconSize(QSize(10, 20));
        compare();
        oView.setIconSize(QSize(10, 40));
        compare();
    }

    void manySignsHaveTheirHeights()
    {
        for (int iHeight = 1; iHeight <= 300; iHeight++) {
            QPixmap oSign(10, iHeight);
            oSign.fill(Qt::blue);
            oModel.appendRow(new QStandardItem(QIcon(oSign), u"node"_s));
        }
        oView.setIconSize(QSize(10, 300));
        compare();
    }

private:
    void compare()
    {
        for (int iTime = 0; iTime < 2; iTime++)
            for (int iRow = 0; iRow < oModel.rowCount(); iRow++) {
                const QModelIndex oIndex = oModel.index(iRow, 0);
                const int iHeight = oDelegate.sizeHint(option(), oIndex).height();
                QCOMPARE(iHeight, QStyledItemDelegate().sizeHint(option(), oIndex).height());
            }
    }

    QStyleOptionViewItem option() const
    {
        QStyleOptionViewItem oOption;
        oOption.initFrom(&oView);
        oOption.widget = &oView;
        oOption.font = oView.font();
        oOption.decorationSize = oView.iconSize();
        return oOption;
    }

    QStandardItemModel oModel;
    QTreeView oView;
    CNodeDelegate oDelegate{nullptr};
};

QTUTILS_OFFSCREEN_TEST_MAIN(TestNodeDelegate)
#include "tst_nodedelegate.moc"
