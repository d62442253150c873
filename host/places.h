// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

/// A module that is loaded when the command line names none, and the folder that it finds its files in.
struct SPlace
{
    std::string sModule;
    std::string sFolder;
};

/// The module beside this program, or else the installed one.
SPlace defaultPlace();
