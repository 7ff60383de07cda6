#include "interchange/StdioFileEx.h"

#include <cerrno>
#include <string>

#include "platform/base/Utf.h"

namespace {

constexpr size_t kLineBytes = 4096;
constexpr size_t kWriteChunk = 64 * 1024;

std::u16string_view UpToNul(const CString& text) {
    std::u16string_view view = text.view();
    const size_t nul = view.find(u'\0');
    return nul == std::u16string_view::npos ? view : view.substr(0, nul);
}

// Bytes in the code page to characters. The source ends at its first zero.
std::u16string MultiByteToWide(UINT codePage, const char* bytes) {
    const std::string_view source(bytes);
    if (codePage != CP_LATIN1)
        return Utf8ToUtf16(source);
    std::u16string out;
    for (char c : source)
        out += static_cast<char16_t>(static_cast<unsigned char>(c));
    return out;
}

// Characters to bytes in the code page; what the page can't show becomes "#".
std::string WideToMultiByte(UINT codePage, std::u16string_view text) {
    if (codePage != CP_LATIN1)
        return Utf16ToUtf8(text);
    std::string out;
    for (char16_t c : text)
        out += c < 0x100 ? static_cast<char>(c) : '#';
    return out;
}

} // namespace

CStdioFileEx::~CStdioFileEx() {
    Abort();
}

void CStdioFileEx::Put(const char* bytes, size_t count) {
    if (!IsOpen())
        throw CFileException(CFileException::invalidFile, EBADF, m_path);
    m_pending.append(bytes, count);
    if (m_pending.size() >= kWriteChunk)
        Flush();
}

void CStdioFileEx::Flush() {
    if (m_pending.empty())
        return;
    // Cleared first: a failed write is reported once, not again on Close.
    const std::string bytes = std::move(m_pending);
    m_pending.clear();
    CFile::Write(bytes.data(), static_cast<UINT>(bytes.size()));
}

ULONGLONG CStdioFileEx::GetPosition() const {
    return CStdioFile::GetPosition() + m_pending.size();
}

void CStdioFileEx::Close() {
    if (IsOpen())
        Flush();
    m_pending.clear();
    CStdioFile::Close();
}

void CStdioFileEx::Abort() {
    // The road out after a failure: keep what can be kept, report nothing.
    try {
        if (IsOpen())
            Flush();
    } catch (const CFileException&) {
    }
    m_pending.clear();
    CStdioFile::Abort();
}

UINT CStdioFileEx::CodePage() const {
    return m_codePage == -1 ? GetACP() : static_cast<UINT>(m_codePage);
}

BOOL CStdioFileEx::Open(const CString& path, UINT openFlags, CFileException* error) {
    m_isUtf16 = FALSE;
    if ((openFlags & typeText) && !(openFlags & (modeCreate | modeWrite))) {
        CFile probe;
        if (probe.Open(path, typeBinary)) {
            unsigned char mark[2] = {0, 0};
            UINT got = 0;
            try {
                got = probe.Read(mark, 2);
            } catch (const CFileException&) {
                got = 0; // unreadable here means unreadable below, where it is reported
            }
            probe.Abort();
            m_isUtf16 = got > 0 && (mark[0] | (mark[1] << 8)) == 0xFEFF;
        }
    }
    if (m_isUtf16)
        openFlags = (openFlags & ~static_cast<UINT>(typeText)) | typeBinary;
    return CStdioFile::Open(path, openFlags, error);
}

BOOL CStdioFileEx::ReadString(CString& line) {
    if (m_isUtf16 && GetPosition() == 0) {
        unsigned char mark[2];
        Read(mark, 2);
    }
    BOOL result;
    if (m_isUtf16) {
        std::u16string units;
        result = ReadWideLine(units);
        if (result) {
            if (units.back() == u'\n')
                units.pop_back();
            line = CString(std::move(units));
        }
    } else {
        std::string bytes;
        if (!ReadNarrowLine(bytes, kLineBytes - 1))
            return FALSE;
        std::u16string converted = MultiByteToWide(CodePage(), bytes.c_str());
        if (!converted.empty())
            line = CString(std::move(converted));
        result = TRUE;
    }
    if (result) {
        const int n = line.GetLength();
        if (n > 1 && line[n - 2] == u'\r' && line[n - 1] == u'\n')
            line.Truncate(n - 2);
        else if (n != 0 && (line[n - 1] == u'\r' || line[n - 1] == u'\n'))
            line.Truncate(n - 1);
    }
    return result;
}

void CStdioFileEx::WriteString(const CString& text) {
    const std::u16string_view source = UpToNul(text);
    if (m_openFlags & modeWriteUtf16) {
        // Text waiting to be written puts the position past 0 without asking
        // the system.
        if (!IsOpen() || (m_pending.empty() && GetPosition() == 0))
            Put("\xFF\xFE", 2);
        std::string bytes;
        bytes.reserve(source.size() * 2);
        for (char16_t unit : source) {
            bytes += static_cast<char>(unit & 0xFF);
            bytes += static_cast<char>(unit >> 8);
        }
        Put(bytes.data(), bytes.size());
        return;
    }
    const std::string bytes = WideToMultiByte(CodePage(), source);
    Put(bytes.data(), bytes.size());
}
