#pragma once

#include <QByteArray>
#include <QTemporaryFile>

/// Catches what the process writes to one of its standard streams until it is asked for it. An
/// assertion that fails before would go the same way and fail without a word.
class CStreamCapture
{
public:
    enum Stream { Output = 1, Error = 2 };

    explicit CStreamCapture(Stream stream);
    ~CStreamCapture();

    CStreamCapture(const CStreamCapture&) = delete;
    CStreamCapture& operator=(const CStreamCapture&) = delete;

    /// What was written; ends the capture.
    QByteArray text();

private:
    void end();

    Stream m_stream;
    int m_saved = -1;
    QTemporaryFile m_file;
};
