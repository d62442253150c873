// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

class CArena;
class CClass;

/// The objects that the module has constructed and that are not freed yet.
class CInstances
{
public:
    /// The arena must outlive the instances.
    explicit CInstances(CArena& oBuffers)
        : oArena(oBuffers)
    {
    }

    /// Calls the constructor; false when it returned a null handle, which counts as no instance.
    /// A class may return the same handle again: each construction is freed once.
    bool construct(const CClass& oClass, void** ppArguments);

    /// The handle of the newest instance of the class; null when there is none.
    [[nodiscard]] void* handle(const CClass& oClass) const;

    /// Calls the destructor of the newest instance of the class, which must exist.
    void free(const CClass& oClass, void** ppArguments);

    /// Frees what is left, the newest first. A destructor that takes arguments gets null for each.
    void freeAll();

private:
    struct SInstance
    {
        const CClass* pClass;
        void* pHandle;
    };

    [[nodiscard]] std::vector<SInstance>::const_reverse_iterator newest(const CClass& oClass) const;

    CArena& oArena;
    std::vector<SInstance> vInstances;
};

/// Calls a constructor, which is `void* (void* pHandle, void** ppArgs)`; returns the handle.
void* callConstructor(void* pFunction, void* pHandle, void** ppArguments);

/// Calls an entry point other than a constructor: `void (void* pHandle, void** ppArgs)`.
void callEntryPoint(void* pFunction, void* pHandle, void** ppArguments);
