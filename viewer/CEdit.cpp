// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CEdit.h"

#include "CFoundTexts.h"
#include "CTextView.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>

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
    pTextEdit->setAccessibleName(QStringLiteral("Text of the document"));
    pTextEdit->setFont(QFont(QStringLiteral("Arial"), 10));
    pFound = std::make_unique<CFoundTexts>(*pTextEdit);
    connect(pTextEdit->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { pFound->mark(); });
    pTextEdit->viewport()->installEventFilter(this);
    pBorderLayout->addWidget(pTextEdit);
    setText(QStringLiteral("no data recieved"));

    pBoxLayout->addWidget(pBorder);
    pBoxLayout->addWidget(makeButtonRow());
}

// The editor goes after this part of the window, and may still move its scroll bar.
CEdit::~CEdit()
{
    pTextEdit->verticalScrollBar()->disconnect(this);
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
    showFound(QString());
}

QString CEdit::firstLine() const
{
    for (QTextBlock oLine = pTextEdit->document()->begin(); oLine.isValid(); oLine = oLine.next())
        if (QString sLine = oLine.text().simplified(); !sLine.isEmpty())
            return sLine;
    return {};
}

void CEdit::setTitle(const QString& sNewTitle)
{
    sTitle = sNewTitle;
    showCaption();
}

// "3 of 12" comes first: a window manager cuts off the end.
void CEdit::showCaption()
{
    QStringList slParts;
    if (pFound->count() > 0)
        slParts << QStringLiteral("%1 of %2").arg(pFound->current()).arg(pFound->count());
    if (!sTitle.isEmpty())
        slParts << sTitle;
    setWindowTitle(slParts.join(QStringLiteral(" - ")));
}

void CEdit::showFound(const QString& sText)
{
    pFound->search(sText);
    showCaption();
}

// Another size shows other lines.
bool CEdit::eventFilter(QObject* pObject, QEvent* pEvent)
{
    const bool bResized = pEvent->type() == QEvent::Resize && pObject == pTextEdit->viewport();
    const bool bDone = QMainWindow::eventFilter(pObject, pEvent);
    if (bResized)
        QMetaObject::invokeMethod(
            this, [this] { pFound->mark(); }, Qt::QueuedConnection); // when the lines are laid out anew
    return bDone;
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
    else
        showFound(QString());
}

void CEdit::find(const QString& sText)
{
    const bool bFound = pTextEdit->find(sText);
    if (bFound)
        pTextEdit->ensureCursorVisible();
    showFound(sText);
    if (!bFound)
        QMessageBox::information(this, QStringLiteral("Find"), QStringLiteral("Nothing found"));
}
