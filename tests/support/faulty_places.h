#pragma once

#include <cstddef>
#include <string>

/// Folders in which the system refuses work. Where this process may mount, they are file systems of
/// their own, which vanish with it; elsewhere limits and rights of the process stand in. Under Wine
/// the system below mounts them, where scripts/windows/test has given the run mounts of its own.
namespace FaultyPlaces {

/// Finds out what is allowed. Comes first in main: threads that run already see no mounts.
/// TARNEL_NO_MOUNTS in the environment takes the stand-ins anyway.
void prepare();

/// What stands for a full disk and for a folder that can't be written, for the test's report.
const char* kind();

bool mayMount();

/// Whether there are any. Without, a test has nothing to work with and is skipped.
bool canBeMade();

} // namespace FaultyPlaces

/// While it lives, the empty folder is a disk of `bytes`. Its stand-in refuses any file to grow
/// beyond `bytes`, wherever it lies.
class CSmallDisk
{
public:
    CSmallDisk(std::string folder, std::size_t bytes);
    ~CSmallDisk();

    CSmallDisk(const CSmallDisk&) = delete;
    CSmallDisk& operator=(const CSmallDisk&) = delete;

private:
    std::string m_folder;
    unsigned long m_oldLimit = 0; ///< of the stand-in
};

/// While it lives, nothing below the folder can be written, not even by root.
class CReadOnlyPlace
{
public:
    explicit CReadOnlyPlace(std::string folder);
    ~CReadOnlyPlace();

    CReadOnlyPlace(const CReadOnlyPlace&) = delete;
    CReadOnlyPlace& operator=(const CReadOnlyPlace&) = delete;

private:
    std::string m_folder;
};

/// As TARNEL_TEST_MAIN, for tests with such places.
#define TARNEL_FAULTY_PLACES_TEST_MAIN(TestClass)                                                  \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        FaultyPlaces::prepare();                                                                   \
        QApplication application(argc, argv);                                                      \
        CTestEnvironment environment;                                                              \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
