// The system's own records of drives: the mount table, which the kernel
// marks with priority data whenever it changes, and the device manager's
// events for optical drives, which say whether a disc is in.
#include <fcntl.h>
#include <libudev.h>
#include <unistd.h>

#include <cstring>

#include "platform/qt/DriveWatcher.h"

namespace {

class CMountTableSource : public IDriveSource {
public:
    CMountTableSource() : m_fd(open("/proc/self/mounts", O_RDONLY | O_CLOEXEC)) {}
    ~CMountTableSource() override {
        if (m_fd >= 0)
            close(m_fd);
    }
    int Descriptor() const override { return m_fd; }
    bool SignalsByPriority() const override { return true; }
    std::set<std::string> Drives() override {
        // Reading the table from its start again is what clears the mark.
        std::string table;
        char buffer[8192];
        if (lseek(m_fd, 0, SEEK_SET) < 0)
            return {};
        ssize_t n;
        while ((n = read(m_fd, buffer, sizeof buffer)) > 0)
            table.append(buffer, static_cast<size_t>(n));
        return RemovableVolumes(table);
    }

private:
    int m_fd;
};

class COpticalDiscSource : public IDriveSource {
public:
    COpticalDiscSource() : m_udev(udev_new()) {
        if (!m_udev)
            return;
        m_monitor = udev_monitor_new_from_netlink(m_udev, "udev");
        if (!m_monitor)
            return;
        udev_monitor_filter_add_match_subsystem_devtype(m_monitor, "block", "disk");
        if (udev_monitor_enable_receiving(m_monitor) < 0) {
            udev_monitor_unref(m_monitor);
            m_monitor = nullptr;
            return;
        }
        const int fd = udev_monitor_get_fd(m_monitor);
        fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) | O_NONBLOCK);
    }
    ~COpticalDiscSource() override {
        if (m_monitor)
            udev_monitor_unref(m_monitor);
        if (m_udev)
            udev_unref(m_udev);
    }
    int Descriptor() const override { return m_monitor ? udev_monitor_get_fd(m_monitor) : -1; }
    std::set<std::string> Drives() override {
        while (udev_device* device = udev_monitor_receive_device(m_monitor))
            udev_device_unref(device);
        // The device manager's own record of each drive, after the event.
        std::set<std::string> drives;
        udev_enumerate* list = udev_enumerate_new(m_udev);
        if (!list)
            return drives;
        udev_enumerate_add_match_subsystem(list, "block");
        udev_enumerate_add_match_sysname(list, "sr*");
        udev_enumerate_scan_devices(list);
        udev_list_entry* entry;
        udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(list)) {
            udev_device* device =
                udev_device_new_from_syspath(m_udev, udev_list_entry_get_name(entry));
            if (!device)
                continue;
            const char* media = udev_device_get_property_value(device, "ID_CDROM_MEDIA");
            const char* node = udev_device_get_devnode(device);
            if (media && strcmp(media, "1") == 0 && node)
                drives.insert(node);
            udev_device_unref(device);
        }
        udev_enumerate_unref(list);
        return drives;
    }

private:
    udev* m_udev;
    udev_monitor* m_monitor = nullptr;
};

} // namespace

void CDriveWatcher::AddSystemSources() {
    AddSource(std::make_unique<CMountTableSource>());
    AddSource(std::make_unique<COpticalDiscSource>());
}
