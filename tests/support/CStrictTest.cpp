// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CStrictTest.h"

#include <QRegularExpression>
#include <QTest>

void CStrictTest::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}
