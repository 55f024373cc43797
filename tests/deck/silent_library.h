#pragma once

#include <H5Cpp.h>

/// While it lives, HDF5 prints none of its failures by itself: what is printed is the program's.
class CSilentLibrary
{
public:
    CSilentLibrary()
    {
        H5Eget_auto2(H5E_DEFAULT, &m_print, &m_stream);
        H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
    }
    ~CSilentLibrary() { H5Eset_auto2(H5E_DEFAULT, m_print, m_stream); }

    CSilentLibrary(const CSilentLibrary&) = delete;
    CSilentLibrary& operator=(const CSilentLibrary&) = delete;

private:
    H5E_auto2_t m_print = nullptr;
    void* m_stream = nullptr;
};
