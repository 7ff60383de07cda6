// An audio CD's folder made from its table of contents: one read-only
// TrackNN.cda for each audio track of a disc image or a drive, and nothing
// for what holds no audio CD.
#include <gtest/gtest.h>

#include "platform/disc/AudioCdFolders.h"
#include "tests/support/PrintCString.h"
#include "tests/support/TestDiscs.h"

namespace {

std::vector<std::string> Names(const std::vector<CFolderEntry>& entries) {
    std::vector<std::string> names;
    for (const CFolderEntry& entry : entries) {
        EXPECT_FALSE(entry.m_isFolder);
        EXPECT_TRUE(entry.m_readOnly);
        names.push_back(entry.m_name.ToUtf8());
    }
    return names;
}

} // namespace

TEST(AudioCdFolders, AnImageListsItsAudioTracksAndNothingElseIsATrackFolder) {
    CAudioCdFolders folders;
    const std::string cue = TestDiscs::Get().AudioCd();
    for (const std::string& folder : {cue, cue + "/"}) {
        std::vector<CFolderEntry> entries;
        ASSERT_TRUE(folders.ListFolder(CString(folder), entries)) << folder;
        EXPECT_EQ(Names(entries), std::vector<std::string>({"Track01.cda", "Track02.cda"}));
    }
    // A data track is no track of the folder. (The image's data is read from
    // the file named as the cue sheet is.)
    const TempDir& dir = TestDiscs::Get().Dir();
    TempDir::Write(dir / "mixed.bin", TempDir::Read(dir / "disc.bin"));
    TempDir::Write(dir / "mixed.cue", "FILE \"mixed.bin\" BINARY\n  TRACK 01 MODE1/2352\n"
                                      "    INDEX 01 00:00:00\n  TRACK 02 AUDIO\n"
                                      "    INDEX 01 00:01:00\n");
    std::vector<CFolderEntry> entries;
    ASSERT_TRUE(folders.ListFolder(CString(dir / "mixed.cue"), entries));
    EXPECT_EQ(Names(entries), std::vector<std::string>({"Track02.cda"}));

    entries.clear();
    EXPECT_FALSE(folders.ListFolder(CString(dir / "missing.cue"), entries));
    EXPECT_FALSE(folders.ListFolder(CString(dir.Path().string()), entries));
    EXPECT_FALSE(folders.ListFolder(CString(u"/dev/orvex-no-such-drive"), entries));
    EXPECT_TRUE(entries.empty());
    EXPECT_TRUE(CAudioCdFolders::MayHoldTracks("/dev/sr0"));
    EXPECT_TRUE(CAudioCdFolders::MayHoldTracks("/discs/Live.CUE"));
    EXPECT_FALSE(CAudioCdFolders::MayHoldTracks("/media/u/DISC"));

    // The key tells one disc from another in the same place.
    const CString key = folders.MediumKey(CString(cue));
    EXPECT_FALSE(key.IsEmpty());
    EXPECT_NE(folders.MediumKey(CString(dir / "mixed.cue")), key);
    EXPECT_TRUE(folders.MediumKey(CString(dir / "missing.cue")).IsEmpty());
}
