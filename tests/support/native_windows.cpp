#include "tests/support/native.h"

#include <windows.h>

#include <clocale>

namespace {

const wchar_t* wide(const QString& path)
{
    return reinterpret_cast<const wchar_t*>(path.utf16());
}

} // namespace

// 3: what the C runtime's abort exits with.
bool Native::isAbort(QProcess::ExitStatus status, int exitCode)
{
    return status == QProcess::NormalExit && exitCode == 3;
}

QByteArray Native::inTextMode(QByteArray lines)
{
    return lines.replace("\n", "\r\n");
}

QByteArray Native::fromTextMode(QByteArray bytes)
{
    return bytes.replace("\r\n", "\n");
}

QByteArray Native::fromTextFile(const QByteArray& bytes)
{
    const QByteArray lines = fromTextMode(bytes);
    return inTextMode(lines) == bytes ? lines : bytes;
}

QString Native::python()
{
    return QStringLiteral("python.exe");
}

QByteArray Native::storedSettings()
{
    HKEY key = nullptr;
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Harnwick Labs\\Tarnel\\Saving", 0, KEY_READ,
                        &key) != ERROR_SUCCESS) {
        return QByteArray();
    }
    QByteArray text;
    wchar_t name[256] = {};
    wchar_t value[1024] = {};
    for (DWORD index = 0;; ++index) {
        DWORD nameSize = 256;
        DWORD valueSize = sizeof value;
        if (::RegEnumValueW(key, index, name, &nameSize, nullptr, nullptr,
                            reinterpret_cast<BYTE*>(value), &valueSize) != ERROR_SUCCESS) {
            break;
        }
        text += QString::fromWCharArray(name).toUtf8() + "=" +
                QString::fromWCharArray(value).toUtf8() + "\n";
    }
    ::RegCloseKey(key);
    return text;
}

QString Native::temporaryFolderVariable()
{
    return QStringLiteral("TMP");
}

bool Native::endsDescendants()
{
    return false;
}

bool Native::canAskToEnd()
{
    return false;
}

QString Native::drive()
{
    return QStringLiteral("C:");
}

QString Native::programSuffix()
{
    return QStringLiteral(".exe");
}

QString Native::unaskablePath(const QString& /*folder*/, const QString& /*name*/)
{
    return QStringLiteral("\\\\.\\NUL");
}

std::string Native::unremovablePath(const std::string& heldFile)
{
    return heldFile;
}

bool Native::useGermanNumbers(const QString& /*folder*/)
{
    return std::setlocale(LC_ALL, "German") != nullptr;
}

bool Native::makeWritable(void* data, std::size_t size)
{
    DWORD before = 0;
    return ::VirtualProtect(data, size, PAGE_READWRITE, &before) != 0;
}

CHeldFile::CHeldFile(const QString& path, Holder holder)
    : m_handle(::CreateFileW(wide(path), holder == Reader ? GENERIC_READ : GENERIC_WRITE,
                             holder == Reader ? FILE_SHARE_READ : 0, nullptr, OPEN_EXISTING,
                             FILE_ATTRIBUTE_NORMAL, nullptr))
{
    m_bHeld = m_handle != INVALID_HANDLE_VALUE;
}

CHeldFile::~CHeldFile()
{
    ::CloseHandle(m_handle);
}

// Shared with nobody.
CUnreadableFile::CUnreadableFile(const QString& path)
    : m_handle(::CreateFileW(wide(path), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                             FILE_ATTRIBUTE_NORMAL, nullptr))
{
}

CUnreadableFile::~CUnreadableFile()
{
    ::CloseHandle(m_handle);
}

CClosedFolder::CClosedFolder(const QString& folder)
    : m_handle(::CreateFileW(wide(folder), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                             FILE_FLAG_BACKUP_SEMANTICS, nullptr))
{
}

CClosedFolder::~CClosedFolder()
{
    ::CloseHandle(m_handle);
}
