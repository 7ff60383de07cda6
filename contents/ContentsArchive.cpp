// The contents file form of the tree: depth first, every topic with its own
// stored path, counts as signed 32-bit words, strings in the tagged form.
// Readers never size memory from a count: each element is read into a work
// object and appended, so a bad count ends at the end of the data.
#include "contents/ContentsArchive.h"

#include "contents/MediaContents.h"
#include "contents/TopicAliases.h"
#include "platform/base/Archive.h"

namespace {

int32_t ReadCount(CArchive& ar) {
    int32_t count = 0;
    ar >> count;
    return count; // negative counts read as no elements
}

void StoreCount(CArchive& ar, int count) {
    ar << static_cast<int32_t>(count);
}

// A count, then each element in array order.
template <typename Array>
void StoreList(const Array& elements, CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) {
    StoreCount(ar, elements.GetSize());
    for (const auto& element : elements)
        element.Store(ar, aliases, pSchema);
}

// Each element is read into a cleared work object and appended by value.
template <typename Array>
void LoadList(Array& elements, CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) {
    const int32_t count = ReadCount(ar);
    for (int32_t i = 0; i < count; ++i) {
        typename Array::value_type work;
        work.Load(ar, aliases, pSchema);
        elements.Add(std::move(work));
    }
}

void LoadTopic(CTopic& topic, CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema,
               int depth);

void LoadTopicList(CTopicArray& topics, CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema,
                   int depth) {
    const int32_t count = ReadCount(ar);
    for (int32_t i = 0; i < count; ++i) {
        CTopic work;
        LoadTopic(work, ar, aliases, pSchema, depth);
        topics.Add(std::move(work));
    }
}

void LoadTopic(CTopic& topic, CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema,
               int depth) {
    // A file that nests deeper than the program ever makes is refused before
    // it can exhaust the stack.
    if (depth >= MAX_TOPIC_DEPTH) {
        throw CArchiveException(CArchiveException::badSchema,
                                ar.GetFile() ? ar.GetFile()->GetFilePath() : CString());
    }
    topic.CNodeArray::Load(ar, aliases, pSchema);
    int32_t type = 0;
    ar >> type;
    topic.m_mediaType = static_cast<MediaType>(type);
    topic.m_media.Load(ar, aliases, pSchema);
    LoadTopicList(topic.m_children, ar, aliases, pSchema, depth + 1);
}

} // namespace

void CNodeItem::Store(CArchive& ar, const CTopicStrAliasAr& aliases, int*) const {
    ar << aliases.GetAlias(m_name);
    ar << static_cast<int32_t>(m_index);
}

void CNodeItem::Load(CArchive& ar, const CTopicStrAliasAr& aliases, int*) {
    CString stored;
    ar >> stored;
    m_name = aliases.GetTopic(stored);
    ar >> m_index;
}

void CNodeArray::Store(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) const {
    StoreList(*this, ar, aliases, pSchema);
}

void CNodeArray::Load(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) {
    LoadList(*this, ar, aliases, pSchema);
}

void CMediaItem::Store(CArchive& ar, const CTopicStrAliasAr& aliases, int*) const {
    ar << static_cast<int32_t>(m_type);
    ar << m_name;
    ar << m_location;
    StoreCount(ar, m_topics.GetSize());
    for (const CString& topic : m_topics)
        ar << aliases.GetAlias(topic);
    ar << static_cast<int32_t>(m_favorite);
}

void CMediaItem::Load(CArchive& ar, const CTopicStrAliasAr& aliases, int*) {
    int32_t type = 0;
    ar >> type;
    m_type = static_cast<MediaType>(type);
    ar >> m_name;
    ar >> m_location;
    const int32_t count = ReadCount(ar);
    for (int32_t i = 0; i < count; ++i) {
        CString stored;
        ar >> stored;
        m_topics.Add(aliases.GetTopic(stored));
    }
    int32_t favorite = 0;
    ar >> favorite;
    m_favorite = favorite;
}

void CMediaArray::Store(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) const {
    StoreList(*this, ar, aliases, pSchema);
}

void CMediaArray::Load(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) {
    LoadList(*this, ar, aliases, pSchema);
}

void CTopic::Store(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) const {
    CNodeArray::Store(ar, aliases, pSchema);
    ar << static_cast<int32_t>(m_mediaType);
    m_media.Store(ar, aliases, pSchema);
    m_children.Store(ar, aliases, pSchema);
}

void CTopic::Load(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) {
    LoadTopic(*this, ar, aliases, pSchema, 0);
}

void CTopicArray::Store(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) const {
    StoreList(*this, ar, aliases, pSchema);
}

void CTopicArray::Load(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) {
    LoadTopicList(*this, ar, aliases, pSchema, 0);
}

void CMediaContents::Store(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) const {
    m_topics.Store(ar, aliases, pSchema);
}

void CMediaContents::Load(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) {
    m_topics.Load(ar, aliases, pSchema);
}
