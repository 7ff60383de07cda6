// A fresh folder under the system's temporary folder, removed with all it
// holds when the object goes.
#pragma once
#include <signal.h>
#include <sys/resource.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/base/CString.h"

class TempDir {
public:
    TempDir() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "orvex-test-XXXXXX").string();
        std::vector<char> buffer(pattern.begin(), pattern.end());
        buffer.push_back('\0');
        m_path = mkdtemp(buffer.data());
    }
    ~TempDir() {
        std::error_code ec;
        std::filesystem::remove_all(m_path, ec);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& Path() const { return m_path; }
    std::string operator/(const std::string& name) const { return (m_path / name).string(); }
    CString Str() const { return CString(m_path.string()); }
    CString File(const std::string& name) const { return CString((m_path / name).string()); }

    static void Write(const std::string& path, const std::string& bytes) {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    static std::string Read(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

private:
    std::filesystem::path m_path;
};

// Sets an environment variable for the life of the object.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const std::string& value) : m_name(name) {
        if (const char* old = getenv(name)) {
            m_had = true;
            m_old = old;
        }
        setenv(name, value.c_str(), 1);
    }
    ~ScopedEnv() {
        if (m_had)
            setenv(m_name.c_str(), m_old.c_str(), 1);
        else
            unsetenv(m_name.c_str());
    }

private:
    std::string m_name;
    std::string m_old;
    bool m_had = false;
};

// Changes the current directory for the life of the object.
class ScopedCurrentDir {
public:
    explicit ScopedCurrentDir(const std::filesystem::path& dir)
        : m_old(std::filesystem::current_path()) {
        std::filesystem::current_path(dir);
    }
    ~ScopedCurrentDir() {
        std::error_code ec;
        std::filesystem::current_path(m_old, ec);
    }

private:
    std::filesystem::path m_old;
};

// Limits the size of every file this process writes, as a small file system
// would: a write beyond `bytes` fails with EFBIG instead of ending the process.
class ScopedFileSizeLimit {
public:
    explicit ScopedFileSizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &m_old);
        m_oldHandler = signal(SIGXFSZ, SIG_IGN);
        rlimit limit = m_old;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~ScopedFileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_old);
        signal(SIGXFSZ, m_oldHandler);
    }
    ScopedFileSizeLimit(const ScopedFileSizeLimit&) = delete;
    ScopedFileSizeLimit& operator=(const ScopedFileSizeLimit&) = delete;

private:
    rlimit m_old{};
    sighandler_t m_oldHandler = SIG_DFL;
};
