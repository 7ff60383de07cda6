#include "platform/qt/DriveWatcher.h"

#include <QSocketNotifier>
#include <sstream>

CDriveWatcher::CDriveWatcher(ChangeHandler onChange, QObject* parent)
    : QObject(parent), m_onChange(std::move(onChange)) {}

CDriveWatcher::~CDriveWatcher() = default;

void CDriveWatcher::AddSource(std::unique_ptr<IDriveSource> source) {
    if (!source || source->Descriptor() < 0)
        return;
    auto watched = std::make_unique<Watched>();
    watched->drives = source->Drives();
    watched->notifier = std::make_unique<QSocketNotifier>(
        source->Descriptor(),
        source->SignalsByPriority() ? QSocketNotifier::Exception : QSocketNotifier::Read);
    watched->source = std::move(source);
    Watched* raw = watched.get();
    connect(watched->notifier.get(), &QSocketNotifier::activated, this,
            [this, raw] { OnReady(*raw); });
    m_sources.push_back(std::move(watched));
}

void CDriveWatcher::OnReady(Watched& watched) {
    std::set<std::string> now = watched.source->Drives();
    std::vector<std::pair<std::string, BOOL>> changes;
    for (const std::string& drive : watched.drives) {
        if (!now.count(drive))
            changes.emplace_back(drive, FALSE);
    }
    for (const std::string& drive : now) {
        if (!watched.drives.count(drive))
            changes.emplace_back(drive, TRUE);
    }
    watched.drives = std::move(now);
    // The handler may run a message box's own loop; the state is settled
    // before it is called.
    for (const auto& [drive, arrived] : changes)
        m_onChange(CString(drive), arrived);
}

namespace {

bool IsOctal(char c) {
    return c >= '0' && c <= '7';
}

// Mount table fields write blanks, tabs, newlines and backslashes as \ooo.
std::string DecodeField(const std::string& field) {
    std::string out;
    for (size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size() && IsOctal(field[i + 1]) &&
            IsOctal(field[i + 2]) && IsOctal(field[i + 3])) {
            out += static_cast<char>((field[i + 1] - '0') * 64 + (field[i + 2] - '0') * 8 +
                                     (field[i + 3] - '0'));
            i += 3;
        } else {
            out += field[i];
        }
    }
    return out;
}

bool StartsWith(const std::string& text, const char* prefix) {
    return text.rfind(prefix, 0) == 0;
}

} // namespace

std::set<std::string> RemovableVolumes(const std::string& mountTable) {
    std::set<std::string> volumes;
    std::istringstream lines(mountTable);
    std::string line;
    while (std::getline(lines, line)) {
        std::istringstream fields(line);
        std::string device, mountPoint;
        if (!(fields >> device >> mountPoint))
            continue;
        device = DecodeField(device);
        mountPoint = DecodeField(mountPoint);
        if (!StartsWith(device, "/dev/"))
            continue;
        if (StartsWith(device, "/dev/sr") || StartsWith(mountPoint, "/media/") ||
            StartsWith(mountPoint, "/run/media/"))
            volumes.insert(device);
    }
    return volumes;
}
