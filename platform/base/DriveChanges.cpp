#include "platform/base/DriveChanges.h"

#include <algorithm>

std::vector<CDriveChanges::Seen> CDriveChanges::Look(IDriveList& drives) {
    std::vector<Seen> seen;
    for (const CDriveInfo& drive : drives.GetDrives())
        seen.push_back({drive.m_root, drives.MediumKey(drive.m_root)});
    return seen;
}

void CDriveChanges::Start(IDriveList& drives) {
    m_seen = Look(drives);
}

std::vector<CDriveChange> CDriveChanges::Poll(IDriveList& drives) {
    std::vector<Seen> now = Look(drives);
    auto find = [](const std::vector<Seen>& list, const CString& root) {
        return std::find_if(list.begin(), list.end(),
                            [&](const Seen& s) { return s.root == root; });
    };
    std::vector<CDriveChange> changes;
    for (const Seen& old : m_seen) {
        auto it = find(now, old.root);
        if (it == now.end() || (!old.medium.IsEmpty() && it->medium != old.medium))
            changes.push_back({old.root, FALSE});
    }
    for (const Seen& fresh : now) {
        auto it = find(m_seen, fresh.root);
        if (it == m_seen.end() || (!fresh.medium.IsEmpty() && it->medium != fresh.medium))
            changes.push_back({fresh.root, TRUE});
    }
    m_seen = std::move(now);
    return changes;
}
