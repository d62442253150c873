// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "numbers.h"
#include "oracle.h"
#include "value.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

using oracle::demand;

namespace {

void checkInt(const std::string& sText)
{
    const auto oInt = parseInt(sText);
    const long long iReference = std::strtoll(sText.c_str(), nullptr, 10);
    demand(!oInt || *oInt == iReference, "an int is that of the C library");
    demand(!oInt || parseNumber(sText) == double(*oInt), "an int is a number");
    const bool bFits = int(iReference) == iReference;
    demand(oInt || !bFits || std::to_string(iReference) != sText, "an int in its plain spelling is read");
}

void checkFloat(float fNumber)
{
    const std::string sText = numberText(fNumber);
    const auto oAgain = parseNumber(sText);
    demand(oAgain.has_value() == std::isfinite(fNumber), "a float's text is a number unless it is none");
    demand(!oAgain || float(*oAgain) == fNumber, "a float's text reads as the same float");
}

void checkNumber(const std::string& sText)
{
    const auto oNumber = parseNumber(sText);
    if (oNumber) {
        demand(std::isfinite(float(*oNumber)), "a number fits into a float");
        demand(std::strtod(sText.c_str(), nullptr) == *oNumber, "a number is that of the C library");
        checkFloat(float(*oNumber));
        printed(SNumbers{{*oNumber, 0.5}, {}});
    }
}

} // namespace

// The text is read, and its first bytes are a float to write.
int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    const std::string sText = oracle::text(pData, nSize);
    checkInt(sText);
    checkNumber(sText);
    demand(!describe(SWord{sText}).empty(), "a word is described");
    float fNumber = 0;
    if (nSize >= sizeof fNumber) {
        std::memcpy(&fNumber, pData, sizeof fNumber);
        checkFloat(fNumber);
    }
    return 0;
}
