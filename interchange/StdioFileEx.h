// The text file of the record and playlist exports: it reads UTF-16LE when the
// file starts with FF FE and code-page text otherwise, and writes UTF-16LE
// (behind one mark) when asked to at open time. Callers always work in 16-bit
// characters and pass their own CR LF.
#pragma once
#include "interchange/StdioFile.h"

// Code page 28591 (ISO 8859-1) is the one single-byte page the conversions
// know besides UTF-8; anything else converts as UTF-8.
constexpr int CP_LATIN1 = 28591;

class CStdioFileEx : public CStdioFile {
public:
    enum : UINT { modeWriteUtf16 = 0x20000 };
    // The two flag sets of the writers and the one of the readers.
    static constexpr UINT kWriteCodePage = typeText | modeCreate | modeWrite; // 0x5001
    static constexpr UINT kWriteUtf16 = kWriteCodePage | modeWriteUtf16;      // 0x25001
    static constexpr UINT kRead = typeText;                                   // 0x4000

    CStdioFileEx() = default;
    ~CStdioFileEx() override;

    BOOL Open(const CString& path, UINT openFlags, CFileException* error = nullptr) override;
    // The next line with one line end taken off. An ANSI line longer than
    // 4095 bytes arrives in pieces of at most 4095 bytes.
    BOOL ReadString(CString& line) override;
    // Writes the text up to its first NUL, exactly, with no line end added.
    virtual void WriteString(const CString& text);
    // Written text is gathered and handed to the file in large pieces; the
    // position counts it as written. Close writes the rest (and may throw).
    ULONGLONG GetPosition() const override;
    void Flush() override;
    void Close() override;
    void Abort() override;

    BOOL m_isUtf16 = FALSE;
    // -1: the system's code page (GetACP).
    int32_t m_codePage = -1;

private:
    UINT CodePage() const;
    void Put(const char* bytes, size_t count);

    std::string m_pending;
};
