#include "modules/lav/RecordingWriter.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ctime>

namespace {

// Makes a folder with its parents; 0 or the system's error number.
int MakeFolder(const std::string& folder) {
    if (folder.empty())
        return ENOENT;
    std::string path;
    size_t position = 0;
    while (position != std::string::npos) {
        position = folder.find('/', position + 1);
        path = folder.substr(0, position);
        if (path.empty() || mkdir(path.c_str(), 0777) == 0 || errno == EEXIST)
            continue;
        return errno;
    }
    struct stat st;
    if (stat(folder.c_str(), &st) != 0)
        return errno;
    return S_ISDIR(st.st_mode) ? 0 : ENOTDIR;
}

std::string Now() {
    time_t now = time(nullptr);
    struct tm local;
    localtime_r(&now, &local);
    char text[32];
    strftime(text, sizeof text, "%Y-%m-%d %H-%M-%S", &local);
    return text;
}

} // namespace

CRecordingWriter::~CRecordingWriter() {
    Stop();
}

int CRecordingWriter::Start(const std::string& folder, const std::string& name,
                            const std::string& title, const std::string& extension) {
    std::lock_guard<std::mutex> lock(m_lock);
    CloseLocked();
    if (int error = MakeFolder(folder)) {
        m_recording = false;
        m_failureUntold = false;
        m_failure = "Recording not started: the folder " + folder + " could not be made.\n" +
                    strerror(error);
        return error;
    }
    m_folder = folder;
    m_name = name;
    m_title = title;
    m_extension = extension;
    m_failure.clear();
    m_failureUntold = false;
    m_recording = true;
    return 0;
}

void CRecordingWriter::Stop() {
    std::lock_guard<std::mutex> lock(m_lock);
    CloseLocked();
    m_recording = false;
    // The user stopped it: nothing to be told.
    m_failureUntold = false;
}

bool CRecordingWriter::Recording() const {
    std::lock_guard<std::mutex> lock(m_lock);
    return m_recording;
}

std::string CRecordingWriter::Failure() const {
    std::lock_guard<std::mutex> lock(m_lock);
    return m_failure;
}

bool CRecordingWriter::TakeFailure() {
    std::lock_guard<std::mutex> lock(m_lock);
    bool untold = m_failureUntold;
    m_failureUntold = false;
    return untold;
}

std::string CRecordingWriter::CurrentFile() const {
    std::lock_guard<std::mutex> lock(m_lock);
    return m_fd >= 0 ? m_path : std::string();
}

void CRecordingWriter::NewTitle(const std::string& title) {
    std::lock_guard<std::mutex> lock(m_lock);
    if (title == m_title)
        return;
    m_title = title;
    // The song before ends here; the file of the next one opens with its
    // first byte.
    CloseLocked();
}

bool CRecordingWriter::Write(const void* data, size_t size) {
    std::lock_guard<std::mutex> lock(m_lock);
    if (!m_recording || size == 0)
        return true;
    if (m_fd < 0 && !OpenLocked())
        return false;
    const char* bytes = static_cast<const char*>(data);
    while (size > 0) {
        ssize_t written = write(m_fd, bytes, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0) {
            FailLocked(written < 0 ? errno : ENOSPC, m_path);
            return false;
        }
        bytes += written;
        size -= static_cast<size_t>(written);
    }
    return true;
}

void CRecordingWriter::EndOfStream() {
    std::lock_guard<std::mutex> lock(m_lock);
    CloseLocked();
}

std::string CRecordingWriter::SafeFileName(const std::string& title) {
    std::string name;
    for (char c : title) {
        auto u = static_cast<unsigned char>(c);
        name += (u < 0x20 || u == 0x7F || c == '/') ? '_' : c;
    }
    size_t first = name.find_first_not_of(" .");
    name = first == std::string::npos ? std::string() : name.substr(first);
    if (name.size() > kMaxNameBytes) {
        size_t end = kMaxNameBytes;
        while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80)
            --end;
        name.resize(end);
    }
    while (!name.empty() && name.back() == ' ')
        name.pop_back();
    return name;
}

bool CRecordingWriter::OpenLocked() {
    std::string base = SafeFileName(m_title);
    if (base.empty())
        base = SafeFileName(m_name.empty() ? std::string("Recording") : m_name) + " " + Now();
    // A song heard twice keeps both recordings.
    for (int n = 1; n < 1000; ++n) {
        std::string path = m_folder + "/" + base;
        if (n > 1)
            path += " (" + std::to_string(n) + ")";
        path += "." + m_extension;
        m_fd = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (m_fd >= 0) {
            m_path = path;
            return true;
        }
        if (errno != EEXIST) {
            FailLocked(errno, path);
            return false;
        }
    }
    FailLocked(EEXIST, m_folder + "/" + base + "." + m_extension);
    return false;
}

void CRecordingWriter::CloseLocked() {
    if (m_fd < 0)
        return;
    int fd = m_fd;
    m_fd = -1;
    // A full disc may only show when the last bytes reach it.
    if (close(fd) != 0 && errno != EINTR)
        FailLocked(errno, m_path);
}

void CRecordingWriter::FailLocked(int error, const std::string& path) {
    if (m_fd >= 0) {
        close(m_fd);
        m_fd = -1;
    }
    m_recording = false;
    m_failureUntold = true;
    if (error == ENOSPC || error == EDQUOT)
        m_failure = "Recording stopped: the disc is full.\n" + path;
    else
        m_failure = "Recording stopped: " + path + " could not be written.\n" + strerror(error);
}
