#include "interchange/MediaRecordFormat.h"

namespace {

enum DueField {
    DUE_NONE = -1,
    DUE_TYPE = 0,
    DUE_TOPICS = 6,
    DUE_FAVORITE = 7,
    DUE_NAME = 10,
    DUE_LOCATION = 11
};

class CMediaRecordReader {
public:
    CMediaRecordReader(const CTopicStrAliasAr* aliases, CMediaArray& items, int* count)
        : m_aliases(aliases), m_items(items), m_count(count) {}

    void TakeLine(const CString& line) {
        if (line.IsEmpty() || line.Left(2) == u"//")
            return;
        if (m_due == DUE_NONE)
            ExpectField(line);
        else
            TakeValue(line);
    }

    void Finish() {
        if (m_record.IsValid()) {
            m_items.Add(m_record);
            ++*m_count;
        }
        m_record.Clear();
    }

private:
    void ExpectField(const CString& line) {
        if (line == u"0") {
            Finish();
            m_due = DUE_TYPE;
        } else if (line == u"6") {
            m_due = DUE_TOPICS;
        } else if (line == u"7") {
            m_due = DUE_FAVORITE;
        } else if (line == u"10") {
            m_due = DUE_NAME;
        } else if (line == u"11") {
            m_due = DUE_LOCATION;
        }
    }

    void TakeValue(const CString& line) {
        switch (m_due) {
        case DUE_TYPE: {
            // A bad code keeps the wait going, so the record eats every line
            // up to the next valid one.
            const MediaType type = CMediaItem::MediaTypeFromCode(line);
            if (type == MEDIA_NONE)
                return;
            m_record.m_type = type;
            break;
        }
        case DUE_TOPICS:
            m_record.SetTopicsFromList(line, m_aliases);
            break;
        case DUE_FAVORITE: {
            CString lower(line);
            lower.MakeLower();
            if (lower == u"yes" || lower == u"1")
                m_record.m_favorite = TRUE;
            break;
        }
        case DUE_NAME:
            m_record.m_name = line;
            break;
        case DUE_LOCATION:
            m_record.m_location = line;
            break;
        case DUE_NONE:
            break;
        }
        m_due = DUE_NONE;
    }

    const CTopicStrAliasAr* m_aliases;
    CMediaArray& m_items;
    int* m_count;
    DueField m_due = DUE_NONE;
    CMediaItem m_record;
};

} // namespace

BOOL CMediaItem::SetTopicsFromList(const CString& list, const CTopicStrAliasAr* aliases) {
    if (list.IsEmpty() || !aliases)
        return FALSE;
    const int length = list.GetLength();
    int start = 0;
    // A list past the deepest level can never be filed; what lies beyond it
    // isn't kept, so a hostile list costs no memory.
    while (start < length && m_topics.GetSize() <= MAX_TOPIC_DEPTH) {
        const int comma = list.Find(u',', start);
        const int end = comma < 0 ? length : comma;
        CString name = list.Mid(start, end - start);
        name.Trim();
        aliases->AliasToTopic(name);
        m_topics.Add(name);
        if (comma < 0)
            break;
        start = comma + 1;
    }
    return TRUE;
}

BOOL ReadMediaRecordFile(const CString& path, const CTopicStrAliasAr* aliases, CMediaArray& items,
                         int* count) {
    *count = 0;
    CStdioFileEx file;
    if (!file.Open(path, CStdioFileEx::kRead))
        return FALSE;
    CMediaRecordReader reader(aliases, items, count);
    CString line;
    while (file.ReadString(line))
        reader.TakeLine(line);
    reader.Finish();
    file.Close();
    return TRUE;
}
