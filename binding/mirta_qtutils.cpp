// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "mirta_qtutils.h"

#include "CUserInterfaceThread.h"
#include "calllog.h"
#include "commands.h"
#include "exitguard.h"
#include "nodehierarchy.h"

#include "data/datetext.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <new>

namespace {

/// What the host has asked for so far. Never destroyed: hosts may call while the process ends.
struct HostState
{
    std::mutex oMutex; ///< lets constructions and destructions take turns
    int BrowserCounter = 0;
    CNodeBrowser* pNodeBrowser = nullptr;

    std::mutex oTableMutex;
    std::optional<std::string> gpcSOMTable; ///< the last table name, until the last destruction
};

HostState& state()
{
    static auto* pState = new HostState;
    return *pState;
}

CUserInterfaceThread& userInterface()
{
    return CUserInterfaceThread::instance();
}

template <typename T> T* slot(void** apArguments, int iSlot)
{
    return apArguments == nullptr ? nullptr : static_cast<T*>(apArguments[iSlot]);
}

std::string textSlot(void** apArguments, int iSlot)
{
    const char* pcText = slot<char>(apArguments, iSlot);
    return pcText == nullptr ? std::string() : std::string(pcText);
}

void post(int iCommand, void* pData = nullptr, std::shared_ptr<const void> pOwned = nullptr)
{
    if (exitguard::isChild())
        return;
    userInterface().commandPost().post(iCommand, pData, std::move(pOwned));
}

/// Posts a command whose payload is the host's result, and waits for the answer.
void ask(int iCommand, void* pResult, CHandover::After eAfter = CHandover::After::GoesOn)
{
    if (pResult != nullptr && !exitguard::isChild())
        userInterface().handover().ask(
            [&] { return userInterface().commandPost().post(iCommand, pResult); }, eAfter);
}

void askNumber(const char* pcCall, int iCommand, int* piResult)
{
    ask(iCommand, piResult);
    if (piResult != nullptr)
        calllog::tell("%s: %d", pcCall, *piResult);
}

/// The window's settings from environment and host; nothing if a variable is unset.
std::optional<BrowserSettings> settings(void** apArguments)
{
    const char* pcHost = std::getenv("MYSQL_HOST");
    const char* pcUser = std::getenv("MYSQL_USER");
    const char* pcPassword = std::getenv("MYSQL_PWD");
    if (pcHost == nullptr || pcUser == nullptr || pcPassword == nullptr)
        return std::nullopt;
    const std::lock_guard<std::mutex> lock(state().oTableMutex);
    return BrowserSettings{
        pcHost, pcUser, pcPassword, textSlot(apArguments, 0), textSlot(apArguments, 1), state().gpcSOMTable};
}

void storeSOMTable(std::optional<std::string> sTable)
{
    const std::lock_guard<std::mutex> lock(state().oTableMutex);
    state().gpcSOMTable = std::move(sTable);
}

// To standard error as the window's own messages. Not through Qt: the thread that touches Qt first counts as
// its main thread, and that must not be the host's.
void warnOfResize()
{
    std::fputs(
        "mirta_passNodeHierarchy: WARNING: Number of nodes has                    changed during runtime or "
        "you a not using this function                    in its planned way! The array containing all "
        "children                    for each node has been resized, but the data may be corrupted!\n",
        stderr);
}

// More would be a mistake, and take all the memory there is.
constexpr int MostNodes = 10'000'000;

void storeChildren(const int* iaNodes, int iNumChildren, int iNode, int iNumNodes)
{
    if (iNumNodes > MostNodes || iNumChildren > MostNodes) {
        std::fprintf(stderr, "qtutils: a hierarchy of %d nodes, with %d children of node %d, is too large\n",
            iNumNodes, iNumChildren, iNode);
        return;
    }
    const auto oPassed = nodehierarchy::pass(iaNodes, iNumChildren, iNode, iNumNodes);
    if (oPassed.bResized)
        warnOfResize();
    if (!oPassed.bComplete)
        return;
    const auto pvviNodes = nodehierarchy::current();
    post(commands::PassNodeHierarchy, const_cast<CNodeLists*>(pvviNodes.get()), pvviNodes);
}

} // namespace

// Their addresses ascend in this order, which is part of the contract. Other compilers keep it unasked.
#if __has_cpp_attribute(gnu::no_reorder)
#define IN_THIS_ORDER [[gnu::no_reorder]]
#else
#define IN_THIS_ORDER
#endif

IN_THIS_ORDER const char* CNodeBrowser_def[16] = {
    "nodeBrowser_:",
    "CNodeBrowser(char *pcSOMDB, char *pcSourceDB)",
    "FREE_CNodeBrowser()",
    "void select(int iSelection)",
    "void getNumRows(int* piNumRows)",
    "void fillDate(int* piDate)",
    "void dateToInt(char* pcDateIn, int* piDateOut)",
    "void setRowColors(float* pfRowColors)",
    "void markRow(char* pcDate, int iTimeFrame)",
    "void getFirstDateInFrame(int* piFirstDateInFrame)",
    "void getFirstDateInSelection(char* pcFirstDateInSelection)",
    "void passNodeHierarchy(int* iaNodes, int iNumChildren, int iNode, int iNumNodes)",
    "void setSOMTable(char *pcSOMTable)",
    "void hideTable()",
    "void show()",
    nullptr,
};
IN_THIS_ORDER const char* NAMESPACE = "qtutils";
IN_THIS_ORDER const char** CLASSES_qtutils[2] = {CNodeBrowser_def, nullptr};

