// The 92-byte font record the user data file stores for each pane. The record
// is kept byte for byte so that files move between machines; the user
// interface maps it to a desktop font.
#pragma once
#include <cstring>

#include "platform/base/CString.h"

constexpr int LF_FACESIZE = 32;

#pragma pack(push, 1)
struct LOGFONTW {
    int32_t lfHeight;
    int32_t lfWidth;
    int32_t lfEscapement;
    int32_t lfOrientation;
    int32_t lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    char16_t lfFaceName[LF_FACESIZE];
};
#pragma pack(pop)
static_assert(sizeof(LOGFONTW) == 92, "LOGFONTW is a 92-byte record");

constexpr int32_t FW_NORMAL = 400;
constexpr int32_t FW_BOLD = 700;

// The face name as a string, up to its terminating 0 unit.
CString GetFaceName(const LOGFONTW& font);
// Sets the face name, cut to 31 units and ended by a 0 unit.
void SetFaceName(LOGFONTW& font, const CString& face);

// The desktop's menu font, the default of both panes. The user interface
// installs the real one at start-up; without it a plain sans-serif font.
LOGFONTW GetSystemMenuFont();
void SetSystemMenuFont(const LOGFONTW& font);
