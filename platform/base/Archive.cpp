#include "platform/base/Archive.h"

#include <cstring>

#include "platform/base/Utf.h"

namespace {

// Strings are read in slices of this many units, so a length field that
// promises more than the file holds costs no more memory than the file.
constexpr uint64_t kStringSlice = 1 << 16;

} // namespace

CArchive::CArchive(CFile* file, UINT mode, int bufferSize)
    : m_file(file), m_mode(mode == load ? load : store),
      m_buffer(static_cast<size_t>(bufferSize < 16 ? 16 : bufferSize)) {}

void CArchive::ThrowEnd() const {
    throw CArchiveException(CArchiveException::endOfFile,
                            m_file ? m_file->GetFilePath() : CString());
}

void CArchive::RequireStoring() const {
    if (m_mode != store)
        throw CArchiveException(CArchiveException::readOnly,
                                m_file ? m_file->GetFilePath() : CString());
}

void CArchive::RequireLoading() const {
    if (m_mode != load)
        throw CArchiveException(CArchiveException::writeOnly,
                                m_file ? m_file->GetFilePath() : CString());
}

void CArchive::FillBuffer() {
    if (m_begin < m_end || m_atEnd)
        return;
    m_begin = 0;
    m_end = m_file->Read(m_buffer.data(), static_cast<UINT>(m_buffer.size()));
    if (m_end == 0)
        m_atEnd = true;
}

UINT CArchive::Read(void* buffer, UINT count) {
    RequireLoading();
    auto* out = static_cast<BYTE*>(buffer);
    UINT done = 0;
    while (done < count) {
        FillBuffer();
        if (m_begin >= m_end)
            break;
        size_t n = std::min<size_t>(count - done, m_end - m_begin);
        memcpy(out + done, m_buffer.data() + m_begin, n);
        m_begin += n;
        done += static_cast<UINT>(n);
    }
    return done;
}

void CArchive::ReadExact(void* buffer, UINT count) {
    if (Read(buffer, count) != count)
        ThrowEnd();
}

void CArchive::Write(const void* buffer, UINT count) {
    RequireStoring();
    const auto* in = static_cast<const BYTE*>(buffer);
    while (count > 0) {
        if (m_end == m_buffer.size())
            Flush();
        size_t n = std::min<size_t>(count, m_buffer.size() - m_end);
        memcpy(m_buffer.data() + m_end, in, n);
        m_end += n;
        in += n;
        count -= static_cast<UINT>(n);
    }
}

void CArchive::Flush() {
    if (m_mode == store && m_end > 0) {
        size_t n = m_end;
        m_end = 0;
        m_file->Write(m_buffer.data(), static_cast<UINT>(n));
    }
}

void CArchive::Close() {
    Flush();
    m_begin = m_end = 0;
}

void CArchive::Abort() {
    m_begin = m_end = 0;
}

namespace {

template <typename T>
void PutLittleEndian(CArchive& ar, T value) {
    BYTE bytes[sizeof(T)];
    auto u = static_cast<std::make_unsigned_t<T>>(value);
    for (size_t i = 0; i < sizeof(T); ++i)
        bytes[i] = static_cast<BYTE>(u >> (8 * i));
    ar.Write(bytes, sizeof bytes);
}

template <typename T>
T GetLittleEndian(CArchive& ar) {
    BYTE bytes[sizeof(T)];
    ar.ReadExact(bytes, sizeof bytes);
    std::make_unsigned_t<T> u = 0;
    for (size_t i = 0; i < sizeof(T); ++i)
        u |= static_cast<std::make_unsigned_t<T>>(bytes[i]) << (8 * i);
    return static_cast<T>(u);
}

} // namespace

CArchive& CArchive::operator<<(BYTE value) {
    Write(&value, 1);
    return *this;
}
CArchive& CArchive::operator<<(WORD value) {
    PutLittleEndian(*this, value);
    return *this;
}
CArchive& CArchive::operator<<(int16_t value) {
    PutLittleEndian(*this, value);
    return *this;
}
CArchive& CArchive::operator<<(int32_t value) {
    PutLittleEndian(*this, value);
    return *this;
}
CArchive& CArchive::operator<<(uint32_t value) {
    PutLittleEndian(*this, value);
    return *this;
}
CArchive& CArchive::operator<<(int64_t value) {
    PutLittleEndian(*this, value);
    return *this;
}
CArchive& CArchive::operator<<(uint64_t value) {
    PutLittleEndian(*this, value);
    return *this;
}

