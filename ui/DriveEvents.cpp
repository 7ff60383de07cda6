// Drive arrival and removal for the document, in the drive roots that the
// tree and the folder view know: each time the system signals a change of
// its drives, the drive list is looked at again and what came and what
// went is told, one root at a time.
#include <memory>

#include "app/OrvexDoc.h"
#include "platform/base/DriveChanges.h"
#include "ui/Commands.h"

std::function<void(const CString&, BOOL)> DriveEventsFor(COrvexDoc& doc) {
    auto changes = std::make_shared<CDriveChanges>();
    changes->Start(GetDriveList());
    // What the system names (a device) only says that something changed.
    return [changes, &doc](const CString&, BOOL) {
        for (const CDriveChange& change : changes->Poll(GetDriveList()))
            doc.OnDiscChange(change.m_root, change.m_arrived);
    };
}
