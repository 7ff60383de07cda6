// The machine's removable and optical drives, and one-level listings of
// their folders. A drive is named by its root text, which stands where a
// drive letter would: the mount point of its medium, or, for an optical
// drive without a mounted file system, the drive's device path. Folders
// below a root are joined to it with "/".
#pragma once
#include <memory>
#include <vector>

#include "platform/base/Array.h"

// The kinds of drive roots the program tells apart.
constexpr UINT DRIVE_NO_ROOT_DIR = 1; // no drive has this root (any more)
constexpr UINT DRIVE_REMOVABLE = 2;
constexpr UINT DRIVE_CDROM = 5;

struct CDriveInfo {
    CString m_root;   // the mount point of the medium, or the device path
    CString m_label;  // a short text for a tree row
    CString m_device; // the block device, "/dev/sr0"
    UINT m_type = DRIVE_NO_ROOT_DIR;
};

struct CFolderEntry {
    CString m_name;
    BOOL m_isFolder = FALSE;
    BOOL m_readOnly = FALSE; // nobody may write it
};

// A source of folders that the file system does not hold itself, such as
// the tracks of an audio CD that is not mounted. A provider answers for the
// folders it knows and leaves all others to the file system.
class IFolderProvider {
public:
    virtual ~IFolderProvider() = default;
    // 1 with the folder's entries when this provider owns the folder.
    virtual BOOL ListFolder(const CString& folder, std::vector<CFolderEntry>& entries) = 0;
    // A text that changes when the medium behind a drive root changes
    // although the root stays the same; empty when there is no medium.
    virtual CString MediumKey(const CString&) { return CString(); }
};

class IDriveList {
public:
    virtual ~IDriveList() = default;
    // The removable and optical drive roots, in the system's order.
    virtual std::vector<CDriveInfo> GetDrives() = 0;
    // DRIVE_REMOVABLE or DRIVE_CDROM for a present root, else DRIVE_NO_ROOT_DIR.
    virtual UINT GetDriveType(const CString& root) = 0;
    // The entries of one folder, unsorted, "." and ".." included where the
    // file system gives them; 0 when the folder gives no listing.
    virtual BOOL ListFolder(const CString& folder, std::vector<CFolderEntry>& entries) = 0;
    // What identifies the medium of a root beside the root itself.
    virtual CString MediumKey(const CString&) { return CString(); }
    // Whether the folder gives a listing with a folder in it (other than
    // "." and ".."); the listing may stop at the first one.
    virtual BOOL HasSubFolder(const CString& folder);
};

// The drives from the system's own record: the block devices of
// `systemRoot`/sys/block and the mounts of `systemRoot`/proc/self/mounts.
// Mount points are used as the mounts file names them.
class CSystemDriveList : public IDriveList {
public:
    explicit CSystemDriveList(CString systemRoot = CString(u"/"));

    std::vector<CDriveInfo> GetDrives() override;
    UINT GetDriveType(const CString& root) override;
    BOOL ListFolder(const CString& folder, std::vector<CFolderEntry>& entries) override;
    CString MediumKey(const CString& root) override;
    BOOL HasSubFolder(const CString& folder) override;

    // Providers are asked in the order added, before the file system.
    void AddProvider(std::shared_ptr<IFolderProvider> provider);

private:
    CString m_systemRoot;
    std::vector<std::shared_ptr<IFolderProvider>> m_providers;
};

// Lists a folder of the file system; 0 when it can't be opened.
BOOL ListFileSystemFolder(const CString& folder, std::vector<CFolderEntry>& entries);
// Whether a folder of the file system holds a folder, read up to the first.
BOOL FileSystemFolderHasSubFolder(const CString& folder);

// The drive list of the process. Installing one gives the previous (null
// for the built-in system list); null puts the built-in one back.
IDriveList& GetDriveList();
IDriveList* SetDriveList(IDriveList* list);
// Adds a provider to the built-in system list, such as the reader of audio
// CDs, which sits above this layer.
void AddSystemFolderProvider(std::shared_ptr<IFolderProvider> provider);

// A folder text as names: the drive root it lies on (the longest root that
// is the folder or a folder above it), then one name for each level below.
// A folder on no drive starts at "/".
void SplitFolderPath(const CString& folder, const std::vector<CString>& driveRoots,
                     CStringArray& names);
// The reverse: the first name, then each further one behind a "/".
CString JoinFolderPath(const CStringArray& names);
// A folder and a name in it.
CString FolderChild(const CString& folder, const CString& name);