CArchive& CArchive::operator>>(BYTE& value) {
    ReadExact(&value, 1);
    return *this;
}
CArchive& CArchive::operator>>(WORD& value) {
    value = GetLittleEndian<WORD>(*this);
    return *this;
}
CArchive& CArchive::operator>>(int16_t& value) {
    value = GetLittleEndian<int16_t>(*this);
    return *this;
}
CArchive& CArchive::operator>>(int32_t& value) {
    value = GetLittleEndian<int32_t>(*this);
    return *this;
}
CArchive& CArchive::operator>>(uint32_t& value) {
    value = GetLittleEndian<uint32_t>(*this);
    return *this;
}
CArchive& CArchive::operator>>(int64_t& value) {
    value = GetLittleEndian<int64_t>(*this);
    return *this;
}
CArchive& CArchive::operator>>(uint64_t& value) {
    value = GetLittleEndian<uint64_t>(*this);
    return *this;
}

void AfxWriteStringLength(CArchive& ar, uint64_t length, BOOL unicode) {
    if (unicode) {
        ar << static_cast<BYTE>(0xFF);
        ar << static_cast<WORD>(0xFFFE);
    }
    if (length < 0xFF) {
        ar << static_cast<BYTE>(length);
    } else if (length < 0xFFFE) {
        ar << static_cast<BYTE>(0xFF);
        ar << static_cast<WORD>(length);
    } else if (length < 0xFFFFFFFF) {
        ar << static_cast<BYTE>(0xFF);
        ar << static_cast<WORD>(0xFFFF);
        ar << static_cast<uint32_t>(length);
    } else {
        ar << static_cast<BYTE>(0xFF);
        ar << static_cast<WORD>(0xFFFF);
        ar << static_cast<uint32_t>(0xFFFFFFFF);
        ar << static_cast<uint64_t>(length);
    }
}

uint64_t AfxReadStringLength(CArchive& ar, int& charSize) {
    charSize = 1;
    BYTE byteLength;
    ar >> byteLength;
    if (byteLength < 0xFF)
        return byteLength;
    WORD wordLength;
    ar >> wordLength;
    if (wordLength == 0xFFFE) {
        charSize = 2;
        ar >> byteLength;
        if (byteLength < 0xFF)
            return byteLength;
        ar >> wordLength;
        if (wordLength == 0xFFFE) // a second tag is no length at all
            throw CArchiveException(CArchiveException::badSchema,
                                    ar.GetFile() ? ar.GetFile()->GetFilePath() : CString());
    }
    if (wordLength < 0xFFFE)
        return wordLength;
    uint32_t dwordLength;
    ar >> dwordLength;
    if (dwordLength < 0xFFFFFFFF)
        return dwordLength;
    uint64_t qwordLength;
    ar >> qwordLength;
    return qwordLength;
}

CArchive& CArchive::operator<<(const CString& text) {
    AfxWriteStringLength(*this, static_cast<uint64_t>(text.GetLength()), TRUE);
    const std::u16string& s = text.str();
    BYTE slice[2048];
    size_t i = 0;
    while (i < s.size()) {
        size_t n = std::min<size_t>(s.size() - i, sizeof slice / 2);
        for (size_t k = 0; k < n; ++k) {
            slice[2 * k] = static_cast<BYTE>(s[i + k] & 0xFF);
            slice[2 * k + 1] = static_cast<BYTE>(s[i + k] >> 8);
        }
        Write(slice, static_cast<UINT>(2 * n));
        i += n;
    }
    return *this;
}

CArchive& CArchive::operator>>(CString& text) {
    int charSize = 1;
    uint64_t length = AfxReadStringLength(*this, charSize);
    std::vector<BYTE> slice;
    if (charSize == 2) {
        std::u16string wide;
        while (length > 0) {
            uint64_t n = std::min(length, kStringSlice);
            slice.resize(static_cast<size_t>(n * 2));
            ReadExact(slice.data(), static_cast<UINT>(slice.size()));
            size_t at = wide.size();
            wide.resize(at + static_cast<size_t>(n));
            for (size_t k = 0; k < n; ++k)
                wide[at + k] = static_cast<char16_t>(slice[2 * k] | (slice[2 * k + 1] << 8));
            length -= n;
        }
        text = CString(std::move(wide));
    } else {
        std::string narrow;
        while (length > 0) {
            uint64_t n = std::min(length, kStringSlice);
            size_t at = narrow.size();
            narrow.resize(at + static_cast<size_t>(n));
            ReadExact(narrow.data() + at, static_cast<UINT>(n));
            length -= n;
        }
        text = CString(Utf8ToUtf16(narrow));
    }
    return *this;
}
