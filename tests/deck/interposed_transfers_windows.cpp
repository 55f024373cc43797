#include "tests/deck/interposed_transfers.h"

#include "tests/support/native.h"

#include <windows.h>

#include <psapi.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

InterposedTransfers::Listener s_reads = nullptr;
InterposedTransfers::Listener s_writes = nullptr;
decltype(H5Dread)* s_theirRead = nullptr;
decltype(H5Dwrite)* s_theirWrite = nullptr;

herr_t heardRead(hid_t dataset, hid_t type, hid_t inMemory, hid_t inFile, hid_t list, void* buffer)
{
    s_reads(dataset, inMemory, inFile);
    return s_theirRead(dataset, type, inMemory, inFile, list, buffer);
}

herr_t heardWrite(hid_t dataset, hid_t type, hid_t inMemory, hid_t inFile, hid_t list,
                  const void* buffer)
{
    s_writes(dataset, inMemory, inFile);
    return s_theirWrite(dataset, type, inMemory, inFile, list, buffer);
}

std::vector<HMODULE> loadedModules()
{
    std::vector<HMODULE> modules(1024);
    DWORD bytes = 0;
    ::EnumProcessModules(::GetCurrentProcess(), modules.data(),
                         DWORD(modules.size() * sizeof(HMODULE)), &bytes);
    modules.resize(bytes / sizeof(HMODULE));
    return modules;
}

/// A module as it lies in memory; its tables name places by their distance from its start.
class Module
{
public:
    explicit Module(HMODULE module)
        : m_start(reinterpret_cast<std::uintptr_t>(module))
    {
    }

    /// Lets all calls by that name go to `mine`. Returns where they went; 0 without any.
    std::uintptr_t redirect(const std::string& name, std::uintptr_t mine) const
    {
        std::uintptr_t theirs = 0;
        const DWORD imports = firstImport();
        if (imports == 0) {
            return theirs;
        }
        for (const auto* from = at<IMAGE_IMPORT_DESCRIPTOR>(imports); from->Name != 0; ++from) {
            if (from->OriginalFirstThunk == 0) {
                continue;
            }
            const auto* named = at<IMAGE_THUNK_DATA>(from->OriginalFirstThunk);
            auto* entry = at<IMAGE_THUNK_DATA>(from->FirstThunk);
            for (; named->u1.AddressOfData != 0; ++named, ++entry) {
                if (isNamed(*named, name)) {
                    theirs = std::uintptr_t(entry->u1.Function);
                    Native::makeWritable(entry, sizeof *entry);
                    entry->u1.Function = mine;
                }
            }
        }
        return theirs;
    }

private:
    template <class Table>
    Table* at(std::uintptr_t distance) const
    {
        return reinterpret_cast<Table*>(m_start + distance);
    }

    DWORD firstImport() const
    {
        const auto* const headers = at<IMAGE_NT_HEADERS>(DWORD(at<IMAGE_DOS_HEADER>(0)->e_lfanew));
        return headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    }

    bool isNamed(const IMAGE_THUNK_DATA& import, const std::string& name) const
    {
        return !IMAGE_SNAP_BY_ORDINAL(import.u1.Ordinal) &&
               name == at<IMAGE_IMPORT_BY_NAME>(import.u1.AddressOfData)->Name;
    }

    std::uintptr_t m_start;
};

template <class Function>
void redirectAll(const char* name, Function* mine, Function*& theirs)
{
    for (const HMODULE module : loadedModules()) {
        const std::uintptr_t before =
            Module(module).redirect(name, reinterpret_cast<std::uintptr_t>(mine));
        if (before != 0) {
            theirs = reinterpret_cast<Function*>(before);
        }
    }
}

} // namespace

// A module calls another's functions by the addresses in its table of imports.
void InterposedTransfers::listen(Listener reads, Listener writes)
{
    s_reads = reads;
    s_writes = writes;
    if (s_theirRead == nullptr) {
        redirectAll("H5Dread", heardRead, s_theirRead);
        redirectAll("H5Dwrite", heardWrite, s_theirWrite);
    }
}
