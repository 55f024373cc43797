#include "tests/deck/interposed_transfers.h"

#include <dlfcn.h>

namespace {

InterposedTransfers::Listener s_reads = nullptr;
InterposedTransfers::Listener s_writes = nullptr;

template <class Function>
Function* theirs(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

void InterposedTransfers::listen(Listener reads, Listener writes)
{
    s_reads = reads;
    s_writes = writes;
}

// The program's own functions are found in front of those of a shared library.
extern "C" herr_t H5Dread(hid_t dataset, hid_t type, hid_t inMemory, hid_t inFile, hid_t list,
                          void* buffer)
{
    if (s_reads != nullptr) {
        s_reads(dataset, inMemory, inFile);
    }
    return theirs<decltype(H5Dread)>("H5Dread")(dataset, type, inMemory, inFile, list, buffer);
}

extern "C" herr_t H5Dwrite(hid_t dataset, hid_t type, hid_t inMemory, hid_t inFile, hid_t list,
                           const void* buffer)
{
    if (s_writes != nullptr) {
        s_writes(dataset, inMemory, inFile);
    }
    return theirs<decltype(H5Dwrite)>("H5Dwrite")(dataset, type, inMemory, inFile, list, buffer);
}
