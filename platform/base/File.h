// An operating-system file with the open modes of the data layer, and the few
// file-system calls the program makes.
#pragma once
#include "platform/base/CString.h"
#include "platform/base/Exceptions.h"

struct CFileStatus {
    ULONGLONG m_size = 0;
    int64_t m_mtime = 0; // seconds since the epoch
    BOOL m_isDirectory = FALSE;
};

class CFile {
public:
    enum OpenFlags : UINT {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        modeCreate = 0x1000,
        modeNoTruncate = 0x2000,
        typeText = 0x4000,
        typeBinary = 0x8000,
    };
    enum SeekPosition { begin = 0, current = 1, end = 2 };

    CFile() = default;
    // Opens or throws CFileException.
    CFile(const CString& path, UINT openFlags);
    virtual ~CFile();
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    // Gives 0 on failure and fills *error when given. The share flags are
    // accepted and not enforced: the platform has no mandatory share modes.
    virtual BOOL Open(const CString& path, UINT openFlags, CFileException* error = nullptr);
    // Gives the number of bytes read, less than asked only at the end of the file.
    virtual UINT Read(void* buffer, UINT count);
    // Writes all bytes or throws.
    virtual void Write(const void* buffer, UINT count);
    virtual ULONGLONG Seek(LONGLONG offset, UINT from);
    void SeekToBegin() { Seek(0, begin); }
    ULONGLONG SeekToEnd() { return Seek(0, end); }
    virtual ULONGLONG GetLength() const;
    virtual ULONGLONG GetPosition() const;
    virtual void Flush();
    // Closes; throws when the system reports an error on closing.
    virtual void Close();
    // Closes and ignores every error.
    virtual void Abort();

    BOOL IsOpen() const { return m_fd >= 0; }
    const CString& GetFilePath() const { return m_path; }
    CString GetFileName() const;
    UINT GetOpenFlags() const { return m_openFlags; }

    static BOOL GetStatus(const CString& path, CFileStatus& status);

protected:
    int m_fd = -1;
    UINT m_openFlags = 0;
    CString m_path;
};

// Copies a file; with failIfExists set the copy fails when the target exists.
// A target that was created and could not be completed is removed again.
BOOL CopyFileW(const CString& source, const CString& target, BOOL failIfExists);
BOOL DeleteFileW(const CString& path);
// The process's current directory, with no "/" at the end (but for "/" itself).
CString GetCurrentDirectoryW();
// Creates a folder and its parents; 1 when it exists afterwards.
BOOL CreateFolderPath(const CString& path);
