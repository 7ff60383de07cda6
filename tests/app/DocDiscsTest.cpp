// Finding a playable disc: only optical drives count, a DVD is a VIDEO_TS
// folder right in a drive's root and an audio CD a read-only Track01.cda
// there; the CD-DVD menu's entries follow the drives and the player, and
// its commands hand the disc found to the main window.
#include <gtest/gtest.h>

#include <map>

#include "app/OrvexApp.h"
#include "tests/app/DocFixtures.h"
#include "tests/support/PrintCString.h"
#include "tests/support/TempDir.h"
#include "tests/support/TestDrives.h"

namespace {

// Drives with made-up listings: each root lists what the test says.
class ListedDrives : public CTestDriveList {
public:
    void Add(const char16_t* root, UINT type, std::vector<CFolderEntry> entries) {
        AddDrive(CString(root), type);
        m_listings[CString(root)] = std::move(entries);
    }
    BOOL ListFolder(const CString& folder, std::vector<CFolderEntry>& entries) override {
        auto it = m_listings.find(folder);
        if (it == m_listings.end())
            return FALSE;
        entries = it->second;
        return TRUE;
    }

private:
    std::map<CString, std::vector<CFolderEntry>> m_listings;
};

CFolderEntry Folder(const char16_t* name) {
    return CFolderEntry{CString(name), TRUE, FALSE};
}
CFolderEntry File(const char16_t* name, BOOL readOnly) {
    return CFolderEntry{CString(name), FALSE, readOnly};
}

// A main window that plays what it is handed, as far as the document sees.
class DiscFrame : public FakeFrame {
public:
    using FakeFrame::FakeFrame;
    BOOL IsDvdPlaying() const override { return m_dvd; }
    BOOL IsCdPlaying() const override { return m_cd; }
    BOOL StartDvd(const CString& folder) override {
        m_started.push_back("dvd " + folder.ToUtf8());
        return TRUE;
    }
    BOOL StartCdFolder(const CString& folder) override {
        m_started.push_back("cd " + folder.ToUtf8());
        return TRUE;
    }
    BOOL m_dvd = FALSE;
    BOOL m_cd = FALSE;
    std::vector<std::string> m_started;
};

class DocDiscs : public ::testing::Test {
protected:
    COrvexDoc& Doc() { return *m_program.doc; }

    DiscFrame* m_frame = nullptr;
    RunningProgram m_program{[this](std::vector<std::string>& log) {
        auto frame = std::make_unique<DiscFrame>(log);
        m_frame = frame.get();
        return frame;
    }};
    ListedDrives m_drives;
};

} // namespace

TEST_F(DocDiscs, OnlyAnOpticalDrivesRootHoldsADiscAndTheFirstOneWins) {
    // A stick with both is no disc; a lower-case folder and a writable
    // track file are neither; the next drive holds a DVD, the last both.
    m_drives.Add(u"/media/stick", DRIVE_REMOVABLE,
                 {Folder(u"VIDEO_TS"), File(u"Track01.cda", TRUE)});
    m_drives.Add(u"/dev/sr0", DRIVE_CDROM, {Folder(u"video_ts"), File(u"Track01.cda", FALSE)});
    m_drives.Add(u"/media/MOVIE", DRIVE_CDROM, {Folder(u"."), Folder(u"VIDEO_TS")});
    m_drives.Add(u"/media/MIXED/", DRIVE_CDROM, {Folder(u"VIDEO_TS"), File(u"Track01.cda", TRUE)});
    EXPECT_TRUE(Doc().FindDiscPath(TRUE));
    EXPECT_EQ(Doc().m_dvdPath, CString(u"/media/MOVIE/VIDEO_TS/"));
    EXPECT_TRUE(Doc().FindDiscPath(FALSE));
    EXPECT_EQ(Doc().m_cdPath, CString(u"/media/MIXED/"));

    CString found = u"kept";
    EXPECT_FALSE(COrvexDoc::ProbeDiscRoot(CString(u"/dev/sr0"), &found, TRUE));
    EXPECT_FALSE(COrvexDoc::ProbeDiscRoot(CString(u"/dev/sr0"), &found, FALSE));
    EXPECT_FALSE(COrvexDoc::ProbeDiscRoot(CString(u"/media/empty"), &found, TRUE));
    EXPECT_EQ(found, CString(u"kept"));
}

TEST_F(DocDiscs, TheMenuFollowsTheDrivesAndThePlayerAndItsCommandsPlayTheDiscFound) {
    EXPECT_FALSE(Doc().OnUpdatePlayDvd());
    EXPECT_FALSE(Doc().OnUpdatePlayCd());
    // A failed search leaves the stored path as it was; the update handlers
    // empty it first.
    Doc().m_dvdPath = u"/old/VIDEO_TS/";
    EXPECT_FALSE(Doc().FindDiscPath(TRUE));
    EXPECT_EQ(Doc().m_dvdPath, CString(u"/old/VIDEO_TS/"));
    EXPECT_FALSE(Doc().OnUpdatePlayDvd());
    EXPECT_TRUE(Doc().m_dvdPath.IsEmpty());

    m_drives.Add(u"/dev/sr0", DRIVE_CDROM,
                 {File(u"Track01.cda", TRUE), File(u"Track02.cda", TRUE)});
    m_drives.Add(u"/media/DVD", DRIVE_CDROM, {Folder(u"VIDEO_TS")});
    EXPECT_TRUE(Doc().OnUpdatePlayDvd());
    EXPECT_TRUE(Doc().OnUpdatePlayCd());
    EXPECT_FALSE(Doc().OnUpdateDvdNavigation());
    Doc().OnPlayDvd();
    Doc().OnPlayCd();
    EXPECT_EQ(m_frame->m_started,
              std::vector<std::string>({"dvd /media/DVD/VIDEO_TS/", "cd /dev/sr0/"}));

    // While a disc of a kind plays, its entry is grey.
    m_frame->m_dvd = TRUE;
    EXPECT_FALSE(Doc().OnUpdatePlayDvd());
    EXPECT_TRUE(Doc().OnUpdatePlayCd());
    EXPECT_TRUE(Doc().OnUpdateDvdNavigation());
    m_frame->m_dvd = FALSE;
    m_frame->m_cd = TRUE;
    EXPECT_TRUE(Doc().OnUpdatePlayDvd());
    EXPECT_FALSE(Doc().OnUpdatePlayCd());

    // With no path found the commands do nothing.
    m_frame->m_started.clear();
    Doc().m_cdPath.Empty();
    Doc().OnPlayCd();
    EXPECT_TRUE(m_frame->m_started.empty());
}
