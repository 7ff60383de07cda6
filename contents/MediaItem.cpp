#include "contents/MediaItem.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

struct MediaTypeNames {
    const char16_t* code;
    const char16_t* typeName;
    const char16_t* groupName;
};

constexpr MediaTypeNames kNames[] = {
    {u"NONE", u"Unknown Stream", u"Miscellaneous"}, {u"AUDU", u"Audio Stream", u"Audio Streams"},
    {u"VIDU", u"Video Stream", u"Video Streams"},   {u"VIDF", u"Video File", u"Video Files"},
    {u"AUDF", u"Audio File", u"Audio Files"},
};
constexpr uint32_t kTypeCount = sizeof kNames / sizeof kNames[0];

} // namespace

bool CMediaItem::operator==(const CMediaItem& other) const {
    return m_name == other.m_name && m_location == other.m_location && m_type == other.m_type &&
           m_topics == other.m_topics;
}

void CMediaItem::Clear() {
    *this = CMediaItem();
}

BOOL CMediaItem::IsValid() const {
    return m_type != MEDIA_NONE && !m_name.IsEmpty() && !m_location.IsEmpty();
}

CString CMediaItem::GetTypeName() const {
    return CString(m_type < kTypeCount ? kNames[m_type].typeName : kNames[0].typeName);
}

CString CMediaItem::MediaTypeToCode() const {
    return CString(m_type < kTypeCount ? kNames[m_type].code : u"Unknown Stream");
}

MediaType CMediaItem::MediaTypeFromCode(const CString& code) {
    for (uint32_t t = 0; t < kTypeCount; ++t) {
        if (code == kNames[t].code)
            return static_cast<MediaType>(t);
    }
    return MEDIA_NONE;
}

CString CMediaItem::GetGroupName(MediaType type) {
    return CString(type < kTypeCount ? kNames[type].groupName : kNames[0].groupName);
}

CString CMediaItem::GetGroupName() const {
    return GetGroupName(m_type);
}

CString CMediaItem::GetTopicName() {
    if (m_topics.IsEmpty())
        m_topics.Add(GetGroupName());
    return m_topics[m_topics.GetUpperBound()];
}

CString CMediaItem::TopicsAsList() const {
    CString list;
    for (int i = 0; i < m_topics.GetSize(); ++i) {
        if (i)
            list += u',';
        list += m_topics[i];
    }
    return list;
}

void SplitBackslashPath(const CString& path, CStringArray& parts) {
    const int length = path.GetLength();
    int start = 0;
    while (start < length) {
        int slash = path.Find(u'\\', start);
        int end = slash < 0 ? length : slash;
        CString part = path.Mid(start, end - start);
        part.Trim();
        parts.Add(part);
        if (slash < 0)
            break;
        start = slash + 1;
    }
}

void CMediaItem::SetTopicsFromPath(const CString& path) {
    SplitBackslashPath(path, m_topics);
}

BOOL CMediaArray::Contains(const CMediaItem& item) const {
    return std::find(begin(), end(), item) != end();
}

void CMediaArray::SortByName(BOOL ascending) {
    // Each name is folded once, and the items are moved once: comparing
    // folded keys is what sorts many thousand items at once.
    auto& items = Items();
    struct Key {
        std::u16string folded;
        size_t index;
    };
    std::vector<Key> keys(items.size());
    for (size_t i = 0; i < items.size(); ++i) {
        const std::u16string& name = items[i].m_name.str();
        keys[i].folded.resize(name.size());
        std::transform(name.begin(), name.end(), keys[i].folded.begin(), ToLowerUnit);
        keys[i].index = i;
    }
    if (ascending)
        std::sort(keys.begin(), keys.end(),
                  [](const Key& a, const Key& b) { return a.folded < b.folded; });
    else
        std::sort(keys.begin(), keys.end(),
                  [](const Key& a, const Key& b) { return b.folded < a.folded; });
    std::vector<CMediaItem> sorted;
    sorted.reserve(items.size());
    for (const Key& key : keys)
        sorted.push_back(std::move(items[key.index]));
    items = std::move(sorted);
}
