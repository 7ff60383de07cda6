#include "platform/base/ReplacingFile.h"

#include <cerrno>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// As the system follows links in a path, before it reports ELOOP.
constexpr int kMaxLinkHops = 40;
constexpr int kNameAttempts = 100;

std::string FolderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? std::string("/") : path.substr(0, slash);
}

// The file a chain of symbolic links at `path` ends in; the last one need not
// exist yet. Gives 0 with errno set when the chain loops.
bool FollowLinks(std::string path, std::string& target) {
    for (int hop = 0; hop < kMaxLinkHops; ++hop) {
        struct stat st;
        if (lstat(path.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) {
            target = path;
            return true;
        }
        std::string link(static_cast<size_t>(st.st_size > 0 ? st.st_size : 255) + 1, '\0');
        const ssize_t length = readlink(path.c_str(), link.data(), link.size());
        if (length < 0)
            return false;
        link.resize(static_cast<size_t>(length));
        path = link.starts_with('/') ? link : FolderOf(path) + "/" + link;
    }
    errno = ELOOP;
    return false;
}

void SyncFolder(const std::string& folder) {
    // The rename is only lasting once the folder itself is on the disc.
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        fsync(fd);
        ::close(fd);
    }
}

} // namespace

CReplacingFile::~CReplacingFile() {
    Abort();
}

BOOL CReplacingFile::OpenForReplace(const CString& path, CFileException* error) {
    Abort();
    const std::string native = path.ToUtf8();
    auto fail = [&](int err) {
        if (error)
            *error = CFileException::FromErrno(err, path);
        return FALSE;
    };
    if (native.empty())
        return fail(ENOENT);
    std::string target;
    if (!FollowLinks(native, target))
        return fail(errno);
    struct stat old;
    const bool replacing = ::stat(target.c_str(), &old) == 0;
    if (replacing && !S_ISREG(old.st_mode)) {
        // A device or a pipe can't be replaced, only written to; a folder
        // is refused by the plain open.
        return CFile::Open(path, modeCreate | modeWrite, error);
    }

    // A hidden name beside the target, so that the rename stays within one
    // file system; O_EXCL never takes over somebody else's file.
    const size_t slash = target.rfind('/');
    const std::string prefix = slash == std::string::npos
                                   ? "." + target
                                   : target.substr(0, slash + 1) + "." + target.substr(slash + 1);
    std::random_device seed;
    std::mt19937 random(seed());
    int fd = -1;
    std::string newFile;
    for (int attempt = 0; fd < 0 && attempt < kNameAttempts; ++attempt) {
        newFile = prefix + "." + std::to_string(random() % 1000000) + ".new";
        fd = ::open(newFile.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0 && errno != EEXIST)
            return fail(errno);
    }
    if (fd < 0)
        return fail(EEXIST);
    if (replacing) {
        // The new file keeps what the user allowed on the old one.
        fchmod(fd, old.st_mode & 07777);
        if (fchown(fd, old.st_uid, old.st_gid) != 0) {
            // Only the owner's own group and id are possible; that is fine.
        }
    }
    m_fd = fd;
    m_openFlags = modeCreate | modeWrite;
    m_path = path;
    m_target = target;
    m_newFile = newFile;
    return TRUE;
}

void CReplacingFile::Close() {
    if (m_newFile.empty()) {
        CFile::Close();
        return;
    }
    if (m_fd < 0)
        return;
    int err = 0;
    if (fsync(m_fd) != 0 && errno != EINVAL)
        err = errno;
    if (::close(m_fd) != 0 && err == 0 && errno != EINTR)
        err = errno;
    m_fd = -1;
    if (err == 0 && ::rename(m_newFile.c_str(), m_target.c_str()) != 0)
        err = errno;
    if (err != 0) {
        RemoveNewFile();
        throw CFileException::FromErrno(err, m_path);
    }
    m_newFile.clear();
    SyncFolder(FolderOf(m_target));
}

void CReplacingFile::Abort() {
    CFile::Abort();
    RemoveNewFile();
}

void CReplacingFile::RemoveNewFile() {
    if (!m_newFile.empty()) {
        ::unlink(m_newFile.c_str());
        m_newFile.clear();
    }
}
