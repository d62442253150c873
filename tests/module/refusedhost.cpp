// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "refusedhost.h"

#include "CAnalyst.h"
#include "moduletest.h"

void refusedhost::construct(CAnalyst& oAnalyst)
{
    CPlainHost& oHost = oAnalyst.host();
    oHost.load();
    oHost.call("setSOMTable", {"t:news_train"});
    oHost.announceOutput({"show error"});
    oHost.command({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"});
}

void refusedhost::checkBox(CAnalyst& oAnalyst, const QByteArray& oReason)
{
    QTUTILS_WAIT_FOR(oAnalyst.screen().isActive("SQL Error"));
    const QByteArray oText = oAnalyst.dialog();
    QVERIFY2(oText.startsWith("SQL Error: Could not open SOM Database!\n\n" + oReason), oText.constData());
    oAnalyst.press({"Return"});
    QCOMPARE(oAnalyst.host().command({"join", "1"}), "window");
    oAnalyst.host().call("select", {"i:1"});
    QCOMPARE(oAnalyst.host().numRows(), 0);
}
