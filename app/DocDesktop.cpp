// Where the desktop features keep their files in the data folder.
#include "app/OrvexDoc.h"
#include "app/PlayedTitles.h"

CString COrvexDoc::DesktopSettingsPath() const {
    return m_dataFolder + u"/" + kDesktopSettingsFile;
}

BOOL COrvexDoc::SaveDesktopSettings() {
    return m_desktopSettings.Save(DesktopSettingsPath());
}

CString COrvexDoc::PlayedTitlesPath() const {
    return m_dataFolder + u"/" + kPlayedTitlesFile;
}
