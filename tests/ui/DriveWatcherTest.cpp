// Drive changes reach the document as they happen, with no timer: the
// mount table's removable volumes, and an injected source standing in for
// the system's, which wakes the window to look at the drive list (of a
// made-up machine here) again.
#include <fcntl.h>
#include <unistd.h>

#include "app/DocView.h"
#include "platform/qt/DriveWatcher.h"
#include "tests/support/PrintCString.h"
#include "tests/ui/FakeMachine.h"
#include "tests/ui/FrameFixture.h"

namespace {

// A source whose descriptor the test makes ready by writing to a pipe.
class CPipeSource : public IDriveSource {
public:
    CPipeSource(std::set<std::string>* drives, int* writeEnd) : m_drives(drives) {
        if (pipe2(m_pipe, O_NONBLOCK) == 0)
            *writeEnd = m_pipe[1];
    }
    ~CPipeSource() override {
        close(m_pipe[0]);
        close(m_pipe[1]);
    }
    int Descriptor() const override { return m_pipe[0]; }
    std::set<std::string> Drives() override {
        char byte;
        while (read(m_pipe[0], &byte, 1) > 0) {
        }
        return *m_drives;
    }

private:
    std::set<std::string>* m_drives;
    int m_pipe[2] = {-1, -1};
};

struct HintRecorder : IDocView {
    std::vector<std::pair<int, CString>> hints;
    void OnUpdate(IDocView*, int hint, const CString* object) override {
        hints.emplace_back(hint, object ? *object : CString());
    }
};

} // namespace

TEST(DriveWatcher, RemovableVolumesOfAMountTable) {
    const std::string table = "/dev/nvme0n1p2 / ext4 rw 0 0\n"
                              "/dev/sr0 /media/me/DVD\\040VOLUME udf ro 0 0\n"
                              "/dev/sdb1 /run/media/me/STICK vfat rw 0 0\n"
                              "/dev/sdc1 /media/me/Card\\134x exfat rw 0 0\n"
                              "/dev/sr1 /mnt/disc iso9660 ro 0 0\n"
                              "tmpfs /media/tmp tmpfs rw 0 0\n"
                              "/dev/sda1 /home ext4 rw 0 0\n"
                              "broken\n";
    EXPECT_EQ(RemovableVolumes(table),
              (std::set<std::string>{"/dev/sr0", "/dev/sdb1", "/dev/sdc1", "/dev/sr1"}));
    EXPECT_TRUE(RemovableVolumes("").empty());
}

class DriveChanges : protected FakeMachine, public FrameTest {};

TEST_F(DriveChanges, WhatCameAndWhatWentReachTheDocumentAsHintsWithTheDriveRoots) {
    HintRecorder recorder;
    Doc().AddView(&recorder);
    std::set<std::string> signalled = {"/dev/sdb1"};
    int ready = -1;
    Frame().GetDriveWatcher().AddSource(std::make_unique<CPipeSource>(&signalled, &ready));
    ASSERT_GE(ready, 0);
    QCoreApplication::processEvents();
    EXPECT_TRUE(recorder.hints.empty()); // what was there at the start is not news

    // The stick is taken out while a disc is mounted in the optical drive.
    Mounts("/dev/sr0 " + (m_root / "media/DISC") + " udf ro 0 0\n");
    signalled = {"/dev/sr0"};
    ASSERT_EQ(write(ready, "x", 1), 1);
    ASSERT_TRUE(WaitFor([&] { return recorder.hints.size() == 3; }));
    EXPECT_EQ(recorder.hints[0], std::make_pair(HINT_DISC_REMOVED, Stick()));
    EXPECT_EQ(recorder.hints[1], std::make_pair(HINT_DISC_REMOVED, CString(u"/dev/sr0")));
    EXPECT_EQ(recorder.hints[2],
              std::make_pair(HINT_DISC_ARRIVED, CString((m_root / "media/DISC").c_str())));

    // A wake-up with nothing changed tells nothing.
    signalled = {};
    ASSERT_EQ(write(ready, "x", 1), 1);
    QTest::qWait(50);
    EXPECT_EQ(recorder.hints.size(), 3u);
    Doc().RemoveView(&recorder);
}
