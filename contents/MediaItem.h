// One playable entry of the library, held by value everywhere. Items have no
// identity of their own: two items are the same item when they compare equal.
#pragma once
#include "platform/base/Array.h"
#include "platform/base/CString.h"

class CArchive;
class CTopicStrAliasAr;

enum MediaType : uint32_t {
    MEDIA_NONE = 0,
    MEDIA_AUDIO_URL = 1,
    MEDIA_VIDEO_URL = 2,
    MEDIA_VIDEO_FILE = 3,
    MEDIA_AUDIO_FILE = 4,
};

class CMediaItem {
public:
    MediaType m_type = MEDIA_NONE;
    CString m_name;
    CString m_location;
    CStringArray m_topics; // topic names from the root down to the item's own topic
    BOOL m_favorite = FALSE;

    // Name, location, type and topics; the favourite flag is not compared.
    bool operator==(const CMediaItem& other) const;
    void Clear();
    BOOL IsValid() const;

    CString GetTypeName() const;
    CString MediaTypeToCode() const;
    static MediaType MediaTypeFromCode(const CString& code);
    CString GetGroupName() const;
    static CString GetGroupName(MediaType type);

    // The item's own topic. An item that names none is filed under its group,
    // and from this call on it names that group.
    CString GetTopicName();
    CString TopicsAsList() const;
    // Appends one topic per "\"-separated level, each trimmed.
    void SetTopicsFromPath(const CString& path);

    // The contents file form; topic names go through the alias table, the
    // name and the location as they are.
    void Store(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) const;
    void Load(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema);
};

class CMediaArray : public CArray<CMediaItem> {
public:
    BOOL Contains(const CMediaItem& item) const;
    // By name without case; the order of equal names is not defined.
    void SortByName(BOOL ascending);

    void Store(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) const;
    // Appends the stored items.
    void Load(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema);
};

// Splits a "\"-separated path into trimmed parts. An empty text gives no part;
// a "\" at the end adds no empty last part; two in a row give an empty part.
void SplitBackslashPath(const CString& path, CStringArray& parts);
