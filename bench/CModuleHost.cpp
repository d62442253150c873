// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CModuleHost.h"

#include "settle.h"
#include "workerloop.h"

#include <array>
#include <cstdlib>

#include <dlfcn.h>

namespace {

constexpr int LongestDate = 64;

// The module reads texts and numbers only, but the slots are not constant.
template <typename T> void* slot(const T* pValue)
{
    return const_cast<T*>(pValue);
}

} // namespace

CModuleHost::CModuleHost()
    : pModule(dlopen(std::getenv("QTUTILS_MODULE"), RTLD_NOW | RTLD_LOCAL))
{
    if (pModule == nullptr)
        workerloop::fail(dlerror());
    pfSelect = method("select");
    pfNumRows = method("getNumRows");
    pfPassNodeHierarchy = method("passNodeHierarchy");
}

CModuleHost::CModuleHost(const std::string& sSOMDatabase, const std::string& sSourceDatabase,
    const std::string& sSOMTable, Window eWindow)
    : CModuleHost()
{
    construct(sSOMDatabase, sSourceDatabase);
    setSOMTable(sSOMTable);
    if (eWindow == Window::Shown)
        show();
    numRows();
    settle();
}

void* CModuleHost::symbol(const std::string& sName) const
{
    void* pSymbol = dlsym(pModule, ("nodeBrowser_" + sName).c_str());
    if (pSymbol == nullptr)
        workerloop::fail(dlerror());
    return pSymbol;
}

CModuleHost::Call* CModuleHost::method(const std::string& sName) const
{
    return reinterpret_cast<Call*>(symbol(sName));
}

void CModuleHost::construct(const std::string& sSOMDatabase, const std::string& sSourceDatabase)
{
    std::array<void*, 2> apSlots{slot(sSOMDatabase.c_str()), slot(sSourceDatabase.c_str())};
    pHandle = reinterpret_cast<Construct*>(symbol("CNodeBrowser"))(nullptr, apSlots.data());
    if (pHandle == nullptr)
        workerloop::fail("no window");
}

void CModuleHost::free() const
{
    method("FREE_CNodeBrowser")(pHandle, nullptr);
}

void CModuleHost::setSOMTable(const std::string& sName) const
{
    std::array<void*, 1> apSlots{slot(sName.c_str())};
    method("setSOMTable")(pHandle, apSlots.data());
}

void CModuleHost::show() const
{
    method("show")(pHandle, nullptr);
}

void CModuleHost::select(int iNode) const
{
    std::array<void*, 1> apSlots{&iNode};
    pfSelect(pHandle, apSlots.data());
}

int CModuleHost::numRows() const
{
    int iRows = -1;
    std::array<void*, 1> apSlots{&iRows};
    pfNumRows(pHandle, apSlots.data());
    return iRows;
}

std::string CModuleHost::firstDate() const
{
    std::array<char, LongestDate> acDate{};
    std::array<void*, 1> apSlots{acDate.data()};
    method("getFirstDateInSelection")(pHandle, apSlots.data());
    return acDate.data();
}

int CModuleHost::firstDateInFrame() const
{
    int iMinutes = -1;
    std::array<void*, 1> apSlots{&iMinutes};
    method("getFirstDateInFrame")(pHandle, apSlots.data());
    return iMinutes;
}

// NOLINTNEXTLINE(readability-non-const-parameter): the module writes there
void CModuleHost::fillDate(int* piMinutes) const
{
    std::array<void*, 1> apSlots{piMinutes};
    method("fillDate")(pHandle, apSlots.data());
}

// NOLINTNEXTLINE(readability-non-const-parameter): slots aren't const
void CModuleHost::setRowColors(float* pfColors) const
{
    std::array<void*, 1> apSlots{pfColors};
    method("setRowColors")(pHandle, apSlots.data());
}

void CModuleHost::markRow(const std::string& sDate) const
{
    std::array<void*, 2> apSlots{slot(sDate.c_str()), nullptr};
    method("markRow")(pHandle, apSlots.data());
}

void CModuleHost::passNodeHierarchy(const std::vector<int>& viChildren, int iNode, int iNumNodes) const
{
    static const int NoChild = 0;
    int iNumChildren = int(viChildren.size());
    std::array<void*, 4> apSlots{
        slot(viChildren.empty() ? &NoChild : viChildren.data()), &iNumChildren, &iNode, &iNumNodes};
    pfPassNodeHierarchy(pHandle, apSlots.data());
}

CModuleHost::Window windowOf(const std::string& sWord)
{
    return sWord == "shown" ? CModuleHost::Window::Shown : CModuleHost::Window::Hidden;
}
