// Drive changes without polling: each source of the system's own record of
// drives (the mount table, the kernel's device events) has a descriptor
// that becomes ready when something changed; the watcher then takes the
// source's new list of drives that hold a medium and tells what came and
// what went. A drive is named by its device ("/dev/sr0", "/dev/sdb1").
#pragma once
#include <QObject>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/base/CString.h"

class QSocketNotifier;

class IDriveSource {
public:
    virtual ~IDriveSource() = default;
    // Becomes ready (readable, or with priority data) when the drives may
    // have changed.
    virtual int Descriptor() const = 0;
    virtual bool SignalsByPriority() const { return false; }
    // Takes what made the descriptor ready and gives the drives that hold a
    // medium now.
    virtual std::set<std::string> Drives() = 0;
};

class CDriveWatcher : public QObject {
public:
    using ChangeHandler = std::function<void(const CString& drive, BOOL arrived)>;

    explicit CDriveWatcher(ChangeHandler onChange, QObject* parent = nullptr);
    ~CDriveWatcher() override;

    // Watches a source from its present state on: what it holds already is
    // not told. A source whose descriptor is not valid is dropped.
    void AddSource(std::unique_ptr<IDriveSource> source);
    // The system's sources: mounted removable volumes, optical drives with
    // a disc in them.
    void AddSystemSources();

private:
    struct Watched {
        std::unique_ptr<IDriveSource> source;
        std::unique_ptr<QSocketNotifier> notifier;
        std::set<std::string> drives;
    };
    void OnReady(Watched& watched);

    ChangeHandler m_onChange;
    std::vector<std::unique_ptr<Watched>> m_sources;
};

// The volumes of a mount table (the text of /proc/self/mounts) that a user
// puts in and takes out: discs in optical drives (/dev/sr*) and whatever
// the desktop mounts under /media or /run/media. Octal escapes in the
// fields are decoded.
std::set<std::string> RemovableVolumes(const std::string& mountTable);
