// Leads the calls of a Windows function to a function of the test.
#pragma once

#include <QtGlobal>

#include <qt_windows.h>

#include <psapi.h>

#include <array>
#include <cstring>
#include <utility>
#include <vector>

/// Leads the calls of a Windows function to a function of the test for as long as the object lives.
///
/// A module calls what it takes from others through a table of addresses, its import address
/// table. The entries for the function, in the tables of the program and of every library that is
/// loaded, are changed and changed back; the function itself stays what it is, and original() calls
/// it.
template <typename Function> class ImportInterception
{
public:
    /// \a name is the exported name of the function, for example "CreateProcessW". A function
    /// that no module imports is a mistake of the test and ends it.
    ImportInterception(const char *name, Function *replacement)
    {
        std::array<HMODULE, 1024> modules{};
        DWORD size = 0;
        if (!K32EnumProcessModules(GetCurrentProcess(), modules.data(), sizeof modules, &size))
            qFatal("The test cannot list the modules of its process");
        for (size_t i = 0; i < size / sizeof(HMODULE); ++i)
            redirect(reinterpret_cast<char *>(modules.at(i)), name, replacement);
        if (entries.empty())
            qFatal("No module imports %s", name);
    }
    ~ImportInterception()
    {
        for (const auto &[entry, address] : entries)
            write(entry, address);
    }
    Q_DISABLE_COPY_MOVE(ImportInterception)

    Function *original() const { return reinterpret_cast<Function *>(entries.front().second); }

private:
    // The headers of a module and what they point to lie at distances from its start.
    template <typename Struct> static Struct *at(char *module, DWORD distance)
    {
        return reinterpret_cast<Struct *>(module + distance);
    }

    void redirect(char *module, const char *name, Function *replacement)
    {
        const auto *const dos = at<IMAGE_DOS_HEADER>(module, 0);
        const auto *const headers = at<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(dos->e_lfanew));
        const auto &imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        if (imports.Size == 0)
            return;
        auto *library = at<IMAGE_IMPORT_DESCRIPTOR>(module, imports.VirtualAddress);
        for (; library->Name != 0; ++library) {
            if (library->OriginalFirstThunk == 0)
                continue; // names no functions
            auto *named = at<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
            auto *address = at<IMAGE_THUNK_DATA>(module, library->FirstThunk);
            for (; named->u1.AddressOfData != 0; ++named, ++address) {
                if (!IMAGE_SNAP_BY_ORDINAL(named->u1.Ordinal)
                    && std::strcmp(nameOf(module, *named), name) == 0) {
                    entries.emplace_back(&address->u1.Function, address->u1.Function);
                    write(&address->u1.Function, reinterpret_cast<ULONG_PTR>(replacement));
                }
            }
        }
    }
    static const char *nameOf(char *module, const IMAGE_THUNK_DATA &import)
    {
        const auto distance = static_cast<DWORD>(import.u1.AddressOfData);
        return at<IMAGE_IMPORT_BY_NAME>(module, distance)->Name;
    }

    static void write(ULONG_PTR *entry, ULONG_PTR address)
    {
        DWORD previous = 0;
        if (!VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &previous))
            qFatal("The test cannot write to an import address table");
        *entry = address;
        VirtualProtect(entry, sizeof *entry, previous, &previous);
    }

    std::vector<std::pair<ULONG_PTR *, ULONG_PTR>> entries;
};
