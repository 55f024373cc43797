#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>

#include <iostream>
#include <sstream>

/// Writes a file below `folder`, with the folders on the way to it.
inline void putFile(const QString& folder, const QString& name, const QByteArray& content = {})
{
    const QString path = QDir(folder).filePath(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("%s can't be written", qPrintable(path));
    }
}

inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

/// Keeps what is written to the standard error stream while it lives.
class CCapturedErrors
{
public:
    CCapturedErrors()
        : m_former(std::cerr.rdbuf(m_text.rdbuf()))
    {
    }
    ~CCapturedErrors() { std::cerr.rdbuf(m_former); }

    QString text() const { return QString::fromStdString(m_text.str()); }

private:
    std::ostringstream m_text;
    std::streambuf* m_former;
};
