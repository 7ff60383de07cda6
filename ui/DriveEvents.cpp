// Drive arrival and removal for the window: the drive list is looked at
// every two seconds, and each change reaches the document as a drive event
// with the drive's root, as a device notification would.
#include <QTimer>
#include <memory>

#include "app/OrvexDoc.h"
#include "platform/base/DriveWatcher.h"
#include "ui/Commands.h"
#include "ui/MainFrame.h"

namespace {

constexpr int kDriveLookInterval = 2000;

} // namespace

void ConnectDriveEvents(CMainFrame& frame, COrvexDoc& doc) {
    auto watcher = std::make_shared<CDriveWatcher>();
    watcher->Start(GetDriveList());
    auto* timer = new QTimer(&frame);
    timer->setObjectName(QStringLiteral("DriveWatch"));
    QObject::connect(timer, &QTimer::timeout, &frame, [watcher, &doc] {
        for (const CDriveChange& change : watcher->Poll(GetDriveList()))
            doc.OnDiscChange(change.m_root, change.m_arrived);
    });
    timer->start(kDriveLookInterval);
}
