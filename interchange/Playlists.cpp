#include "interchange/Playlists.h"

#include "platform/base/Utf.h"

namespace {

// Longer lines are cut: no playlist entry comes near this, and a file of one
// endless line costs no more memory than this.
constexpr size_t kMaxLineBytes = 1 << 20;

CString DecodeLine(const std::string& bytes) {
    if (IsValidUtf8(bytes))
        return CString(Utf8ToUtf16(bytes));
    std::u16string latin1;
    latin1.reserve(bytes.size());
    for (unsigned char c : bytes)
        latin1.push_back(c);
    return CString(std::move(latin1));
}

// The scheme of "scheme://...", lower case, or empty.
CString SchemeOf(const CString& location) {
    const int mark = location.Find(CString(u"://"));
    if (mark <= 0)
        return CString();
    for (int i = 0; i < mark; ++i) {
        const char16_t c = location[i];
        const bool ok =
            (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') ||
            (i > 0 && ((c >= u'0' && c <= u'9') || c == u'+' || c == u'-' || c == u'.'));
        if (!ok)
            return CString();
    }
    CString scheme = location.Left(mark);
    scheme.MakeLower();
    return scheme;
}

int HexValue(char16_t c) {
    if (c >= u'0' && c <= u'9')
        return c - u'0';
    if (c >= u'a' && c <= u'f')
        return c - u'a' + 10;
    if (c >= u'A' && c <= u'F')
        return c - u'A' + 10;
    return -1;
}

// The local path of a "file://" address: its escapes undone, as UTF-8.
CString FileUrlPath(const CString& url) {
    CString rest = url.Mid(7); // behind "file://"
    const int slash = rest.Find(u'/');
    rest = slash < 0 ? CString() : rest.Mid(slash); // a host name is passed over
    std::string bytes;
    for (int i = 0; i < rest.GetLength(); ++i) {
        const char16_t c = rest[i];
        if (c == u'%' && i + 2 < rest.GetLength() && HexValue(rest[i + 1]) >= 0 &&
            HexValue(rest[i + 2]) >= 0) {
            bytes.push_back(static_cast<char>(HexValue(rest[i + 1]) * 16 + HexValue(rest[i + 2])));
            i += 2;
        } else {
            bytes += CString(c).ToUtf8();
        }
    }
    return DecodeLine(bytes);
}

// A path of another system that names its own place: a drive or a share.
bool IsForeignAbsolutePath(const CString& entry) {
    const bool drive =
        entry.GetLength() >= 3 && entry[1] == u':' && (entry[2] == u'\\' || entry[2] == u'/');
    return drive || entry.Left(2) == u"\\\\";
}

bool IsStreamLocation(const CString& location) {
    const CString scheme = SchemeOf(location);
    return location.IsEmpty() || (!scheme.IsEmpty() && scheme != u"file");
}

} // namespace

BOOL ForEachPlaylistLine(const CString& path, const PlaylistLineFn& take) {
    CStdioFile file;
    if (!file.Open(path, CFile::typeText))
        return FALSE;
    std::string bytes;
    bool first = true;
    while (file.ReadLineBytes(bytes, kMaxLineBytes)) {
        if (first && bytes.starts_with("\xEF\xBB\xBF"))
            bytes.erase(0, 3);
        first = false;
        const CString line = DecodeLine(bytes);
        CString lower(line);
        lower.MakeLower();
        take(line, lower);
    }
    file.Close();
    return TRUE;
}

CString ResolvePlaylistEntry(const CString& entry, const CString& folder) {
    if (folder.IsEmpty() || entry.IsEmpty())
        return entry;
    const CString scheme = SchemeOf(entry);
    if (scheme == u"file")
        return FileUrlPath(entry);
    if (!scheme.IsEmpty() || entry[0] == u'/' || IsForeignAbsolutePath(entry))
        return entry;
    CString relative(entry);
    relative.Replace(u'\\', u'/');
    return folder + u"/" + relative;
}

void BuildPlaylistItems(const CStringArray& titles, const CStringArray& locations,
                        const CExtensionArray& extensions, CMediaArray& items) {
    for (int i = 0; i < locations.GetSize(); ++i) {
        CMediaItem item;
        CExtension kind;
        extensions.ClassifyLocation(locations[i], kind);
        const bool video = kind.m_type == MEDIA_VIDEO_URL || kind.m_type == MEDIA_VIDEO_FILE;
        // The table reads "http" as a stream and nothing else; a location
        // knows better what it is.
        if (IsStreamLocation(locations[i]))
            item.m_type = video ? MEDIA_VIDEO_URL : MEDIA_AUDIO_URL;
        else
            item.m_type = video ? MEDIA_VIDEO_FILE : MEDIA_AUDIO_FILE;
        item.m_location = locations[i];
        item.m_name = i < titles.GetSize() ? titles[i] : CString(u"Unknown");
        items.Add(item);
    }
}

BOOL IsPlsPlaylistItem(const CMediaItem& item) {
    return item.m_location.Find(CString(u"pls")) >= 0;
}
