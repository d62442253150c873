// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// A look at the user interface from inside the host's process: what is shown, and where. It sees what anybody
// can find by the widgets' names, reads it in the interface's own thread, and changes nothing.

#include "eventmarks.h"
#include "tests/support/pictures.h"
#include "tests/support/spelling.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDateTimeEdit>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QTableView>
#include <QTextEdit>
#include <QTreeView>

#include <cfenv>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>

namespace {

using namespace Qt::StringLiterals;

const QString Nowhere = u"nowhere"_s;
const QString None = u"none"_s;

QWidget* browser()
{
    for (QWidget* pWindow : QApplication::topLevelWidgets())
        if (pWindow->inherits("CNodeBrowser"))
            return pWindow;
    qFatal("probe: no browser");
}

// In the order of their opening. A hidden window's number may change, so the order is kept from look to look.
const QList<QWidget*>& viewers()
{
    static QList<QWidget*> lViewers;
    QList<QWidget*> lNew;
    for (QWidget* pWindow : QApplication::topLevelWidgets())
        if (pWindow->inherits("CEdit") && !lViewers.contains(pWindow))
            lNew << pWindow;
    std::sort(lNew.begin(), lNew.end(),
        [](const QWidget* pOne, const QWidget* pOther) { return pOne->winId() < pOther->winId(); });
    return lViewers += lNew;
}

// A name such as "texteditor", for a part of the browser, or "0/fullEdit", for a part of the first viewer.
template <typename Widget = QWidget> Widget* part(const QString& sName)
{
    const qsizetype iSlash = sName.indexOf(u'/');
    const QWidget* pWindow = iSlash < 0 ? browser() : viewers().value(sName.first(iSlash).toInt());
    auto* pWidget = pWindow == nullptr ? nullptr : pWindow->findChild<Widget*>(sName.mid(iSlash + 1));
    if (pWidget == nullptr)
        qFatal("probe: no %s", qPrintable(sName));
    return pWidget;
}

QString placeOf(const QWidget& oWidget, const QRect& oPlace)
{
    const QRect oSeen = oPlace & oWidget.rect();
    if (!oWidget.isVisible() || oSeen.isEmpty())
        return Nowhere;
    const QPoint oOrigin = oWidget.mapToGlobal(oSeen.topLeft());
    return u"%1 %2 %3 %4"_s.arg(oOrigin.x()).arg(oOrigin.y()).arg(oSeen.width()).arg(oSeen.height());
}

QString placeOf(const QWidget* pWidget)
{
    return pWidget == nullptr ? Nowhere : placeOf(*pWidget, pWidget->rect());
}

QTableView& table()
{
    return *part<QTableView>(u"table"_s);
}

int columnOf(const QAbstractItemModel& oModel, const QString& sHeader)
{
    for (int i = 0; i < oModel.columnCount(); i++)
        if (oModel.headerData(i, Qt::Horizontal) == sHeader)
            return i;
    return -1;
}

QString cell(const QStringList& slRowAndColumn)
{
    const QAbstractItemModel& oModel = *table().model();
    const QModelIndex oCell =
        oModel.index(slRowAndColumn[0].toInt(), columnOf(oModel, slRowAndColumn.value(1)));
    return placeOf(*table().viewport(), table().visualRect(oCell));
}

QString currentCell()
{
    const QModelIndex oCell = table().currentIndex();
    return oCell.isValid() ? u"%1 %2"_s.arg(oCell.row()).arg(oCell.column()) : None;
}

// First and last row in sight.
QString rowsInSight()
{
    const int iHeight = table().viewport()->height();
    return u"%1 %2"_s.arg(table().rowAt(0)).arg(table().rowAt(iHeight - 1));
}

QTreeView& tree()
{
    return *part<QTreeView>(u"ListView"_s);
}

QString item(const QString& sNode)
{
    const QAbstractItemModel& oModel = *tree().model();
    const auto lItems =
        oModel.match(oModel.index(0, 0), Qt::DisplayRole, sNode, 1, Qt::MatchExactly | Qt::MatchRecursive);
    if (lItems.isEmpty())
        return Nowhere;
    QRect oPlace = tree().visualRect(lItems.first());
    oPlace.setRight(tree().columnViewportPosition(0) + tree().columnWidth(0) - 1);
    return placeOf(*tree().viewport(), oPlace);
}

QString header(const QHeaderView& oHeader, const QString& sText)
{
    const int i = columnOf(*oHeader.model(), sText);
    return placeOf(*oHeader.viewport(),
        {oHeader.sectionViewportPosition(i), 0, oHeader.sectionSize(i), oHeader.height()});
}

QString entryOf(const QMenu* pMenu, const QString& sText)
{
    for (QAction* pAction : pMenu == nullptr ? QList<QAction*>() : pMenu->actions())
        if (pAction->text().remove(u'&') == sText)
            return placeOf(*pMenu, pMenu->actionGeometry(pAction));
    return Nowhere;
}

QString menuTitle(const QString& sText)
{
    const auto* pBar = part<QMenuBar>(u"mainBar"_s);
    for (QAction* pAction : pBar->actions())
        if (pAction->text().remove(u'&') == sText)
            return placeOf(*pBar, pBar->actionGeometry(pAction));
    return Nowhere;
}

const QMenu* openMenu()
{
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

QStringList openMenuPicture()
{
    return openMenu() == nullptr ? QStringList(None) : pictures::menu(*openMenu());
}

QString textOf(const QWidget* pWidget)
{
    if (const auto* pText = qobject_cast<const QTextEdit*>(pWidget))
        return pText->toPlainText();
    if (const auto* pDate = qobject_cast<const QDateTimeEdit*>(pWidget))
        return pDate->text();
    if (const auto* pGroup = qobject_cast<const QGroupBox*>(pWidget))
        return pGroup->title();
    if (const auto* pButton = qobject_cast<const QAbstractButton*>(pWidget))
        return pButton->text() + (pButton->isChecked() ? u" [x]"_s : u" [ ]"_s);
    qFatal("probe: no text in %s", qPrintable(pWidget->objectName()));
}

// "first-last: text".
QString selectedText(const QTextEdit& oText)
{
    const QTextCursor oCursor = oText.textCursor();
    return u"%1-%2: %3"_s.arg(oCursor.selectionStart())
        .arg(oCursor.selectionEnd())
        .arg(oCursor.selectedText());
}

// "title: text", and for a dialog that asks "title: text [what is typed]".
QString dialog()
{
    const QWidget* pDialog = QApplication::activeModalWidget();
    if (pDialog == nullptr)
        return None;
    QString sText = pDialog->windowTitle() + u": "_s;
    for (const QLabel* pLabel : pDialog->findChildren<QLabel*>())
        sText += pLabel->text();
    const auto* pLine = pDialog->findChild<QLineEdit*>();
    return sText + (pLine == nullptr ? QString() : u" [%1]"_s.arg(pLine->text()));
}

QString buttonOf(const QWidget* pDialog, const QString& sText)
{
    for (const auto* pButton :
        pDialog == nullptr ? QList<QAbstractButton*>() : pDialog->findChildren<QAbstractButton*>())
        if (pButton->text().remove(u'&') == sText)
            return placeOf(pButton);
    return Nowhere;
}

QStringList viewerStates()
{
    QStringList slStates;
    for (const QWidget* pViewer : viewers())
        slStates << (pViewer->isVisible() ? u"shown"_s : u"hidden"_s);
    return slStates;
}

QString focusName()
{
    const QWidget* pWidget = QApplication::focusWidget();
    if (pWidget == nullptr)
        return None;
    const qsizetype iViewer = viewers().indexOf(pWidget->window());
    const QString sViewer = iViewer < 0 ? QString() : u"%1/"_s.arg(iViewer);
    return sViewer
        + (pWidget->objectName().isEmpty() ? QString::fromLatin1(pWidget->metaObject()->className())
                                           : pWidget->objectName());
}

using Question = std::function<QStringList(const QStringList&)>;

const std::map<QString, Question>& questions()
{
    static const std::map<QString, Question> Questions{
        {u"table"_s, [](auto&) { return pictures::table(*table().model()); }},
        {u"cell"_s, [](auto& sl) { return QStringList(cell(sl)); }},
        {u"current"_s, [](auto&) { return QStringList(currentCell()); }},
        {u"modes"_s, [](auto&) { return QStringList(u"%1 %2"_s.arg(fegetround()).arg(fegetexcept())); }},
        {u"rows"_s, [](auto&) { return QStringList(rowsInSight()); }},
        {u"tree"_s, [](auto&) { return pictures::tree(tree()); }},
        {u"columns"_s, [](auto&) { return QStringList(pictures::table(*tree().model()).first()); }},
        {u"header"_s, [](auto& sl) { return QStringList(header(*tree().header(), sl[0])); }},
        {u"column"_s, [](auto& sl) { return QStringList(header(*table().horizontalHeader(), sl[0])); }},
        {u"item"_s, [](auto& sl) { return QStringList(item(sl[0])); }},
        {u"menu"_s, [](auto& sl) { return pictures::menu(*part<QMenu>(sl[0])); }},
        {u"title"_s, [](auto& sl) { return QStringList(menuTitle(sl[0])); }},
        {u"open menu"_s, [](auto&) { return openMenuPicture(); }},
        {u"entry"_s, [](auto& sl) { return QStringList(entryOf(openMenu(), sl[0])); }},
        {u"text"_s, [](auto& sl) { return QStringList(textOf(part(sl[0]))); }},
        {u"selected"_s, [](auto& sl) { return QStringList(selectedText(*part<QTextEdit>(sl[0]))); }},
        {u"font"_s, [](auto& sl) { return QStringList(part(sl[0])->font().toString()); }},
        {u"place"_s, [](auto& sl) { return QStringList(placeOf(part(sl[0]))); }},
        {u"viewers"_s, [](auto&) { return viewerStates(); }},
        {u"dialog"_s, [](auto&) { return QStringList(dialog()); }},
        {u"button"_s,
            [](auto& sl) { return QStringList(buttonOf(QApplication::activeModalWidget(), sl[0])); }},
        {u"focus"_s, [](auto&) { return QStringList(focusName()); }},
        {u"minimized"_s, [](auto&) { return QStringList(u"%1"_s.arg(table().window()->isMinimized())); }},
    };
    return Questions;
}

template <typename Action> void inInterface(Action action)
{
    QMetaObject::invokeMethod(qApp, action, Qt::BlockingQueuedConnection);
}

} // namespace

/// Answers a question; the lines of the answer are separated by vertical tabs. Each turn lets the event loop
/// go round: the events that are there at the first one, and what follows from them, are handled by the last.
/// With "spell" in front of the question the answer is one line; see spelling::spelled().
/// [host-thread]
extern "C" Q_DECL_EXPORT void probe_ask(int iFields, char** apcFields, char* pcAnswer, std::size_t uSize)
{
    QStringList slFields;
    for (int i = 0; i < iFields; i++)
        slFields << QString::fromUtf8(apcFields[i]);
    inInterface(eventmarks::send);
    bool bCome = false;
    while (!bCome)
        inInterface([&] { bCome = eventmarks::hasCome(); });
    for (int i = 0; i < 3; i++)
        inInterface([] {});
    const bool bSpelled = slFields.removeAll(u"spell"_s) > 0;
    QByteArray oAnswer;
    inInterface([&] {
        viewers();
        const auto pQuestion = questions().find(slFields.takeFirst());
        if (pQuestion == questions().end())
            qFatal("probe: no such question");
        QString sAnswer = pQuestion->second(slFields).join(u'\n');
        oAnswer = bSpelled ? spelling::spelled(sAnswer) : sAnswer.replace(u'\n', u'\v').toUtf8();
    });
    if (std::size_t(oAnswer.size()) >= uSize)
        qFatal("probe: the answer is too long");
    std::memcpy(pcAnswer, oAnswer.constData(), std::size_t(oAnswer.size()) + 1);
}
