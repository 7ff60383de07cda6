#include "platform/base/Drives.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <mutex>
#include <sstream>
#include <string>

namespace {

std::string ReadSmallFile(const std::string& path) {
    std::ifstream in(path);
    std::string text;
    std::getline(in, text);
    return text;
}

bool Exists(const std::string& path) {
    struct stat st {};
    return stat(path.c_str(), &st) == 0;
}

std::vector<std::string> DirectoryNames(const std::string& path) {
    std::vector<std::string> names;
    DIR* dir = opendir(path.c_str());
    if (!dir)
        return names;
    while (dirent* entry = readdir(dir)) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..")
            names.push_back(name);
    }
    closedir(dir);
    return names;
}

// The mounts file writes blanks, tabs, newlines and backslashes in names
// as three-digit octal escapes.
std::string UnescapeMountField(const std::string& field) {
    std::string out;
    for (size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size()) {
            const std::string digits = field.substr(i + 1, 3);
            if (std::all_of(digits.begin(), digits.end(),
                            [](char c) { return c >= '0' && c <= '7'; })) {
                out += static_cast<char>(std::stoi(digits, nullptr, 8));
                i += 3;
                continue;
            }
        }
        out += field[i];
    }
    return out;
}

struct MountEntry {
    std::string deviceName; // behind "/dev/"
    std::string mountPoint;
};

std::vector<MountEntry> ReadMounts(const std::string& mountsFile) {
    std::vector<MountEntry> mounts;
    std::ifstream in(mountsFile);
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream fields(line);
        std::string source;
        std::string target;
        if (!(fields >> source >> target))
            continue;
        source = UnescapeMountField(source);
        if (source.rfind("/dev/", 0) != 0)
            continue;
        mounts.push_back({source.substr(5), UnescapeMountField(target)});
    }
    return mounts;
}

// The kind of a block device, or DRIVE_NO_ROOT_DIR for one the program
// doesn't show (hard discs and the like).
UINT BlockDeviceKind(const std::string& deviceDir, const std::string& name) {
    // SCSI peripheral type 5 is a CD/DVD drive; "sr" devices are exactly those.
    if (name.rfind("sr", 0) == 0 || ReadSmallFile(deviceDir + "/device/type") == "5")
        return DRIVE_CDROM;
    if (ReadSmallFile(deviceDir + "/removable") == "1")
        return DRIVE_REMOVABLE;
    return DRIVE_NO_ROOT_DIR;
}

CString LastName(const std::string& path) {
    const size_t slash = path.find_last_of('/');
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    return CString::FromUtf8(name.empty() ? path : name);
}

} // namespace

CSystemDriveList::CSystemDriveList(CString systemRoot) : m_systemRoot(std::move(systemRoot)) {}

void CSystemDriveList::AddProvider(std::shared_ptr<IFolderProvider> provider) {
    if (provider)
        m_providers.push_back(std::move(provider));
}

std::vector<CDriveInfo> CSystemDriveList::GetDrives() {
    std::string root = m_systemRoot.ToUtf8();
    if (!root.empty() && root.back() == '/')
        root.pop_back();
    const std::string blockDir = root + "/sys/block";
    std::vector<std::string> devices = DirectoryNames(blockDir);
    std::sort(devices.begin(), devices.end());
    const std::vector<MountEntry> mounts = ReadMounts(root + "/proc/self/mounts");

    std::vector<CDriveInfo> drives;
    for (const std::string& device : devices) {
        const std::string deviceDir = blockDir + "/" + device;
        const UINT kind = BlockDeviceKind(deviceDir, device);
        if (kind == DRIVE_NO_ROOT_DIR)
            continue;
        // The device itself and its partitions carry file systems.
        std::vector<std::string> volumes{device};
        for (const std::string& child : DirectoryNames(deviceDir)) {
            if (Exists(deviceDir + "/" + child + "/partition"))
                volumes.push_back(child);
        }
        bool mounted = false;
        std::vector<std::string> seen;
        for (const MountEntry& mount : mounts) {
            if (std::find(volumes.begin(), volumes.end(), mount.deviceName) == volumes.end())
                continue;
            // A volume mounted twice is one drive, at its first mount point.
            if (std::find(seen.begin(), seen.end(), mount.deviceName) != seen.end())
                continue;
            seen.push_back(mount.deviceName);
            mounted = true;
            CDriveInfo drive;
            drive.m_root = CString::FromUtf8(mount.mountPoint);
            drive.m_device = CString::FromUtf8("/dev/" + mount.deviceName);
            drive.m_label =
                LastName(mount.mountPoint) + u" (" + CString::FromUtf8(mount.deviceName) + u")";
            drive.m_type = kind;
            drives.push_back(drive);
        }
        // An optical drive is shown also with an empty tray or a disc that
        // is not mounted; a removable device only with something mounted.
        if (!mounted && kind == DRIVE_CDROM) {
            CDriveInfo drive;
            drive.m_device = CString::FromUtf8("/dev/" + device);
            drive.m_root = drive.m_device;
            drive.m_label = CString::FromUtf8(device);
            drive.m_type = kind;
            drives.push_back(drive);
        }
    }
    return drives;
}

UINT CSystemDriveList::GetDriveType(const CString& root) {
    for (const CDriveInfo& drive : GetDrives()) {
        if (drive.m_root == root)
            return drive.m_type;
    }
    return DRIVE_NO_ROOT_DIR;
}

