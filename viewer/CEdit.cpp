// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CEdit.h"

#include "CTextView.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

namespace {

constexpr int BoxMargin = 5;
constexpr int BoxSpacing = 5;
constexpr int GroupMargin = 11;

} // namespace

CEdit::CEdit(QWidget* parent, const char* name)
    : QMainWindow(parent, Qt::Window)
{
    setObjectName(QLatin1String(name));
    auto* pBox = new QFrame(this);
    pBox->setObjectName(QStringLiteral("mainlayoutbox"));
    auto* pBoxLayout = new QVBoxLayout(pBox);
    pBoxLayout->setContentsMargins(BoxMargin, BoxMargin, BoxMargin, BoxMargin);
    pBoxLayout->setSpacing(BoxSpacing);
    setCentralWidget(pBox);

    auto* pBorder = new QGroupBox(pBox);
    pBorder->setObjectName(QStringLiteral("EditorBorder"));
    auto* pBorderLayout = new QVBoxLayout(pBorder);
    pBorderLayout->setContentsMargins(GroupMargin, GroupMargin, GroupMargin, GroupMargin);
    pTextEdit = new CTextView(pBorder, QStringLiteral("fullEdit"));
    pTextEdit->setFont(QFont(QStringLiteral("Arial"), 10));
    pBorderLayout->addWidget(pTextEdit);
    setText(QStringLiteral("no data recieved"));

    pBoxLayout->addWidget(pBorder);
    pBoxLayout->addWidget(makeButtonRow());
}

QWidget* CEdit::makeButtonRow()
{
    auto* pRow = new QWidget(centralWidget());
    auto* pRowLayout = new QHBoxLayout(pRow);
    pRowLayout->setObjectName(QStringLiteral("buttonlayout"));
    pRowLayout->setContentsMargins(0, 0, 0, 0);
    pRowLayout->setSpacing(0);
    auto* pExit = new QPushButton(QStringLiteral("Exit"), pRow);
    pExit->setObjectName(QStringLiteral("exit"));
    pExit->setFont(QFont(QStringLiteral("System"), 10, QFont::Bold));
    auto* pSpacer = new QLabel(pRow);
    pRowLayout->addWidget(pSpacer, 80);
    pRowLayout->addWidget(pExit, 20);
    connect(pExit, &QPushButton::clicked, this, &QWidget::close);
    return pRow;
}

void CEdit::setText(QString sText)
{
    pTextEdit->showText(sText);
}

bool CEdit::isFindKey(const QKeyEvent& oEvent) const
{
    if (oEvent.key() == Qt::Key_F)
        return oEvent.modifiers() == Qt::ControlModifier;
    return oEvent.key() == Qt::Key_F3 && !sLastSearch.isEmpty();
}

void CEdit::keyPressEvent(QKeyEvent* pEvent)
{
    if (!isFindKey(*pEvent)) {
        pEvent->ignore();
        QWidget::keyPressEvent(pEvent);
        return;
    }
    askAndFind();
    pEvent->accept();
}

void CEdit::askAndFind()
{
    bool bConfirmed = false;
    sLastSearch = QInputDialog::getText(this, QStringLiteral("Find"), QStringLiteral("Find what:"),
        QLineEdit::Normal, sLastSearch, &bConfirmed);
    if (bConfirmed && !sLastSearch.isEmpty())
        find(sLastSearch);
}

void CEdit::find(const QString& sText)
{
    if (pTextEdit->find(sText))
        pTextEdit->ensureCursorVisible();
    else
        QMessageBox::information(this, QStringLiteral("Find"), QStringLiteral("Nothing found"));
}
