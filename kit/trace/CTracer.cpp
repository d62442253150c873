// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTracer.h"

#include "CCallReader.h"
#include "jsontext.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <optional>
#include <unistd.h>

namespace {

// The thread's number: 1 for the first one that calls, and so on.
int threadNumber()
{
    static std::atomic<int> iThreads = 0;
    thread_local const int iNumber = ++iThreads;
    return iNumber;
}

std::string handleText(const void* pHandle)
{
    std::array<char, 20> acText{};
    const auto iHandle = reinterpret_cast<std::uintptr_t>(pHandle);
    const auto oEnd = std::to_chars(acText.data(), acText.data() + acText.size(), iHandle, 16);
    return pHandle == nullptr ? "null" : "\"0x" + std::string(acText.data(), oEnd.ptr) + '"';
}

std::string textOrNull(const char* pcText)
{
    return pcText == nullptr ? "null" : jsontext::text(pcText);
}

std::string now()
{
    std::array<char, 32> acText{};
    std::tm oFields{};
    const std::time_t iTime = std::time(nullptr);
    gmtime_r(&iTime, &oFields);
    return {acText.data(), std::strftime(acText.data(), acText.size(), "%Y-%m-%dT%H:%M:%SZ", &oFields)};
}

std::string secondsBetween(
    std::chrono::steady_clock::time_point oFrom, std::chrono::steady_clock::time_point oTo)
{
    return jsontext::seconds(std::chrono::duration_cast<std::chrono::nanoseconds>(oTo - oFrom).count());
}

} // namespace

CTracer::CTracer()
    : oFile(std::getenv("QTUTILS_TRACE_FILE"))
{
    oFile.write(R"({"qtutils-trace":1,"started":)" + jsontext::text(now())
        + ",\"process\":" + std::to_string(getpid()) + ",\"module\":" + jsontext::text(oModule.path())
        + ",\"TZ\":" + textOrNull(std::getenv("TZ")) + '}');
}

void* CTracer::call(entry_point eFunction, void* pHandle, void** apArguments)
{
    const SFunction& oFunction = oModule.function(eFunction);
    if (oFunction.pFunction == nullptr)
        return nullptr;
    return oFile.isOpen() ? recordedCall(eFunction, pHandle, apArguments)
                          : passOn(eFunction, pHandle, apArguments);
}

void* CTracer::passOn(entry_point eFunction, void* pHandle, void** apArguments) const
{
    void* pFunction = oModule.function(eFunction).pFunction;
    if (eFunction == Construct)
        return reinterpret_cast<void* (*)(void*, void**)>(pFunction)(pHandle, apArguments);
    reinterpret_cast<void (*)(void*, void**)>(pFunction)(pHandle, apArguments);
    return nullptr;
}

// The call itself is made whatever happens to the lines.
void* CTracer::recordedCall(entry_point eFunction, void* pHandle, void** apArguments)
{
    const SFunction& oFunction = oModule.function(eFunction);
    const int iErrorBefore = errno;
    const long iCall = ++iCalls;
    std::optional<CCallReader> oReader;
    const auto oBegin = Clock::now();
    try {
        oReader.emplace(oFunction, apArguments, iRows);
        oFile.write("{\"call\":" + std::to_string(iCall) + ",\"at\":" + secondsBetween(oStart, oBegin)
            + ",\"thread\":" + std::to_string(threadNumber())
            + ",\"function\":" + jsontext::text(oFunction.sSymbol) + ",\"handle\":" + handleText(pHandle)
            + ",\"arguments\":" + oReader->arguments() + '}');
    } catch (const std::exception& oError) {
        oFile.giveUp(oError.what());
    }
    errno = iErrorBefore;
    void* pAnswer = passOn(eFunction, pHandle, apArguments);
    const int iErrorAfter = errno;
    if (oReader)
        writeAnswer(eFunction, iCall, oBegin, pAnswer, *oReader);
    errno = iErrorAfter;
    return pAnswer;
}

void CTracer::writeAnswer(
    entry_point eFunction, long iCall, Clock::time_point oBegin, void* pHandle, CCallReader& oReader)
{
    const std::string sTook = secondsBetween(oBegin, Clock::now());
    try {
        const std::string sHandle = eFunction == Construct ? ",\"handle\":" + handleText(pHandle) : "";
        const std::string sResults = oReader.results();
        noteRows(eFunction, oReader);
        oFile.write("{\"answer\":" + std::to_string(iCall) + ",\"took\":" + sTook + sHandle
            + (sResults == "[]" ? "" : ",\"results\":" + sResults) + '}');
    } catch (const std::exception& oError) {
        oFile.giveUp(oError.what());
    }
}

// Nobody but the host may ask the module, so the number of rows is what the host has learned of the node.
void CTracer::noteRows(entry_point eFunction, const CCallReader& oReader)
{
    if (eFunction == Select && iNode.exchange(oReader.firstNumber().value_or(-1)) != oReader.firstNumber())
        iRows = -1;
    else if (eFunction == GetNumRows)
        iRows = oReader.firstNumber().value_or(-1);
    else if (eFunction == FillDate)
        iRows = oReader.rows();
}