BOOL CSystemDriveList::ListFolder(const CString& folder, std::vector<CFolderEntry>& entries) {
    for (const auto& provider : m_providers) {
        if (provider->ListFolder(folder, entries))
            return TRUE;
    }
    return ListFileSystemFolder(folder, entries);
}

CString CSystemDriveList::MediumKey(const CString& root) {
    for (const auto& provider : m_providers) {
        CString key = provider->MediumKey(root);
        if (!key.IsEmpty())
            return key;
    }
    return CString();
}

BOOL IDriveList::HasSubFolder(const CString& folder) {
    std::vector<CFolderEntry> entries;
    if (!ListFolder(folder, entries))
        return FALSE;
    for (const CFolderEntry& entry : entries) {
        if (entry.m_isFolder && entry.m_name != u"." && entry.m_name != u"..")
            return TRUE;
    }
    return FALSE;
}

BOOL CSystemDriveList::HasSubFolder(const CString& folder) {
    std::vector<CFolderEntry> entries;
    for (const auto& provider : m_providers) {
        if (provider->ListFolder(folder, entries))
            return std::any_of(entries.begin(), entries.end(), [](const CFolderEntry& e) {
                return e.m_isFolder && e.m_name != u"." && e.m_name != u"..";
            });
    }
    return FileSystemFolderHasSubFolder(folder);
}

BOOL FileSystemFolderHasSubFolder(const CString& folder) {
    const std::string path = folder.ToUtf8();
    DIR* dir = opendir(path.c_str());
    if (!dir)
        return FALSE;
    BOOL found = FALSE;
    while (dirent* entry = readdir(dir)) {
        const std::string name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        bool isFolder = entry->d_type == DT_DIR;
        if (entry->d_type == DT_UNKNOWN || entry->d_type == DT_LNK) {
            struct stat st {};
            isFolder = stat((path + "/" + name).c_str(), &st) == 0 && S_ISDIR(st.st_mode);
        }
        if (isFolder) {
            found = TRUE;
            break;
        }
    }
    closedir(dir);
    return found;
}

BOOL ListFileSystemFolder(const CString& folder, std::vector<CFolderEntry>& entries) {
    const std::string path = folder.ToUtf8();
    DIR* dir = opendir(path.c_str());
    if (!dir)
        return FALSE;
    while (dirent* entry = readdir(dir)) {
        CFolderEntry item;
        item.m_name = CString::FromUtf8(entry->d_name);
        std::string full = path;
        if (full.empty() || full.back() != '/')
            full += '/';
        full += entry->d_name;
        struct stat st {};
        // A link counts as what it points to; a broken one as a file.
        if (stat(full.c_str(), &st) == 0) {
            item.m_isFolder = S_ISDIR(st.st_mode) ? TRUE : FALSE;
            item.m_readOnly = (st.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0 ? TRUE : FALSE;
        }
        entries.push_back(item);
    }
    closedir(dir);
    return TRUE;
}

namespace {

std::mutex g_driveListLock;
IDriveList* g_driveList = nullptr;

CSystemDriveList& SystemDriveList() {
    static CSystemDriveList systemList;
    return systemList;
}

} // namespace

void AddSystemFolderProvider(std::shared_ptr<IFolderProvider> provider) {
    std::lock_guard<std::mutex> lock(g_driveListLock);
    SystemDriveList().AddProvider(std::move(provider));
}

IDriveList& GetDriveList() {
    CSystemDriveList& systemList = SystemDriveList();
    std::lock_guard<std::mutex> lock(g_driveListLock);
    return g_driveList ? *g_driveList : systemList;
}

IDriveList* SetDriveList(IDriveList* list) {
    std::lock_guard<std::mutex> lock(g_driveListLock);
    IDriveList* previous = g_driveList;
    g_driveList = list;
    return previous;
}

void SplitFolderPath(const CString& folder, const std::vector<CString>& driveRoots,
                     CStringArray& names) {
    CString root;
    for (const CString& candidate : driveRoots) {
        if (candidate.IsEmpty() || candidate.GetLength() <= root.GetLength())
            continue;
        const int length = candidate.GetLength();
        const bool isFolder = folder == candidate;
        const bool above = folder.GetLength() > length && folder.Left(length) == candidate &&
                           (candidate[length - 1] == u'/' || folder[length] == u'/');
        if (isFolder || above)
            root = candidate;
    }
    int start = root.GetLength();
    if (root.IsEmpty()) {
        root = u"/";
        start = 0;
    }
    names.Add(root);
    const int length = folder.GetLength();
    while (start < length) {
        int slash = folder.Find(u'/', start);
        const int end = slash < 0 ? length : slash;
        if (end > start)
            names.Add(folder.Mid(start, end - start));
        start = end + 1;
    }
}

CString JoinFolderPath(const CStringArray& names) {
    CString folder;
    for (int i = 0; i < names.GetSize(); ++i)
        folder = i == 0 ? names[0] : FolderChild(folder, names[i]);
    return folder;
}

CString FolderChild(const CString& folder, const CString& name) {
    if (!folder.IsEmpty() && folder[folder.GetLength() - 1] == u'/')
        return folder + name;
    return folder + u"/" + name;
}
