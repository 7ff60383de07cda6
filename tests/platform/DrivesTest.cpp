#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

#include "platform/base/DriveChanges.h"
#include "platform/base/Drives.h"
#include "tests/support/PrintCString.h"
#include "tests/support/TempDir.h"

namespace {

void Block(const TempDir& root, const std::string& name, const std::string& removable) {
    TempDir::Write(root / ("sys/block/" + name + "/removable"), removable + "\n");
}

// Answers for one made-up folder, as a disc reader would for a CD.
class TrackProvider : public IFolderProvider {
public:
    BOOL ListFolder(const CString& folder, std::vector<CFolderEntry>& entries) override {
        if (folder != u"/dev/sr1")
            return FALSE;
        entries.push_back({CString(u"Track01.cda"), FALSE, TRUE});
        return TRUE;
    }
    CString MediumKey(const CString& root) override {
        return root == u"/dev/sr1" ? m_key : CString();
    }
    CString m_key = u"disc-1";
};

} // namespace

TEST(Drives, RemovableAndOpticalDrivesComeFromTheSystemRecord) {
    TempDir root;
    Block(root, "sda", "0"); // a hard disc: no drive
    Block(root, "loop0", "0");
    Block(root, "sdb", "1"); // a stick with two partitions, one mounted twice
    TempDir::Write(root / "sys/block/sdb/sdb1/partition", "1\n");
    TempDir::Write(root / "sys/block/sdb/sdb2/partition", "2\n");
    Block(root, "sdc", "1"); // a card reader with nothing mounted: no drive
    Block(root, "sr0", "1"); // an optical drive with a disc
    Block(root, "sr1", "1"); // and one without
    Block(root, "sdd", "0"); // an optical drive known by its SCSI type
    TempDir::Write(root / "sys/block/sdd/device/type", "5\n");
    TempDir::Write(root / "proc/self/mounts", "/dev/sda1 / ext4 rw 0 0\n"
                                              "proc /proc proc rw 0 0\n"
                                              "/dev/sdb1 /media/u/MY\\040STICK vfat rw 0 0\n"
                                              "/dev/sdb1 /mnt/again vfat rw 0 0\n"
                                              "/dev/sr0 /media/u/DVD_VIDEO udf ro 0 0\n");
    CSystemDriveList list(root.Str());
    const std::vector<CDriveInfo> drives = list.GetDrives();
    ASSERT_EQ(drives.size(), 4u);
    EXPECT_EQ(drives[0].m_root, CString(u"/media/u/MY STICK"));
    EXPECT_EQ(drives[0].m_label, CString(u"MY STICK (sdb1)"));
    EXPECT_EQ(drives[0].m_device, CString(u"/dev/sdb1"));
    EXPECT_EQ(drives[0].m_type, DRIVE_REMOVABLE);
    EXPECT_EQ(drives[1].m_root, CString(u"/dev/sdd"));
    EXPECT_EQ(drives[1].m_type, DRIVE_CDROM);
    EXPECT_EQ(drives[2].m_root, CString(u"/media/u/DVD_VIDEO"));
    EXPECT_EQ(drives[2].m_type, DRIVE_CDROM);
    EXPECT_EQ(drives[3].m_root, CString(u"/dev/sr1"));
    EXPECT_EQ(drives[3].m_label, CString(u"sr1"));
    EXPECT_EQ(list.GetDriveType(CString(u"/dev/sr1")), DRIVE_CDROM);
    EXPECT_EQ(list.GetDriveType(CString(u"/")), DRIVE_NO_ROOT_DIR);
    EXPECT_EQ(list.GetDriveType(CString(u"/dev/sr0")), DRIVE_NO_ROOT_DIR);
    // No system record at all: no drives.
    TempDir empty;
    EXPECT_TRUE(CSystemDriveList(empty.Str()).GetDrives().empty());
}

