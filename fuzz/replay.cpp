// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "oracle.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

// Runs a target once for each file of a folder: the main program where the compiler brings no fuzzer.
int main(int iCount, char** ppcArguments)
{
    if (iCount != 2 || !std::filesystem::is_directory(ppcArguments[1])) {
        std::fprintf(stderr, "usage: %s FOLDER\n", ppcArguments[0]);
        return 2;
    }
    std::vector<std::filesystem::path> vFiles;
    for (const auto& oEntry : std::filesystem::directory_iterator(ppcArguments[1])) {
        vFiles.push_back(oEntry.path());
    }
    std::sort(vFiles.begin(), vFiles.end());
    for (const auto& oFile : vFiles) {
        std::printf("%s\n", oFile.c_str());
        std::fflush(stdout); // names the file that ends the program
        std::ifstream oStream(oFile, std::ios::binary);
        const std::vector<char> vBytes{std::istreambuf_iterator<char>(oStream), {}};
        const std::vector<std::uint8_t> vInput(vBytes.begin(), vBytes.end());
        LLVMFuzzerTestOneInput(vInput.data(), vInput.size());
    }
    return vFiles.empty() ? 1 : 0;
}
