// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"

#include <QSqlDatabase>

/// Base of tests with a connection to the database "news" of a server of their own.
class CStoreTest : public CStrictTest
{
    Q_OBJECT

public Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

protected:
    CPrivateServer oServer;
    QSqlDatabase oDatabase;
};
