#include "contents/Extensions.h"

namespace {

struct KnownExtension {
    const char16_t* ext;
    MediaType type;
};

constexpr KnownExtension kKnownExtensions[] = {
    {u"3g2", MEDIA_VIDEO_FILE},  {u"3gp", MEDIA_VIDEO_FILE}, {u"3gp2", MEDIA_VIDEO_FILE},
    {u"asf", MEDIA_VIDEO_FILE},  {u"avi", MEDIA_VIDEO_FILE}, {u"bdmv", MEDIA_VIDEO_FILE},
    {u"bup", MEDIA_VIDEO_FILE},  {u"cda", MEDIA_VIDEO_FILE}, {u"exr", MEDIA_AUDIO_FILE},
    {u"flv", MEDIA_VIDEO_FILE},  {u"gxf", MEDIA_VIDEO_FILE}, {u"ifv", MEDIA_VIDEO_FILE},
    {u"ifo", MEDIA_VIDEO_FILE},  {u"kux", MEDIA_VIDEO_FILE}, {u"m2t", MEDIA_VIDEO_FILE},
    {u"m2ts", MEDIA_VIDEO_FILE}, {u"m4v", MEDIA_VIDEO_FILE}, {u"mkv", MEDIA_VIDEO_FILE},
    {u"mod", MEDIA_VIDEO_FILE},  {u"mov", MEDIA_VIDEO_FILE}, {u"mp2", MEDIA_AUDIO_FILE},
    {u"mp3", MEDIA_AUDIO_FILE},  {u"mp4", MEDIA_VIDEO_FILE}, {u"mpg", MEDIA_VIDEO_FILE},
    {u"mpls", MEDIA_VIDEO_FILE}, {u"mxf", MEDIA_VIDEO_FILE}, {u"m3u8", MEDIA_VIDEO_FILE},
    {u"tod", MEDIA_VIDEO_FILE},  {u"vob", MEDIA_VIDEO_FILE}, {u"webm", MEDIA_VIDEO_FILE},
    {u"wma", MEDIA_AUDIO_FILE},  {u"wmv", MEDIA_VIDEO_FILE}, {u"xmv", MEDIA_VIDEO_FILE},
};

} // namespace

void CExtensionArray::LoadExtensions() {
    RemoveAll();
    for (const KnownExtension& known : kKnownExtensions)
        AddExtension(CString(known.ext), known.type);
}

void CExtensionArray::AddExtension(const CString& ext, MediaType type) {
    CExtension row;
    row.m_ext = ext;
    row.m_type = type;
    Add(row);
}

BOOL CExtensionArray::IsKnownExtension(const CString& ext) const {
    CString lower(ext);
    lower.MakeLower();
    for (const CExtension& row : *this) {
        if (row.m_ext == lower)
            return TRUE;
    }
    return FALSE;
}

MediaType CExtensionArray::GetExtensionType(const CString& ext, BOOL isUrl) const {
    CString lower(ext);
    lower.MakeLower();
    for (const CExtension& row : *this) {
        if (row.m_ext == lower) {
            if (isUrl && row.m_type == MEDIA_AUDIO_FILE)
                return MEDIA_AUDIO_URL;
            if (isUrl && row.m_type == MEDIA_VIDEO_FILE)
                return MEDIA_VIDEO_URL;
            return row.m_type;
        }
    }
    return MEDIA_NONE;
}

BOOL CExtensionArray::ClassifyLocation(const CString& location, CExtension& result) const {
    CString lower(location);
    lower.MakeLower();
    result.m_ext.Empty();
    result.m_type = MEDIA_NONE;
    // Any "http" makes a URL, "https" included, and so does a local path that
    // happens to hold those letters.
    const BOOL isUrl = lower.Find(CString(u"http")) >= 0;
    const int dot = lower.ReverseFind(u'.');
    if (dot < 0) {
        if (!isUrl)
            return FALSE;
        const bool video = lower.Find(CString(u"mp4")) >= 0 || lower.Find(CString(u"m3u8")) >= 0 ||
                           lower.Find(CString(u"hls")) >= 0;
        result.m_type = video ? MEDIA_VIDEO_URL : MEDIA_AUDIO_URL;
        return TRUE;
    }
    const CString ext = lower.Mid(dot + 1);
    if (ext.GetLength() < 1 || ext.GetLength() > 4 || !IsKnownExtension(ext))
        return FALSE;
    result.m_type = GetExtensionType(ext, isUrl);
    result.m_ext = ext;
    return TRUE;
}
