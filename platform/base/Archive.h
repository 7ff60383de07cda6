// A buffered binary stream over a CFile with the byte forms of the program's
// data files: little-endian integers with no padding, and strings in the
// tagged length form (FF FE FF, then a 1, 3 or 7 byte length, then UTF-16LE).
// Reading past the end of the data throws CArchiveException(endOfFile).
#pragma once
#include <vector>

#include "platform/base/CString.h"
#include "platform/base/Exceptions.h"
#include "platform/base/File.h"

class CArchive {
public:
    enum Mode { store = 0, load = 1 };

    CArchive(CFile* file, UINT mode, int bufferSize = 4096);
    // Leaves unwritten data unwritten: callers Close() on success.
    ~CArchive() = default;
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    BOOL IsLoading() const { return m_mode == load; }
    BOOL IsStoring() const { return m_mode == store; }
    CFile* GetFile() const { return m_file; }

    // Raw bytes. Read gives fewer bytes than asked only at the end of the data.
    UINT Read(void* buffer, UINT count);
    void Write(const void* buffer, UINT count);
    void Flush();
    // Writes what is buffered; the file stays open and belongs to the caller.
    void Close();
    // Drops what is buffered.
    void Abort();

    CArchive& operator<<(BYTE value);
    CArchive& operator<<(WORD value);
    CArchive& operator<<(int16_t value);
    CArchive& operator<<(int32_t value);
    CArchive& operator<<(uint32_t value);
    CArchive& operator<<(int64_t value);
    CArchive& operator<<(uint64_t value);
    CArchive& operator<<(const CString& text);

    CArchive& operator>>(BYTE& value);
    CArchive& operator>>(WORD& value);
    CArchive& operator>>(int16_t& value);
    CArchive& operator>>(int32_t& value);
    CArchive& operator>>(uint32_t& value);
    CArchive& operator>>(int64_t& value);
    CArchive& operator>>(uint64_t& value);
    // Takes both the wide form and the narrow form, which is UTF-8.
    CArchive& operator>>(CString& text);

    // Reads exactly count bytes or throws endOfFile.
    void ReadExact(void* buffer, UINT count);

private:
    void FillBuffer();
    void ThrowEnd() const;
    void RequireStoring() const;
    void RequireLoading() const;

    CFile* m_file;
    Mode m_mode;
    std::vector<BYTE> m_buffer;
    size_t m_begin = 0; // loading: next unread byte
    size_t m_end = 0;   // loading: end of valid bytes; storing: bytes buffered
    bool m_atEnd = false;
};

// The tagged length form of a string: with unicode set, FF FE FF in front.
void AfxWriteStringLength(CArchive& ar, uint64_t length, BOOL unicode);
// Reads a length written by AfxWriteStringLength (or the narrow form) and
// gives the size of one character: 1 for narrow, 2 for wide.
uint64_t AfxReadStringLength(CArchive& ar, int& charSize);
