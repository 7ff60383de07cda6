// The topic tree and every operation that changes it. Topics are addressed by
// path; the tree hands out copies, never references that outlive a call.
#pragma once
#include "contents/Topic.h"

enum RelocateMode {
    RELOCATE_INTO = 1,   // becomes the last child of the target
    RELOCATE_BEFORE = 2, // goes in front of the target
    RELOCATE_AFTER = 3,  // goes behind the target
};

class CMediaContents {
public:
    CMediaContents();

    CTopic m_errorTopic;   // the sentinel handed out for a path that finds nothing
    CTopic m_currentTopic; // copy of the topic the last operation left current
    CTopicArray m_topics;  // the root topics

    void ResetContents();
    CTopic* FindTopic(const CNodeArray& path, CTopic* notFound);
    BOOL GetTopicCopy(const CNodeArray& path, CTopic& out);

    BOOL AddItem(const CNodeArray& path, const CMediaItem& item, BOOL bSetCurrent);
    BOOL AddItems(const CNodeArray& path, const CMediaArray& items, BOOL bSetCurrent);
    BOOL RemoveItem(const CNodeArray& path, const CMediaItem& item, BOOL bSetCurrent);
    BOOL RemoveItems(const CNodeArray& path, const CMediaArray& items, BOOL bSetCurrent);
    BOOL ReplaceItem(const CNodeArray& path, const CMediaItem& oldItem, const CMediaItem& newItem,
                     BOOL bSetCurrent);
    BOOL SetItemFavorite(const CNodeArray& path, const CMediaItem& item, BOOL favorite,
                         BOOL bSetCurrent);
    BOOL SortTopic(const CNodeArray& path, BOOL ascending, BOOL bSetCurrent);
    BOOL MoveItem(const CMediaItem& item, const CNodeArray& fromPath, const CNodeArray& toPath);
    BOOL MoveItems(const CMediaArray& items, const CNodeArray& fromPath, const CNodeArray& toPath,
                   BOOL bSetCurrent);

    BOOL EditTopic(const CNodeArray& path, const CString& name, MediaType type, BOOL bSetCurrent);
    BOOL AddChildTopic(const CNodeArray& parentPath, const CTopic& topic, BOOL bSetCurrent);
    BOOL DeleteTopic(const CNodeArray& path, BOOL bSetCurrent);
    BOOL MoveSibling(const CNodeArray& fromPath, const CNodeArray& toPath, BOOL after,
                     BOOL bSetCurrent);
    BOOL RelocateTopic(const CNodeArray& fromPath, const CNodeArray& toPath, int mode,
                       BOOL bSetCurrent);

    BOOL EnsureTopicPath(const CStringArray& names, const MediaType* pType, CNodeArray& outPath);
    BOOL AddTopicPath(const CStringArray& names, const MediaType* pType, BOOL bSetCurrent);
    BOOL AddItemByTopics(const CMediaItem& item, BOOL bSetCurrent);

    BOOL BuildFavorites(CMediaArray& items, CNodesArArray& paths, int* pCount) const;
    void CountEntries(int* pTopics, int* pItems) const;

    // The root topic list of the contents file (the schema word is the
    // caller's). Load appends to m_topics.
    void Store(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) const;
    void Load(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema);

private:
    // The topic at `path`, or null; a topic named "ERROR" counts as not found.
    CTopic* Find(const CNodeArray& path);
    void MakeCurrent(const CTopic& topic, BOOL bSetCurrent);
    BOOL InsertBeside(const CTopic& topic, const CNodeArray& toPath, BOOL after,
                      CNodeArray& placedPath);
};

// Where a path points once the topic at `deleted` has been removed from its
// sibling array: later siblings (and all below them) move up by one.
CNodeArray PathAfterDeletion(const CNodeArray& path, const CNodeArray& deleted);
