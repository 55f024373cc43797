#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>

#include <cstddef>
#include <string>

/// What the same program looks like from outside on each platform.
namespace Native {

/// Whether a child ended as std::abort ends it: by a signal, or on Windows with an exit code.
bool isAbort(QProcess::ExitStatus status, int exitCode);

/// The bytes that a stream in text mode makes of `lines`: CR LF for each LF on Windows.
QByteArray inTextMode(QByteArray lines);

/// The lines that a stream in text mode has made `bytes` of.
QByteArray fromTextMode(QByteArray bytes);

/// As `fromTextMode` where all of the file was written in text mode; else the bytes themselves.
QByteArray fromTextFile(const QByteArray& bytes);

/// The Python that has h5py. On Windows it is the first on the path; under Wine that is
/// host_python.
QString python();

/// The settings of this process as they are stored, as text.
QByteArray storedSettings();

/// The name of the variable that says where temporary files go.
QString temporaryFolderVariable();

/// Whether a child that is ended takes along what it has started.
bool endsDescendants();

/// Whether a program without a window can be asked to end.
bool canAskToEnd();

/// What stands in front of the "/" of an absolute path.
QString drive();

/// What the name of a program ends in.
QString programSuffix();

/// A path of which the system can't say whether it exists: a link to itself that is made in
/// `folder` under `name`, or on Windows a device.
QString unaskablePath(const QString& folder, const QString& name);

/// A path that can't be removed while somebody reads `heldFile`: that file on Windows, a name that
/// is too long elsewhere.
std::string unremovablePath(const std::string& heldFile);

/// Puts a German locale in force, whose numbers have commas. `folder` is empty and stays.
bool useGermanNumbers(const QString& folder);

/// Lets constant data of the program be written. `data` has `size` bytes.
bool makeWritable(void* data, std::size_t size);

} // namespace Native

/// While it lives, somebody else has the file open: a reader keeps writers out, a writer all.
class CHeldFile
{
public:
    enum Holder { Reader, Writer };

    CHeldFile(const QString& path, Holder holder);
    ~CHeldFile();

    CHeldFile(const CHeldFile&) = delete;
    CHeldFile& operator=(const CHeldFile&) = delete;

    bool isHeld() const { return m_bHeld; }

private:
    bool m_bHeld = false;
    void* m_handle = nullptr;
    int m_descriptor = -1;
};

/// A regular file that other processes find and can't read while this lives.
class CUnreadableFile
{
public:
    explicit CUnreadableFile(const QString& path);
    ~CUnreadableFile();

    CUnreadableFile(const CUnreadableFile&) = delete;
    CUnreadableFile& operator=(const CUnreadableFile&) = delete;

private:
    void* m_handle = nullptr;
};

/// While it lives, a walk through the folder that holds `folder` can't open `folder`, not even the
/// administrator's.
class CClosedFolder
{
public:
    explicit CClosedFolder(const QString& folder);
    ~CClosedFolder();

    CClosedFolder(const CClosedFolder&) = delete;
    CClosedFolder& operator=(const CClosedFolder&) = delete;

private:
    void* m_handle = nullptr;
    unsigned long m_formerLimit = 0;
};
