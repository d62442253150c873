// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// The tracer: a module with the functions of the real one, which it loads, calls and records. See the host
// guide.

#include "CTracer.h"

#include "binding/mirta_qtutils.h"

namespace {

CTracer& tracer()
{
    static auto* const pTracer = new CTracer; // never destroyed: the host may call while the process ends
    return *pTracer;
}

// With the tracer the real module is loaded, in the same thread and as early as without it.
[[gnu::constructor]] void load()
{
    tracer();
}

} // namespace

// In the module's own order. The descriptor becomes the real module's, and stays empty if that can't be
// loaded.
#if __has_cpp_attribute(gnu::no_reorder)
#define IN_THIS_ORDER [[gnu::no_reorder]]
#else
#define IN_THIS_ORDER
#endif

IN_THIS_ORDER const char* CNodeBrowser_def[16] = {"nodeBrowser_:"};
IN_THIS_ORDER const char* NAMESPACE = "qtutils";
IN_THIS_ORDER const char** CLASSES_qtutils[2] = {CNodeBrowser_def, nullptr};

void* nodeBrowser_CNodeBrowser(void* pHandle, void** apArguments)
{
    return tracer().call(Construct, pHandle, apArguments);
}

void nodeBrowser_FREE_CNodeBrowser(void* pHandle, void** apArguments)
{
    tracer().call(Free, pHandle, apArguments);
}

void nodeBrowser_select(void* pHandle, void** apArguments)
{
    tracer().call(Select, pHandle, apArguments);
}

void nodeBrowser_getNumRows(void* pHandle, void** apArguments)
{
    tracer().call(GetNumRows, pHandle, apArguments);
}

void nodeBrowser_fillDate(void* pHandle, void** apArguments)
{
    tracer().call(FillDate, pHandle, apArguments);
}

void nodeBrowser_dateToInt(void* pHandle, void** apArguments)
{
    tracer().call(DateToInt, pHandle, apArguments);
}

void nodeBrowser_setRowColors(void* pHandle, void** apArguments)
{
    tracer().call(SetRowColors, pHandle, apArguments);
}

void nodeBrowser_markRow(void* pHandle, void** apArguments)
{
    tracer().call(MarkRow, pHandle, apArguments);
}

void nodeBrowser_getFirstDateInFrame(void* pHandle, void** apArguments)
{
    tracer().call(GetFirstDateInFrame, pHandle, apArguments);
}

void nodeBrowser_getFirstDateInSelection(void* pHandle, void** apArguments)
{
    tracer().call(GetFirstDateInSelection, pHandle, apArguments);
}

void nodeBrowser_passNodeHierarchy(void* pHandle, void** apArguments)
{
    tracer().call(PassNodeHierarchy, pHandle, apArguments);
}

void nodeBrowser_setSOMTable(void* pHandle, void** apArguments)
{
    tracer().call(SetSOMTable, pHandle, apArguments);
}

void nodeBrowser_hideTable(void* pHandle, void** apArguments)
{
    tracer().call(HideTable, pHandle, apArguments);
}

void nodeBrowser_show(void* pHandle, void** apArguments)
{
    tracer().call(Show, pHandle, apArguments);
}

// No call of the host; the module's own thread makes it, and with a loader's luck by way of this name.
void* nodeBrowser_thread(void* pUnused)
{
    void* pFunction = tracer().module().symbol("nodeBrowser_thread");
    return pFunction == nullptr ? nullptr : reinterpret_cast<void* (*)(void*)>(pFunction)(pUnused);
}
