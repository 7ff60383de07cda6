// Drive arrival and removal in drive roots, found by comparing the drive
// list with what it held at the last look; the window looks whenever the
// system signals a change of its drives. A medium that changes behind the
// same root counts as a removal and, with a new medium, an arrival.
#pragma once
#include <vector>

#include "platform/base/Drives.h"

struct CDriveChange {
    CString m_root;
    BOOL m_arrived = FALSE;
    bool operator==(const CDriveChange&) const = default;
};

class CDriveChanges {
public:
    // The first look only takes note of what is there.
    void Start(IDriveList& drives);
    // Removals first, then arrivals, each in the list's order.
    std::vector<CDriveChange> Poll(IDriveList& drives);

private:
    struct Seen {
        CString root;
        CString medium;
    };
    static std::vector<Seen> Look(IDriveList& drives);

    std::vector<Seen> m_seen;
};
