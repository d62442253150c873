// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "json.h"

#include "CError.h"
#include "numbers.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace {

constexpr int iMaxDepth = 64;

std::string utf8(unsigned int iCharacter)
{
    const auto tail = [&](int iShift) { return char(0x80 | ((iCharacter >> iShift) & 0x3F)); };
    if (iCharacter < 0x80) {
        return {char(iCharacter)};
    }
    if (iCharacter < 0x800) {
        return {char(0xC0 | (iCharacter >> 6)), tail(0)};
    }
    return {char(0xE0 | (iCharacter >> 12)), tail(6), tail(0)};
}

class CParser
{
public:
    explicit CParser(std::string_view svJson)
        : svAll(svJson)
        , svRest(svJson)
    {
    }

    SJson whole()
    {
        SJson oValue = value(0);
        skipBlanks();
        if (!svRest.empty()) {
            fail("something follows the value");
        }
        return oValue;
    }

private:
    [[noreturn]] void fail(const std::string& sCause) const
    {
        throw CError("column " + std::to_string(svAll.size() - svRest.size() + 1) + ": " + sCause);
    }

    void skipBlanks() { svRest.remove_prefix(std::min(svRest.find_first_not_of(" \t\r\n"), svRest.size())); }

    bool take(std::string_view svWord)
    {
        skipBlanks();
        const bool bFound = svRest.substr(0, svWord.size()) == svWord;
        svRest.remove_prefix(bFound ? svWord.size() : 0);
        return bFound;
    }

    SJson value(int iDepth)
    {
        if (iDepth > iMaxDepth) {
            fail("nested too deep");
        }
        if (take("{")) {
            return object(iDepth);
        }
        if (take("[")) {
            return array(iDepth);
        }
        if (take("\"")) {
            return {EJson::eText, text(), {}, {}, {}};
        }
        return word();
    }

    SJson word()
    {
        for (const auto& [pcWord, eType] :
            {std::pair("null", EJson::eNull), {"true", EJson::eTrue}, {"false", EJson::eFalse}}) {
            if (take(pcWord)) {
                return {eType, {}, {}, {}, {}};
            }
        }
        const std::string sNumber(svRest.substr(0, svRest.find_first_not_of("+-.0123456789eE")));
        const auto oNumber = parseNumber(sNumber);
        if (!oNumber) {
            fail("no value");
        }
        svRest.remove_prefix(sNumber.size());
        return {EJson::eNumber, {}, {*oNumber}, {}, {}};
    }

    SJson array(int iDepth)
    {
        SJson oArray{EJson::eNumbers, {}, {}, {}, {}};
        if (take("]")) {
            return oArray;
        }
        do {
            add(oArray, value(iDepth + 1));
        } while (take(","));
        if (!take("]")) {
            fail("an array has no end");
        }
        return oArray;
    }

    // Numbers take little room as long as there is nothing else among them.
    static void add(SJson& oArray, SJson&& oValue)
    {
        if (oArray.is(EJson::eNumbers) && oValue.is(EJson::eNumber)) {
            oArray.vdNumbers.push_back(oValue.vdNumbers.front());
            return;
        }
        oArray.eType = EJson::eArray;
        for (const double dNumber : oArray.vdNumbers) {
            oArray.vElements.push_back({EJson::eNumber, {}, {dNumber}, {}, {}});
        }
        oArray.vdNumbers.clear();
        oArray.vElements.push_back(std::move(oValue));
    }

    SJson object(int iDepth)
    {
        SJson oObject{EJson::eObject, {}, {}, {}, {}};
        if (take("}")) {
            return oObject;
        }
        do {
            if (!take("\"")) {
                fail("no key");
            }
            oObject.vKeys.push_back(text());
            if (!take(":")) {
                fail("no value for \"" + oObject.vKeys.back() + "\"");
            }
            oObject.vElements.push_back(value(iDepth + 1));
        } while (take(","));
        if (!take("}")) {
            fail("an object has no end");
        }
        return oObject;
    }

    // Behind the opening sign.
    std::string text()
    {
        std::string sText;
        for (;;) {
            const std::size_t nPlain = std::min(svRest.find_first_of("\"\\"), svRest.size());
            sText += svRest.substr(0, nPlain);
            svRest.remove_prefix(nPlain);
            if (svRest.size() < 2 && svRest != "\"") {
                fail("a text has no end");
            }
            if (svRest[0] == '"') {
                svRest.remove_prefix(1);
                return sText;
            }
            sText += escaped();
        }
    }

    std::string escaped()
    {
        constexpr std::string_view svLetters = "\"\\/bfnrt";
        constexpr std::string_view svSigns = "\"\\/\b\f\n\r\t";
        const std::size_t nPlace = svLetters.find(svRest[1]);
        if (nPlace != std::string_view::npos) {
            svRest.remove_prefix(2);
            return {svSigns[nPlace]};
        }
        unsigned int iCharacter = 0;
        const std::string_view svDigits = svRest.substr(2, 4);
        const auto oRead =
            std::from_chars(svDigits.data(), svDigits.data() + svDigits.size(), iCharacter, 16);
        const bool bPair = iCharacter >= 0xD800 && iCharacter < 0xE000; // nobody writes those
        if (svRest[1] != 'u' || svDigits.size() != 4 || oRead.ptr != svDigits.data() + 4 || bPair) {
            fail("an escape can't be read");
        }
        svRest.remove_prefix(6);
        return utf8(iCharacter);
    }

    std::string_view svAll;
    std::string_view svRest;
};

} // namespace

const SJson* SJson::find(std::string_view svKey) const
{
    const auto pKey = std::find(vKeys.begin(), vKeys.end(), svKey);
    return pKey == vKeys.end() ? nullptr : &vElements[std::size_t(pKey - vKeys.begin())];
}

SJson parseJson(std::string_view svText)
{
    return CParser(svText).whole();
}
