// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

/// Base of the test classes: a warning that no test has announced with QTest::ignoreMessage() is a failure.
class CStrictTest : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void init();
};
