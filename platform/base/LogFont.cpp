#include "platform/base/LogFont.h"

#include <mutex>

namespace {

std::mutex g_fontLock;

LOGFONTW MakeDefaultMenuFont() {
    LOGFONTW font;
    memset(&font, 0, sizeof font);
    font.lfHeight = -13;
    font.lfWeight = FW_NORMAL;
    SetFaceName(font, CString(u"Sans Serif"));
    return font;
}

LOGFONTW g_menuFont = MakeDefaultMenuFont();

} // namespace

CString GetFaceName(const LOGFONTW& font) {
    int length = 0;
    while (length < LF_FACESIZE && font.lfFaceName[length] != 0)
        ++length;
    return CString(font.lfFaceName, length);
}

void SetFaceName(LOGFONTW& font, const CString& face) {
    memset(font.lfFaceName, 0, sizeof font.lfFaceName);
    const int n = face.GetLength() < LF_FACESIZE - 1 ? face.GetLength() : LF_FACESIZE - 1;
    for (int i = 0; i < n; ++i)
        font.lfFaceName[i] = face[i];
}

LOGFONTW GetSystemMenuFont() {
    std::lock_guard<std::mutex> lock(g_fontLock);
    return g_menuFont;
}

void SetSystemMenuFont(const LOGFONTW& font) {
    std::lock_guard<std::mutex> lock(g_fontLock);
    g_menuFont = font;
}
