// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "jsontext.h"

#include <array>
#include <charconv>
#include <cmath>

namespace jsontext {
namespace {

constexpr unsigned char FirstOfLatin1 = 0x80;

// Length of the UTF-8 sequence that a byte begins, by its leading bits; 0 for none.
std::size_t sequenceLength(unsigned char cFirst)
{
    if (cFirst < FirstOfLatin1)
        return 1;
    if (cFirst >= 0xC2 && cFirst < 0xE0)
        return 2;
    if (cFirst >= 0xE0 && cFirst < 0xF0)
        return 3;
    return cFirst >= 0xF0 && cFirst < 0xF5 ? 4 : 0;
}

// Neither too long forms nor surrogates nor characters beyond the last one.
bool isSecondByteRight(unsigned char cFirst, unsigned char cSecond)
{
    const bool bTooLong = (cFirst == 0xE0 && cSecond < 0xA0) || (cFirst == 0xF0 && cSecond < 0x90);
    const bool bNoCharacter = (cFirst == 0xED && cSecond >= 0xA0) || (cFirst == 0xF4 && cSecond >= 0x90);
    return !bTooLong && !bNoCharacter;
}

bool isSequence(std::string_view svBytes)
{
    const auto byte = [&](std::size_t n) { return static_cast<unsigned char>(svBytes[n]); };
    for (std::size_t n = 1; n < svBytes.size(); n++)
        if (byte(n) < FirstOfLatin1 || byte(n) >= 0xC0)
            return false;
    return svBytes.size() == 1 || isSecondByteRight(byte(0), byte(1));
}

bool isUtf8(std::string_view svText)
{
    while (!svText.empty()) {
        const std::size_t nLength = sequenceLength(static_cast<unsigned char>(svText[0]));
        if (nLength == 0 || nLength > svText.size() || !isSequence(svText.substr(0, nLength)))
            return false;
        svText.remove_prefix(nLength);
    }
    return true;
}

std::string escape(unsigned char cByte)
{
    constexpr std::string_view Digits = "0123456789abcdef";
    return {'\\', 'u', '0', '0', Digits[cByte / 16], Digits[cByte % 16]};
}

std::string quoted(std::string_view svText, bool bUtf8)
{
    std::string sQuoted = "\"";
    for (const char cSign : svText) {
        const auto cByte = static_cast<unsigned char>(cSign);
        if (cByte < ' ' || cByte == 0x7F || (cByte >= FirstOfLatin1 && !bUtf8))
            sQuoted += escape(cByte);
        else if (cSign == '"' || cSign == '\\')
            (sQuoted += '\\') += cSign;
        else
            sQuoted += cSign;
    }
    return sQuoted + '"';
}

template <typename T, typename Write> std::string joined(const std::vector<T>& vValues, Write write)
{
    std::string sText = "[";
    for (const T& value : vValues) {
        if (sText.size() > 1)
            sText += ',';
        sText += write(value);
    }
    return sText + ']';
}

} // namespace

std::string text(std::string_view svText)
{
    return isUtf8(svText) ? quoted(svText, true) : "{\"bytes\":" + quoted(svText, false) + '}';
}

std::string number(float fNumber)
{
    std::array<char, 32> acText{};
    const auto oEnd = std::to_chars(acText.data(), acText.data() + acText.size(), fNumber);
    const std::string sNumber(acText.data(), oEnd.ptr);
    return std::isfinite(fNumber) ? sNumber : '"' + sNumber + '"';
}

std::string seconds(long long iNanoseconds)
{
    const std::string sDecimals = std::to_string(1'000'000 + iNanoseconds / 1000 % 1'000'000);
    return std::to_string(iNanoseconds / 1'000'000'000) + '.' + sDecimals.substr(1);
}

std::string array(const std::vector<std::string>& vValues)
{
    return joined(vValues, [](const std::string& sValue) { return sValue; });
}

std::string array(const std::vector<int>& viValues)
{
    return joined(viValues, [](int iValue) { return std::to_string(iValue); });
}

std::string array(const std::vector<float>& vfValues)
{
    return joined(vfValues, number);
}

} // namespace jsontext
