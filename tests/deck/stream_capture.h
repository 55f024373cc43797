#pragma once

#include <QByteArray>
#include <QTemporaryFile>

/// Catches what the process writes to one of its standard streams while it lives.
class CStreamCapture
{
public:
    enum Stream { Output = 1, Error = 2 };

    explicit CStreamCapture(Stream stream);
    ~CStreamCapture();

    CStreamCapture(const CStreamCapture&) = delete;
    CStreamCapture& operator=(const CStreamCapture&) = delete;

    /// What was written so far.
    QByteArray text();

private:
    Stream m_stream;
    int m_saved = -1;
    QTemporaryFile m_file;
};
