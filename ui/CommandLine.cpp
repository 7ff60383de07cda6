#include "ui/CommandLine.h"

#include <cstdlib>

#include <QUrl>
#include <xcb/xcb.h>

#include "platform/qt/QtGlue.h"

namespace {

std::string Env(const char* name) {
    const char* value = getenv(name);
    return value ? value : "";
}

bool PlatformChosen() {
    return !Env("QT_QPA_PLATFORM").empty();
}

} // namespace

CString MediumFromArgument(const std::string& argument, const std::string& currentDirectory) {
    const QString text = QString::fromStdString(argument);
    if (text.startsWith(QStringLiteral("file:"), Qt::CaseInsensitive))
        return FromQString(QUrl(text).toLocalFile());
    // An address ("scheme://...") goes to the engine as it is; a name with a
    // colon alone, such as "Live:2019.mp3", is a file.
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
        m_reason = "orvex: cannot connect to the X display \"" + display + "\"";
    } else if (!Env("WAYLAND_DISPLAY").empty()) {
        m_reason = "orvex: the window needs X11; this Wayland session offers no XWayland "
                   "(DISPLAY is unset)";
    } else {
        m_reason =
            "orvex: no display to open the window on (DISPLAY and WAYLAND_DISPLAY are unset)";
    }
}

CDisplayCheck::~CDisplayCheck() {
    if (m_x11)
        xcb_disconnect(m_x11);
}

void CDisplayCheck::PreferX11UnderWayland() const {
    if (!PlatformChosen() && m_x11 && !Env("WAYLAND_DISPLAY").empty())
        setenv("QT_QPA_PLATFORM", "xcb", 1);
}

void CDisplayCheck::KeepPictureOnX11(const QString& platformName) {
    if (platformName == QStringLiteral("xcb") && !Env("WAYLAND_DISPLAY").empty())
        setenv("GST_GL_WINDOW", "x11", 0);
}
