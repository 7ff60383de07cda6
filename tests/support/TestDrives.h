// The machine's drives as a test gives them, in place of the system's while
// the list lives. Each test says how its drives list their folders.
#pragma once
#include <vector>

#include "platform/base/Drives.h"

class CTestDriveList : public IDriveList {
public:
    CTestDriveList() : m_previous(SetDriveList(this)) {}
    ~CTestDriveList() override { SetDriveList(m_previous); }
    CTestDriveList(const CTestDriveList&) = delete;
    CTestDriveList& operator=(const CTestDriveList&) = delete;

    // A drive labelled by its root unless a label is given.
    void AddDrive(const CString& root, UINT type, const CString& label = CString(),
                  const CString& device = CString()) {
        m_drives.push_back(CDriveInfo{root, label.IsEmpty() ? root : label, device, type});
    }
    std::vector<CDriveInfo> GetDrives() override { return m_drives; }
    UINT GetDriveType(const CString& root) override {
        for (const CDriveInfo& drive : m_drives) {
            if (drive.m_root == root)
                return drive.m_type;
        }
        return DRIVE_NO_ROOT_DIR;
    }

private:
    std::vector<CDriveInfo> m_drives;
    IDriveList* m_previous;
};
