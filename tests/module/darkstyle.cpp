// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// The ordinary style with a dark palette, as desktops have it: QT_STYLE_OVERRIDE=dark.

#include <QApplication>
#include <QProxyStyle>
#include <QStylePlugin>

namespace {

class CDarkStyle : public QProxyStyle
{
public:
    CDarkStyle()
        : QProxyStyle(QStringLiteral("fusion"))
    {
    }

    using QProxyStyle::polish;

    // Without a desktop's theme, Qt takes its own light palette for it, not the style's.
    void polish(QApplication* pApplication) override
    {
        QProxyStyle::polish(pApplication);
        QApplication::setPalette(palette());
    }

private:
    static QPalette palette()
    {
        const QColor oText(238, 238, 238);
        const QColor oWindow(49, 54, 59);
        QPalette oPalette(oText, oWindow, oWindow.lighter(150), oWindow.darker(200), oWindow.darker(125),
            oText, QColor(35, 38, 41));
        oPalette.setColor(QPalette::Highlight, QColor(48, 140, 198));
        oPalette.setColor(QPalette::HighlightedText, Qt::white);
        oPalette.setColor(QPalette::ToolTipBase, oWindow);
        oPalette.setColor(QPalette::ToolTipText, oText);
        for (const auto eRole : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            oPalette.setColor(QPalette::Disabled, eRole, QColor(140, 140, 140));
        return oPalette;
    }
};

} // namespace

class CDarkStylePlugin : public QStylePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QStyleFactoryInterface_iid FILE "darkstyle.json")

public:
    QStyle* create(const QString& /*sKey*/) override { return new CDarkStyle; }
};

#include "darkstyle.moc"
