#include "platform/base/File.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string NativePath(const CString& path) {
    return path.ToUtf8();
}

} // namespace

CFile::CFile(const CString& path, UINT openFlags) {
    CFileException error;
    if (!Open(path, openFlags, &error))
        throw error;
}

CFile::~CFile() {
    Abort();
}

BOOL CFile::Open(const CString& path, UINT openFlags, CFileException* error) {
    if (m_fd >= 0)
        Abort();
    int flags = O_CLOEXEC;
    switch (openFlags & 3) {
    case modeWrite:
        flags |= O_WRONLY;
        break;
    case modeReadWrite:
        flags |= O_RDWR;
        break;
    default:
        flags |= O_RDONLY;
        break;
    }
    if (openFlags & modeCreate) {
        flags |= O_CREAT;
        if (!(openFlags & modeNoTruncate))
            flags |= O_TRUNC;
    }
    const std::string native = NativePath(path);
    int fd = native.empty() ? -1 : ::open(native.c_str(), flags, 0644);
    int err = native.empty() ? ENOENT : errno;
    if (fd >= 0) {
        struct stat st;
        if (fstat(fd, &st) == 0 && S_ISDIR(st.st_mode)) {
            ::close(fd);
            fd = -1;
            err = EISDIR;
        }
    }
    if (fd < 0) {
        if (error)
            *error = CFileException::FromErrno(err, path);
        return FALSE;
    }
    m_fd = fd;
    m_openFlags = openFlags;
    m_path = path;
    return TRUE;
}

UINT CFile::Read(void* buffer, UINT count) {
    if (m_fd < 0)
        throw CFileException(CFileException::invalidFile, EBADF, m_path);
    auto* p = static_cast<char*>(buffer);
    UINT done = 0;
    while (done < count) {
        ssize_t n = ::read(m_fd, p + done, count - done);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            throw CFileException::FromErrno(errno, m_path);
        }
        if (n == 0)
            break;
        done += static_cast<UINT>(n);
    }
    return done;
}

void CFile::Write(const void* buffer, UINT count) {
    if (m_fd < 0)
        throw CFileException(CFileException::invalidFile, EBADF, m_path);
    const auto* p = static_cast<const char*>(buffer);
    UINT done = 0;
    while (done < count) {
        ssize_t n = ::write(m_fd, p + done, count - done);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            throw CFileException::FromErrno(errno, m_path);
        }
        if (n == 0)
            throw CFileException(CFileException::diskFull, ENOSPC, m_path);
        done += static_cast<UINT>(n);
    }
}

ULONGLONG CFile::Seek(LONGLONG offset, UINT from) {
    if (m_fd < 0)
        throw CFileException(CFileException::invalidFile, EBADF, m_path);
    int whence = from == current ? SEEK_CUR : (from == end ? SEEK_END : SEEK_SET);
    off_t r = ::lseek(m_fd, static_cast<off_t>(offset), whence);
    if (r < 0)
        throw CFileException(CFileException::badSeek, errno, m_path);
    return static_cast<ULONGLONG>(r);
}

ULONGLONG CFile::GetLength() const {
    if (m_fd < 0)
        throw CFileException(CFileException::invalidFile, EBADF, m_path);
    struct stat st;
    if (fstat(m_fd, &st) != 0)
        throw CFileException::FromErrno(errno, m_path);
    return static_cast<ULONGLONG>(st.st_size);
}

ULONGLONG CFile::GetPosition() const {
    if (m_fd < 0)
        throw CFileException(CFileException::invalidFile, EBADF, m_path);
    off_t r = ::lseek(m_fd, 0, SEEK_CUR);
    if (r < 0)
        throw CFileException(CFileException::badSeek, errno, m_path);
    return static_cast<ULONGLONG>(r);
}

void CFile::Flush() {
    // Writes go straight to the system; nothing is buffered here.
}

void CFile::Close() {
    if (m_fd < 0)
        return;
    int fd = m_fd;
    m_fd = -1;
    if (::close(fd) != 0 && errno != EINTR)
        throw CFileException::FromErrno(errno, m_path);
}

void CFile::Abort() {
    if (m_fd >= 0) {
        ::close(m_fd);
        m_fd = -1;
    }
}

CString CFile::GetFileName() const {
    int slash = m_path.ReverseFind(u'/');
    return slash < 0 ? m_path : m_path.Mid(slash + 1);
}

BOOL CFile::GetStatus(const CString& path, CFileStatus& status) {
    struct stat st;
    const std::string native = NativePath(path);
    if (native.empty() || ::stat(native.c_str(), &st) != 0)
        return FALSE;
    status.m_size = static_cast<ULONGLONG>(st.st_size);
    status.m_mtime = static_cast<int64_t>(st.st_mtime);
    status.m_isDirectory = S_ISDIR(st.st_mode) ? TRUE : FALSE;
    return TRUE;
}

BOOL CopyFileW(const CString& source, const CString& target, BOOL failIfExists) {
    CFile in;
    if (!in.Open(source, CFile::modeRead))
        return FALSE;
    const std::string native = NativePath(target);
    int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (failIfExists ? O_EXCL : O_TRUNC);
    int fd = native.empty() ? -1 : ::open(native.c_str(), flags, 0644);
    if (fd < 0)
        return FALSE;
    char buffer[65536];
    bool ok = true;
    try {
        for (;;) {
            UINT n = in.Read(buffer, sizeof buffer);
            if (n == 0)
                break;
            UINT done = 0;
            while (done < n) {
                ssize_t w = ::write(fd, buffer + done, n - done);
                if (w < 0 && errno == EINTR)
                    continue;
                if (w <= 0) {
                    ok = false;
                    break;
                }
                done += static_cast<UINT>(w);
            }
            if (!ok)
                break;
        }
    } catch (const CFileException&) {
        ok = false;
    }
    if (::close(fd) != 0)
        ok = false;
    if (!ok)
        ::unlink(native.c_str());
    return ok ? TRUE : FALSE;
}

BOOL DeleteFileW(const CString& path) {
    const std::string native = NativePath(path);
    return !native.empty() && ::unlink(native.c_str()) == 0;
}

CString GetCurrentDirectoryW() {
    std::error_code ec;
    std::filesystem::path p = std::filesystem::current_path(ec);
    if (ec)
        return CString();
    return CString::FromUtf8(p.string());
}

BOOL CreateFolderPath(const CString& path) {
    std::error_code ec;
    const std::string native = NativePath(path);
    if (native.empty())
        return FALSE;
    std::filesystem::create_directories(native, ec);
    return std::filesystem::is_directory(native, ec) ? TRUE : FALSE;
}
