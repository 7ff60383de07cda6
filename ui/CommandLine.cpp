#include "ui/CommandLine.h"

#include <cstdlib>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QUrl>
#include <xcb/xcb.h>

#include "platform/qt/QtGlue.h"

namespace {

std::string Env(const char* name) {
    const char* value = getenv(name);
    return value ? value : "";
}

bool WaylandReachable() {
    std::string socketPath = Env("WAYLAND_DISPLAY");
    if (socketPath.empty())
        return false;
    if (socketPath[0] != '/') {
        const std::string runtime = Env("XDG_RUNTIME_DIR");
        if (runtime.empty())
            return false;
        socketPath = runtime + "/" + socketPath;
    }
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socketPath.size() >= sizeof address.sun_path)
        return false;
    memcpy(address.sun_path, socketPath.c_str(), socketPath.size() + 1);
    const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return false;
    const bool ok = connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    close(fd);
    return ok;
}

bool PlatformChosen() {
    return !Env("QT_QPA_PLATFORM").empty();
}

} // namespace

CString MediumFromArgument(const std::string& argument, const std::string& currentDirectory) {
    const QString text = QString::fromStdString(argument);
    if (text.startsWith(QStringLiteral("file:"), Qt::CaseInsensitive))
        return FromQString(QUrl(text).toLocalFile());
    // Anything with a scheme goes to the engine as it is; a name such as
    // "Live:2019.mp3" is a file, since a scheme has no dot before its colon.
    const int colon = text.indexOf(QStringLiteral("://"));
    if (colon > 0 && !text.left(colon).contains(QLatin1Char('/')))
        return FromQString(text);
    if (argument.empty() || argument[0] == '/')
        return CString(argument);
    return CString(currentDirectory + "/" + argument);
}

CDisplayCheck::CDisplayCheck() {
    if (PlatformChosen())
        return;
    const std::string display = Env("DISPLAY");
    if (!display.empty()) {
        m_x11 = xcb_connect(display.c_str(), nullptr);
        if (m_x11 && !xcb_connection_has_error(m_x11))
            return;
        if (m_x11)
            xcb_disconnect(m_x11);
        m_x11 = nullptr;
    }
    const std::string wayland = Env("WAYLAND_DISPLAY");
    if (WaylandReachable())
        return;
    if (display.empty() && wayland.empty()) {
        m_reason =
            "orvex: no display to open the window on (DISPLAY and WAYLAND_DISPLAY are unset)";
        return;
    }
    m_reason = "orvex: cannot connect to the display";
    if (!display.empty())
        m_reason += " \"" + display + "\"";
    if (!wayland.empty())
        m_reason += (display.empty() ? " \"" : " or \"") + wayland + "\"";
}

CDisplayCheck::~CDisplayCheck() {
    if (m_x11)
        xcb_disconnect(m_x11);
}

void CDisplayCheck::PreferX11UnderWayland() const {
    if (!PlatformChosen() && m_x11 && !Env("WAYLAND_DISPLAY").empty())
        setenv("QT_QPA_PLATFORM", "xcb", 1);
}
