#include "tests/deck/stream_capture.h"

#include <QFile>

#include <unistd.h>

#include <cstdio>
#include <iostream>

namespace {

void flushAll()
{
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
}

} // namespace

CStreamCapture::CStreamCapture(Stream stream)
    : m_stream(stream)
{
    flushAll();
    m_saved = dup(m_stream);
    if (m_file.open()) {
        dup2(m_file.handle(), m_stream);
    }
}

CStreamCapture::~CStreamCapture()
{
    end();
}

void CStreamCapture::end()
{
    if (m_saved == -1) {
        return;
    }
    flushAll();
    dup2(m_saved, m_stream);
    close(m_saved);
    m_saved = -1;
}

QByteArray CStreamCapture::text()
{
    end();
    QFile file(m_file.fileName());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
