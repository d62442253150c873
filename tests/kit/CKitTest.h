// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CFakeModule.h"

#include <qtutils/nodebrowser.h>

#include <QTest>

#include <memory>

/// Base of tests with a browser of the module without a window. Each test has its own.
class CKitTest : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void init()
    {
        pFake = std::make_unique<CFakeModule>();
        QCOMPARE(qtutils_open(QTUTILS_FAKE_MODULE, "som", "texts", &pBrowser), int(QTUTILS_OK));
        pFake->log();
    }
    void cleanup()
    {
        (*pFake)->bAnswers = 1;
        qtutils_close(pBrowser);
        pFake.reset();
    }

protected:
    std::unique_ptr<CFakeModule> pFake;
    qtutils_browser* pBrowser = nullptr;
};
