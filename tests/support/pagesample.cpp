// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "pagesample.h"

#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

QString pagesample::find(const QString& sPage, const QString& sText)
{
    QFile oPage(QStringLiteral(QTUTILS_TEST_DATA "/../../") + sPage);
    if (!oPage.open(QIODevice::ReadOnly))
        return {};
    const QString sWhole = QString::fromUtf8(oPage.readAll());
    static const QRegularExpression oBlock(u"^```\\w*\\n(.*?)^```$"_s,
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    QStringList slFound;
    for (const QRegularExpressionMatch& oMatch : oBlock.globalMatch(sWhole))
        if (oMatch.captured(1).contains(sText))
            slFound << oMatch.captured(1);
    return slFound.size() == 1 ? slFound.first() : QString();
}

QString pagesample::moved(QString sSample, const QList<std::pair<QString, QString>>& lPlaces)
{
    for (const auto& [sFrom, sTo] : lPlaces) {
        if (!sSample.contains(sFrom))
            return {};
        sSample.replace(sFrom, sTo);
    }
    return sSample;
}
