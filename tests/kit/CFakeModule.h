// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "modules/fakemodule.h"

#include <QByteArrayList>
#include <QtGlobal>

#include <dlfcn.h>

/// The test's view of the module without a window (fakemodule.c), in this process. It starts anew with each
/// object; the process must not have a browser open then.
class CFakeModule
{
public:
    CFakeModule()
        : pLibrary(dlopen(QTUTILS_FAKE_MODULE, RTLD_NOW | RTLD_LOCAL))
        , pFake(static_cast<fake*>(dlsym(pLibrary, "fake")))
    {
        for (const char* pcVariable : {"MYSQL_HOST", "MYSQL_USER", "MYSQL_PWD"})
            qputenv(pcVariable, "there");
    }
    ~CFakeModule() { dlclose(pLibrary); }
    CFakeModule(const CFakeModule&) = delete;
    CFakeModule& operator=(const CFakeModule&) = delete;

    fake* operator->() const { return pFake; }
    /// The next answers of getNumRows.
    void setAnswers(std::initializer_list<int> lRows)
    {
        pFake->iNumAnswers = 0;
        for (const int iRows : lRows)
            pFake->aiRows[pFake->iNumAnswers++] = iRows;
    }
    /// The lines of the log since the last look.
    QByteArrayList log()
    {
        QByteArrayList lLines = QByteArray(pFake->acLog).split('\n');
        lLines.removeAll({});
        pFake->acLog[0] = '\0';
        return lLines;
    }

private:
    void* pLibrary;
    fake* pFake;
};
