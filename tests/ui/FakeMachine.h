// A made-up machine for the window tests: a system root in a temporary
// folder with a hard disc, an optical drive without a disc and a USB stick
// whose file system is mounted in the same folder. The drive list of the
// process reads that root instead of the machine's own.
#pragma once
#include <filesystem>
#include <string>

#include "platform/base/Drives.h"
#include "tests/support/TempDir.h"

class FakeMachine {
public:
    FakeMachine() : m_list(m_root.Str()) {
        Block("sda", "0");
        Block("sdb", "1");
        TempDir::Write(m_root / "sys/block/sdb/sdb1/partition", "1\n");
        Block("sr0", "1");
        m_stick = m_root / "media/STICK";
        TempDir::Write(m_stick + "/clip.mp4", "x");
        TempDir::Write(m_stick + "/notes.txt", "x");
        TempDir::Write(m_stick + "/Movies/Extras/a.mkv", "x");
        TempDir::Write(m_stick + "/DVD/VIDEO_TS.IFO", "x");
        TempDir::Write(m_stick + "/DVD/VTS_01_1.VOB", "x");
        TempDir::Write(m_stick + "/DVD/menu.avi", "x");
        std::filesystem::create_directories(m_stick + "/Empty");
        Mounts("/dev/sda1 / ext4 rw 0 0\n/dev/sdb1 " + m_stick + " vfat rw 0 0\n");
        m_previous = SetDriveList(&m_list);
    }
    ~FakeMachine() { SetDriveList(m_previous); }

    void Block(const std::string& name, const char* removable) {
        TempDir::Write(m_root / ("sys/block/" + name + "/removable"),
                       std::string(removable) + "\n");
    }
    void Mounts(const std::string& text) { TempDir::Write(m_root / "proc/self/mounts", text); }
    CString Stick() const { return CString(m_stick); }

    TempDir m_root;
    std::string m_stick;
    CSystemDriveList m_list;
    IDriveList* m_previous = nullptr;
};
