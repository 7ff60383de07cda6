#include "platform/base/StartDirectory.h"

#include <sys/stat.h>

#include <filesystem>
#include <system_error>

#include "platform/base/File.h"

namespace {

// The installation folder relative to the folder of the executable; the
// build compiles in what the install rules use.
#ifndef ORVEX_INSTALL_START_RELATIVE
#define ORVEX_INSTALL_START_RELATIVE "../lib/orvex"
#endif

CString ExecutablePath() {
    std::error_code error;
    const std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? CString() : CString(exe.string());
}

} // namespace

BOOL HoldsShippedFiles(const CString& folder) {
    struct stat status {};
    const std::string lav = (folder + u"/LAV").ToUtf8();
    return stat(lav.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

CString ChooseStartDirectory(const CString& workingDirectory, const CString& executablePath) {
    if (HoldsShippedFiles(workingDirectory) || executablePath.IsEmpty())
        return workingDirectory;
    const std::filesystem::path exe(executablePath.ToUtf8());
    std::error_code error;
    const std::filesystem::path installed =
        std::filesystem::weakly_canonical(exe.parent_path() / ORVEX_INSTALL_START_RELATIVE, error);
    if (error)
        return workingDirectory;
    const CString folder(installed.string());
    return HoldsShippedFiles(folder) ? folder : workingDirectory;
}

CString FindStartDirectory() {
    return ChooseStartDirectory(GetCurrentDirectoryW(), ExecutablePath());
}
