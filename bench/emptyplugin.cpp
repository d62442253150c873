// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// The least that a plug-in with a window is: a thread with the toolkit's application and an empty window. It
// has those of the module's functions that a host needs to load, construct and show it.

#include <QApplication>
#include <QWidget>

#include <future>
#include <thread>

namespace {

constexpr QSize WindowSize(650, 600);

QWidget* pWindow = nullptr;

void run(std::promise<void>& oMade)
{
    static int iArguments = 1;
    static char acName[] = "empty";
    static char* apcArguments[] = {acName, nullptr};
    [[maybe_unused]] auto* pApplication =
        new QApplication(iArguments, apcArguments); // for the life of the process
    pWindow = new QWidget;
    pWindow->resize(WindowSize);
    oMade.set_value();
    QApplication::exec();
}

} // namespace

#define ENTRY extern "C" __attribute__((visibility("default")))

ENTRY void* nodeBrowser_CNodeBrowser(void* /*pHandle*/, void** /*apArguments*/)
{
    std::promise<void> oMade;
    std::thread([&] { run(oMade); }).detach();
    oMade.get_future().wait();
    return pWindow;
}

ENTRY void nodeBrowser_show(void* /*pHandle*/, void** /*apArguments*/)
{
    QMetaObject::invokeMethod(pWindow, &QWidget::show, Qt::QueuedConnection);
}

ENTRY void nodeBrowser_select(void* /*pHandle*/, void** /*apArguments*/) { }

ENTRY void nodeBrowser_getNumRows(void* /*pHandle*/, void** apArguments)
{
    QMetaObject::invokeMethod(
        pWindow, [&] { *static_cast<int*>(apArguments[0]) = 0; }, Qt::BlockingQueuedConnection);
}

ENTRY void nodeBrowser_passNodeHierarchy(void* /*pHandle*/, void** /*apArguments*/) { }
