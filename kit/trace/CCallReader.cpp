// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CCallReader.h"

#include "hostmemory.h"
#include "jsontext.h"

#include <algorithm>
#include <utility>

namespace {

const std::string Unreadable = R"({"unreadable":true})";

constexpr std::size_t MostRows = 262'144; // whose dates are looked at when their number is not known
constexpr int MostChildren = 10'000'000; // the module takes no more
constexpr std::size_t ComponentsOfColor = 3;

std::string textOrUnreadable(const std::optional<std::string>& oText)
{
    return oText ? jsontext::text(*oText) : Unreadable;
}

template <typename T> std::string arrayOrUnreadable(const void* pMemory, std::size_t nLength)
{
    const std::vector<T> vElements = hostmemory::elements<T>(pMemory, nLength);
    return vElements.size() == nLength ? jsontext::array(vElements) : Unreadable;
}

} // namespace

CCallReader::CCallReader(const SFunction& oItsFunction, void** apArguments, int iKnownRows)
    : oFunction(oItsFunction)
    , vForms(oFunction.oPrototype->arguments())
    , bHasSlots(apArguments != nullptr)
    , iRows(iKnownRows)
    , vpSlots(hostmemory::elements<void*>(apArguments, vForms.size()))
{
    for (std::size_t n = 0; n < vpSlots.size(); n++) {
        if (vpSlots[n] == nullptr || !isResult(n))
            continue;
        if (vForms[n].eKind == EKind::eText)
            vResults.push_back({n, {}, hostmemory::text(static_cast<const char*>(vpSlots[n]))});
        else
            vResults.push_back({n, hostmemory::elements<int>(vpSlots[n], resultLength(n)), {}});
    }
}

// An int array is one if no other argument tells its length.
bool CCallReader::isResult(std::size_t nSlot) const
{
    const SArgument& oForm = vForms[nSlot];
    return oForm.eKind == EKind::eInts ? oForm.sName != "iaNodes" : oForm.sName == "pcFirstDateInSelection";
}

std::size_t CCallReader::resultLength(std::size_t nSlot) const
{
    const bool bRows = vForms[nSlot].sName == "piDate";
    return !bRows ? 1 : iRows >= 0 ? std::size_t(iRows) : MostRows;
}

std::string CCallReader::arguments() const
{
    std::vector<std::string> vValues;
    for (std::size_t n = 0; n < vForms.size(); n++)
        vValues.push_back(argument(n));
    return bHasSlots ? jsontext::array(vValues) : "null";
}

std::string CCallReader::argument(std::size_t nSlot) const
{
    if (nSlot >= vpSlots.size())
        return Unreadable;
    if (vpSlots[nSlot] == nullptr)
        return "null";
    if (isResult(nSlot))
        return "{}";
    switch (vForms[nSlot].eKind) {
    case EKind::eInt:
        return number(nSlot) ? std::to_string(*number(nSlot)) : Unreadable;
    case EKind::eText:
        return textOrUnreadable(hostmemory::text(static_cast<const char*>(vpSlots[nSlot])));
    case EKind::eInts:
        return intsArgument(nSlot);
    case EKind::eFloats:
        return floatsArgument(nSlot);
    }
    return Unreadable;
}

// The children of a node; the module doesn't look at those of a hierarchy that it refuses.
std::string CCallReader::intsArgument(std::size_t nSlot) const
{
    const int iChildren = number(nSlot + 1).value_or(0);
    const bool bRefused = iChildren > MostChildren || number(nSlot + 3).value_or(0) > MostChildren;
    return arrayOrUnreadable<int>(vpSlots[nSlot], bRefused ? 0 : std::size_t(std::max(iChildren, 0)));
}

std::string CCallReader::floatsArgument(std::size_t nSlot) const
{
    return arrayOrUnreadable<float>(vpSlots[nSlot], ComponentsOfColor * std::size_t(std::max(iRows, 0)));
}

std::optional<int> CCallReader::number(std::size_t nSlot) const
{
    const bool bThere = nSlot < vpSlots.size() && vpSlots[nSlot] != nullptr;
    const auto viValue = hostmemory::elements<int>(bThere ? vpSlots[nSlot] : nullptr, 1);
    return viValue.empty() ? std::nullopt : std::optional(viValue.front());
}

std::optional<int> CCallReader::firstNumber() const
{
    return number(0);
}

std::string CCallReader::results()
{
    std::vector<std::string> vTexts;
    for (const SResult& oResult : vResults)
        vTexts.push_back(result(oResult));
    return jsontext::array(vTexts);
}

std::string CCallReader::result(const SResult& oResult)
{
    const void* pMemory = vpSlots[oResult.nSlot];
    std::string sBefore;
    std::string sAfter;
    if (vForms[oResult.nSlot].eKind == EKind::eText) {
        sBefore = textOrUnreadable(oResult.sBefore);
        sAfter = textOrUnreadable(hostmemory::text(static_cast<const char*>(pMemory)));
    } else {
        auto viBefore = oResult.viBefore;
        auto viAfter = hostmemory::elements<int>(pMemory, viBefore.size());
        const std::size_t nLength = filledLength(viBefore, viAfter);
        viBefore.resize(nLength);
        viAfter.resize(nLength);
        sBefore = jsontext::array(viBefore);
        sAfter = jsontext::array(viAfter);
    }
    return "{\"before\":" + sBefore + ",\"after\":" + sAfter + '}';
}

// For dates: as many as the host knows to have rows. Where it has not asked, those up to the first one that
// was not written: behind the host's array is memory that others change.
std::size_t CCallReader::filledLength(const std::vector<int>& viBefore, const std::vector<int>& viAfter)
{
    if (viBefore.size() <= 1 || iRows >= 0)
        return viAfter.size();
    std::size_t nFilled = 1; // the first row's date is 0, which may have stood there before
    while (nFilled < viAfter.size() && viBefore[nFilled] != viAfter[nFilled])
        nFilled++;
    iRows = int(nFilled);
    return nFilled;
}
