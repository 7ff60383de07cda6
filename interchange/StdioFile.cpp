#include "interchange/StdioFile.h"

#include "platform/base/Utf.h"

namespace {
constexpr size_t kStreamBufferSize = 4096;
}

BOOL CStdioFile::Open(const CString& path, UINT openFlags, CFileException* error) {
    DropBuffer();
    return CFile::Open(path, openFlags, error);
}

void CStdioFile::DropBuffer() {
    m_bufferPos = 0;
    m_bufferLen = 0;
}

BOOL CStdioFile::Fill() {
    if (m_buffer.size() != kStreamBufferSize)
        m_buffer.assign(kStreamBufferSize, 0);
    m_bufferPos = 0;
    m_bufferLen = CFile::Read(m_buffer.data(), static_cast<UINT>(m_buffer.size()));
    return m_bufferLen != 0;
}

int CStdioFile::GetRawByte() {
    if (m_bufferPos >= m_bufferLen && !Fill())
        return -1;
    return static_cast<unsigned char>(m_buffer[m_bufferPos++]);
}

int CStdioFile::GetByte() {
    int c = GetRawByte();
    if (c != '\r' || (m_openFlags & typeBinary) || !(m_openFlags & typeText))
        return c;
    int next = GetRawByte();
    if (next == '\n')
        return '\n';
    if (next >= 0)
        --m_bufferPos; // not a line end: the CR stays, the byte behind it is read next
    return c;
}

BOOL CStdioFile::ReadNarrowLine(std::string& out, size_t maxBytes) {
    out.clear();
    while (out.size() < maxBytes) {
        int c = GetByte();
        if (c < 0)
            break;
        out += static_cast<char>(c);
        if (c == '\n')
            break;
    }
    return out.empty() ? FALSE : TRUE;
}

BOOL CStdioFile::ReadWideLine(std::u16string& out) {
    out.clear();
    for (;;) {
        int low = GetRawByte();
        if (low < 0)
            break;
        int high = GetRawByte();
        if (high < 0)
            break;
        const auto unit = static_cast<char16_t>(low | (high << 8));
        out += unit;
        if (unit == u'\n')
            break;
    }
    return out.empty() ? FALSE : TRUE;
}

BOOL CStdioFile::ReadString(CString& line) {
    std::string bytes;
    std::string chunk;
    while (ReadNarrowLine(chunk, kStreamBufferSize)) {
        bytes += chunk;
        if (bytes.back() == '\n')
            break;
    }
    if (bytes.empty())
        return FALSE;
    if (bytes.back() == '\n')
        bytes.pop_back();
    line = CString(Utf8ToUtf16(bytes));
    return TRUE;
}

BOOL CStdioFile::ReadLineBytes(std::string& line, size_t maxBytes) {
    line.clear();
    bool any = false;
    for (int c = GetByte(); c >= 0; c = GetByte()) {
        any = true;
        if (c == '\n')
            break;
        if (line.size() < maxBytes)
            line += static_cast<char>(c);
    }
    return any ? TRUE : FALSE;
}

ULONGLONG CStdioFile::GetPosition() const {
    return CFile::GetPosition() - (m_bufferLen - m_bufferPos);
}

UINT CStdioFile::Read(void* buffer, UINT count) {
    auto* p = static_cast<char*>(buffer);
    UINT done = 0;
    while (done < count) {
        int c = GetRawByte();
        if (c < 0)
            break;
        p[done++] = static_cast<char>(c);
    }
    return done;
}

ULONGLONG CStdioFile::Seek(LONGLONG offset, UINT from) {
    if (from == current)
        offset -= static_cast<LONGLONG>(m_bufferLen - m_bufferPos);
    DropBuffer();
    return CFile::Seek(offset, from);
}

void CStdioFile::Close() {
    DropBuffer();
    CFile::Close();
}

void CStdioFile::Abort() {
    DropBuffer();
    CFile::Abort();
}