TEST(Drives, ListingsTellFoldersAndReadOnlyFilesAndProvidersAnswerFirst) {
    TempDir dir;
    TempDir::Write(dir / "sub/inner.txt", "x");
    TempDir::Write(dir / "Track01.cda", "x");
    chmod((dir / "Track01.cda").c_str(), 0444);
    TempDir::Write(dir / "free.cda", "x");
    CSystemDriveList list(dir.Str());
    std::vector<CFolderEntry> entries;
    ASSERT_TRUE(list.ListFolder(dir.Str(), entries));
    auto find = [&](const char16_t* name) {
        return std::find_if(entries.begin(), entries.end(),
                            [&](const CFolderEntry& e) { return e.m_name == name; });
    };
    ASSERT_NE(find(u"sub"), entries.end());
    EXPECT_TRUE(find(u"sub")->m_isFolder);
    EXPECT_TRUE(find(u".")->m_isFolder);
    EXPECT_TRUE(find(u"Track01.cda")->m_readOnly);
    EXPECT_FALSE(find(u"free.cda")->m_readOnly);
    EXPECT_FALSE(find(u"free.cda")->m_isFolder);
    EXPECT_TRUE(list.HasSubFolder(dir.Str()));
    EXPECT_FALSE(list.HasSubFolder(CString((dir / "sub").c_str())));
    entries.clear();
    EXPECT_FALSE(list.ListFolder(CString((dir / "missing").c_str()), entries));
    EXPECT_FALSE(list.ListFolder(CString(u"/dev/sr1"), entries));

    auto tracks = std::make_shared<TrackProvider>();
    list.AddProvider(tracks);
    ASSERT_TRUE(list.ListFolder(CString(u"/dev/sr1"), entries));
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_TRUE(entries[0].m_readOnly);
    EXPECT_EQ(list.MediumKey(CString(u"/dev/sr1")), CString(u"disc-1"));
}

TEST(Drives, FolderTextsSplitAtTheirDriveRootAndJoinBack) {
    const std::vector<CString> roots{CString(u"/media/u/DISC"), CString(u"/media/u/DISC 2"),
                                     CString(u"/dev/sr0")};
    CStringArray names;
    SplitFolderPath(CString(u"/media/u/DISC 2/VIDEO_TS/"), roots, names);
    ASSERT_EQ(names.GetSize(), 2);
    EXPECT_EQ(names[0], CString(u"/media/u/DISC 2"));
    EXPECT_EQ(names[1], CString(u"VIDEO_TS"));
    EXPECT_EQ(JoinFolderPath(names), CString(u"/media/u/DISC 2/VIDEO_TS"));
    names.RemoveAll();
    SplitFolderPath(CString(u"/media/u/DISCO/x"), roots, names);
    EXPECT_EQ(names[0], CString(u"/"));
    EXPECT_EQ(JoinFolderPath(names), CString(u"/media/u/DISCO/x"));
    names.RemoveAll();
    SplitFolderPath(CString(u"/dev/sr0"), roots, names);
    EXPECT_EQ(names.GetSize(), 1);
    EXPECT_EQ(FolderChild(CString(u"/"), CString(u"a")), CString(u"/a"));
    EXPECT_EQ(FolderChild(CString(u"/dev/sr0"), CString(u"Track01.cda")),
              CString(u"/dev/sr0/Track01.cda"));
}

TEST(Drives, ChangesAreRemovalsThenArrivalsAndChangedMedia) {
    TempDir root;
    Block(root, "sdb", "1");
    Block(root, "sr1", "1");
    TempDir::Write(root / "proc/self/mounts", "/dev/sdb /media/A vfat rw 0 0\n");
    CSystemDriveList list(root.Str());
    auto tracks = std::make_shared<TrackProvider>();
    list.AddProvider(tracks);
    CDriveChanges changes;
    changes.Start(list);
    EXPECT_TRUE(changes.Poll(list).empty());

    TempDir::Write(root / "proc/self/mounts", "/dev/sdb /media/B vfat rw 0 0\n");
    tracks->m_key = u"disc-2";
    EXPECT_EQ(changes.Poll(list), (std::vector<CDriveChange>{{CString(u"/media/A"), FALSE},
                                                             {CString(u"/dev/sr1"), FALSE},
                                                             {CString(u"/media/B"), TRUE},
                                                             {CString(u"/dev/sr1"), TRUE}}));
    tracks->m_key.Empty();
    EXPECT_EQ(changes.Poll(list), (std::vector<CDriveChange>{{CString(u"/dev/sr1"), FALSE}}));
    EXPECT_TRUE(changes.Poll(list).empty());
}