void* nodeBrowser_CNodeBrowser(void* /*pHandle*/, void** apArguments)
{
    if (exitguard::isChild())
        return nullptr;
    HostState& oState = state();
    const std::lock_guard<std::mutex> lock(oState.oMutex);
    if (++oState.BrowserCounter > 1)
        return oState.pNodeBrowser;
    const auto oSettings = settings(apArguments);
    setenv("LANG", "de_DE", 1);
    if (oSettings)
        oState.pNodeBrowser = userInterface().construct(*oSettings);
    calllog::tell(R"(CNodeBrowser "%s" "%s": %s)", textSlot(apArguments, 0).c_str(),
        textSlot(apArguments, 1).c_str(), oState.pNodeBrowser != nullptr ? "a window" : "null");
    return oState.pNodeBrowser;
}

void nodeBrowser_FREE_CNodeBrowser(void* /*pHandle*/, void** /*apArguments*/)
{
    if (exitguard::isChild())
        return;
    HostState& oState = state();
    const std::lock_guard<std::mutex> lock(oState.oMutex);
    calllog::tell("FREE_CNodeBrowser");
    if (oState.BrowserCounter == 0 || --oState.BrowserCounter > 0)
        return;
    userInterface().commandPost().closeWith(commands::Terminate);
    // A window that waits in fillDate goes on, or it would never come to its end.
    userInterface().handover().close();
    oState.pNodeBrowser = nullptr;
    storeSOMTable(std::nullopt);
}

void nodeBrowser_select(void* /*pHandle*/, void** apArguments)
{
    const int* piNode = slot<int>(apArguments, 0);
    if (piNode == nullptr)
        return;
    calllog::tell("select %d", *piNode);
    const auto pNode = std::make_shared<int>(*piNode);
    post(commands::Select, pNode.get(), pNode);
}

void nodeBrowser_getNumRows(void* /*pHandle*/, void** apArguments)
{
    askNumber("getNumRows", commands::GetNumRows, slot<int>(apArguments, 0));
}

void nodeBrowser_fillDate(void* /*pHandle*/, void** apArguments)
{
    ask(commands::FillDate, slot<int>(apArguments, 0), CHandover::After::WaitsForRelease);
    calllog::tell("fillDate");
}

void nodeBrowser_dateToInt(void* /*pHandle*/, void** apArguments)
{
    const char* pcDate = slot<char>(apArguments, 0);
    int* piMinutes = slot<int>(apArguments, 1);
    if (pcDate == nullptr || piMinutes == nullptr)
        return;
    *piMinutes = datetext::hostMinutes(pcDate);
    calllog::tell("dateToInt \"%s\": %d", pcDate, *piMinutes);
}

void nodeBrowser_setRowColors(void* /*pHandle*/, void** apArguments)
{
    auto* pfRowColors = slot<float>(apArguments, 0);
    if (pfRowColors == nullptr || exitguard::isChild())
        return;
    calllog::tell("setRowColors");
    userInterface().handover().release();
    post(commands::SetRowColors, pfRowColors);
}

void nodeBrowser_markRow(void* /*pHandle*/, void** apArguments)
{
    char* pcDate = slot<char>(apArguments, 0);
    if (pcDate == nullptr)
        return;
    const int* piTimeFrame = slot<int>(apArguments, 1);
    const auto pRequest = std::make_shared<MarkRequest>(MarkRequest{pcDate, piTimeFrame ? *piTimeFrame : -1});
    calllog::tell("markRow \"%s\" %d", pcDate, pRequest->iTimeFrame);
    post(commands::MarkRow, pRequest.get(), pRequest);
}

void nodeBrowser_getFirstDateInFrame(void* /*pHandle*/, void** apArguments)
{
    askNumber("getFirstDateInFrame", commands::GetFirstDateInFrame, slot<int>(apArguments, 0));
}

void nodeBrowser_getFirstDateInSelection(void* /*pHandle*/, void** apArguments)
{
    ask(commands::GetFirstDateInSelection, slot<char>(apArguments, 0));
    calllog::tell("getFirstDateInSelection");
}

void nodeBrowser_passNodeHierarchy(void* /*pHandle*/, void** apArguments)
{
    const int* iaNodes = slot<int>(apArguments, 0);
    if (iaNodes == nullptr) {
        std::printf("mirta_passNodeHierarchy: passed Array is NULL!\n");
        std::fflush(stdout);
        return;
    }
    const int* piNumChildren = slot<int>(apArguments, 1);
    const int* piNode = slot<int>(apArguments, 2);
    const int* piNumNodes = slot<int>(apArguments, 3);
    if (piNumChildren == nullptr || piNode == nullptr || piNumNodes == nullptr)
        return;
    calllog::tell("passNodeHierarchy: %d children of node %d of %d", *piNumChildren, *piNode, *piNumNodes);
    try {
        storeChildren(iaNodes, *piNumChildren, *piNode, *piNumNodes);
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "qtutils: no memory for a hierarchy of %d nodes\n", *piNumNodes);
    }
}

void nodeBrowser_setSOMTable(void* /*pHandle*/, void** apArguments)
{
    const char* pcTable = slot<char>(apArguments, 0);
    if (pcTable == nullptr)
        return;
    calllog::tell("setSOMTable \"%s\"", pcTable);
    storeSOMTable(pcTable);
    const auto pTable = std::make_shared<std::string>(pcTable);
    post(commands::SetSOMTable, pTable->data(), pTable);
}

void nodeBrowser_hideTable(void* /*pHandle*/, void** /*apArguments*/)
{
    calllog::tell("hideTable");
    post(commands::HideTable);
}

void nodeBrowser_show(void* /*pHandle*/, void** /*apArguments*/)
{
    calllog::tell("show");
    post(commands::Show);
}

void* nodeBrowser_thread(void* /*pUnused*/)
{
    userInterface().runBrowser();
    return nullptr;
}
