// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

class CClass;
class CModule;
class CPrototype;

/// What `.help` prints: the prototypes of the class and the built-ins.
std::string helpText(const CClass& oClass);

/// What `.help METHOD` prints: each argument with its name, kind and how to write it.
std::string helpText(const CPrototype& oPrototype);

/// What `--list` prints: each class with its prototypes and the symbols that serve them.
std::string moduleText(const CModule& oModule);
