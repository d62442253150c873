// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

/// A host of the built module: loads it by the path in QTUTILS_MODULE and calls its methods. Ends the program
/// with a line when something is missing.
class CModuleHost
{
public:
    enum class Window
    {
        Hidden,
        Shown
    };

    /// Loads the module; a window comes with construct().
    CModuleHost();
    /// Constructs, names the tables and settles.
    CModuleHost(const std::string& sSOMDatabase, const std::string& sSourceDatabase,
        const std::string& sSOMTable, Window eWindow);

    void construct(const std::string& sSOMDatabase, const std::string& sSourceDatabase);
    void free() const; ///< takes the construction back
    void setSOMTable(const std::string& sName) const;
    void show() const;
    void select(int iNode) const;
    int numRows() const;
    std::string firstDate() const;
    int firstDateInFrame() const;
    void fillDate(int* piMinutes) const;
    void setRowColors(float* pfColors) const;
    void markRow(const std::string& sDate) const; ///< the text must live until the next answered call
    void passNodeHierarchy(const std::vector<int>& viChildren, int iNode, int iNumNodes) const;

private:
    using Construct = void*(void*, void**);
    using Call = void(void*, void**);

    void* symbol(const std::string& sName) const;
    Call* method(const std::string& sName) const;

    void* pModule;
    void* pHandle = nullptr;
    Call* pfSelect;
    Call* pfNumRows;
    Call* pfPassNodeHierarchy;
};

/// What the second word of a program's arguments says: "shown" or "hidden".
CModuleHost::Window windowOf(const std::string& sWord);
