#include "interchange/MediaRecordFormat.h"

namespace {

const char16_t* const kCrLf = u"\r\n";

void WriteLine(CStdioFileEx* file, const CString& text) {
    file->WriteString(text);
    file->WriteString(kCrLf);
}

void WriteField(CStdioFileEx* file, const char16_t* field, const CString& value) {
    WriteLine(file, field);
    WriteLine(file, value);
}

CString TopicField(const CMediaItem& item, const CTopicStrAliasAr* aliases, BOOL writeAliases) {
    CString list;
    for (int i = 0; i < item.m_topics.GetSize(); ++i) {
        CString name = item.m_topics[i];
        if (writeAliases && aliases)
            aliases->TopicToAlias(name);
        if (i)
            list += u',';
        list += name;
    }
    return list;
}

} // namespace

void WriteMediaRecordHead(CStdioFileEx* file) {
    WriteLine(file, u"");
    WriteLine(file, u"// Orvex Media List");
    WriteLine(file, u"");
    WriteLine(file, u"// Media Record Format 0.1");
    WriteLine(file, u"// See MediaRecordFormat.txt for definitions.");
}

BOOL IsDiscFileItem(const CMediaItem& item) {
    if (item.m_type != MEDIA_VIDEO_FILE && item.m_type != MEDIA_AUDIO_FILE)
        return FALSE;
    return item.m_location.Find(CString(u":\\")) >= 0 ||
           (!item.m_location.IsEmpty() && item.m_location[0] == u'/');
}

BOOL CTopic::WriteMediaRecords(CStdioFileEx* file, const CTopicStrAliasAr* aliases,
                               const BOOL* excludeDiscFiles, const BOOL* writeAliases,
                               int* count) const {
    const BOOL exclude = excludeDiscFiles && *excludeDiscFiles;
    const BOOL mapNames = writeAliases && *writeAliases;
    for (const CMediaItem& item : m_media) {
        if (exclude && IsDiscFileItem(item))
            continue;
        WriteField(file, u"0", item.MediaTypeToCode());
        if (!item.m_topics.IsEmpty())
            WriteField(file, u"6", TopicField(item, aliases, mapNames));
        if (item.m_favorite)
            WriteField(file, u"7", u"yes");
        WriteField(file, u"10", item.m_name);
        WriteField(file, u"11", item.m_location);
        WriteLine(file, u"");
        ++*count;
    }
    for (const CTopic& child : m_children)
        child.WriteMediaRecords(file, aliases, excludeDiscFiles, writeAliases, count);
    return TRUE;
}

BOOL CMediaContents::WriteMediaRecords(CStdioFileEx* file, const CTopicStrAliasAr* aliases,
                                       const BOOL* excludeDiscFiles, const BOOL* writeAliases,
                                       int* count) const {
    if (m_topics.IsEmpty())
        return FALSE;
    WriteMediaRecordHead(file);
    for (const CTopic& root : m_topics)
        root.WriteMediaRecords(file, aliases, excludeDiscFiles, writeAliases, count);
    return TRUE;
}

CString MediaRecordClipboardText(const CMediaItem& item) {
    CString text;
    for (const CString& line :
         {CString(u"0"), item.MediaTypeToCode(), CString(u"6"), item.TopicsAsList(), CString(u"7"),
          CString(item.m_favorite ? u"yes" : u"no"), CString(u"10"), item.m_name, CString(u"11"),
          item.m_location}) {
        text += line;
        text += kCrLf;
    }
    return text;
}
