// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "places.h"

#include <filesystem>

SPlace defaultPlace()
{
    std::error_code oIgnored; // without the answer the module is looked for in the current folder
    const std::filesystem::path oHere =
        std::filesystem::read_symlink("/proc/self/exe", oIgnored).parent_path();
    const std::filesystem::path oInstalled = (oHere / QTUTILS_INSTALLED_MODULE).lexically_normal();
    if (!std::filesystem::exists(oHere / "qtutils.so", oIgnored)
        && std::filesystem::exists(oInstalled, oIgnored)) {
        return {oInstalled.string(), (oHere / QTUTILS_INSTALLED_DATA).lexically_normal().string()};
    }
    return {(oHere / "qtutils.so").string(), oHere.string()};
}
