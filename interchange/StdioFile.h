// A file read through a buffered stream. In text mode the stream turns CR LF
// into LF, as the desktop's text streams do, so every reader sees one kind of
// line end. Writes go straight to the file, past the stream.
#pragma once
#include <string>
#include <vector>

#include "platform/base/File.h"

class CStdioFile : public CFile {
public:
    CStdioFile() = default;

    BOOL Open(const CString& path, UINT openFlags, CFileException* error = nullptr) override;
    // The next line without its LF, of any length; narrow text is taken as
    // UTF-8. Gives 0 only at the end of the file.
    virtual BOOL ReadString(CString& line);
    // The bytes of the next line without its LF; of a longer line only the
    // first `maxBytes` are kept and the rest is passed over. Gives 0 only at
    // the end of the file.
    BOOL ReadLineBytes(std::string& line, size_t maxBytes);
    // The position the stream has reached, which lags behind the file's own
    // position by what is buffered and not yet taken.
    ULONGLONG GetPosition() const override;
    UINT Read(void* buffer, UINT count) override;
    ULONGLONG Seek(LONGLONG offset, UINT from) override;
    void Close() override;
    void Abort() override;

protected:
    // Like fgets: up to `maxBytes` bytes, ending behind an LF if one comes
    // first. Gives 0 when nothing at all was left.
    BOOL ReadNarrowLine(std::string& out, size_t maxBytes);
    // 16-bit units up to and including the next LF (0x000A), or to the end of
    // the file. A lone last byte can't make a unit and is left unread.
    BOOL ReadWideLine(std::u16string& out);

private:
    // One byte of the stream, with the text-mode translation; -1 at the end.
    int GetByte();
    int GetRawByte();
    BOOL Fill();
    void DropBuffer();

    std::vector<char> m_buffer;
    size_t m_bufferPos = 0;
    size_t m_bufferLen = 0;
};
