// A node of the topic tree. A topic is its own path (the base class part),
// plus a media type, the items filed directly in it and its child topics, all
// held by value: copying a topic copies its whole subtree.
#pragma once
#include "contents/MediaItem.h"
#include "contents/NodeArray.h"

// Topics nest at most this many levels: every level costs stack on reading
// and on every later walk of the tree, and each topic holds its whole path.
// The loader refuses a deeper file, and nothing makes a deeper topic.
constexpr int MAX_TOPIC_DEPTH = 1000;

class CTopic;
class CStdioFileEx;
class CTopicArray : public CArray<CTopic> {
public:
    void Store(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) const;
    // Appends the stored topics, each with its whole subtree.
    void Load(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema);
};

class CTopic : public CNodeArray {
public:
    MediaType m_mediaType = MEDIA_NONE;
    CMediaArray m_media;
    CTopicArray m_children;

    void Clear();
    // Removes the first item equal to `item`; 0 when there is none.
    BOOL RemoveMediaItem(const CMediaItem& item);
    // Removes, for each element of `items` in turn, the first item equal to
    // it, stopping at the first element with none. Gives how many went.
    int RemoveMediaItems(const CMediaArray& items);
    // Rewrites the paths of all children (and their subtrees) from this
    // topic's own path, and the topic lists of the items in them. Counts each
    // path and item rewritten.
    BOOL RebuildChildPaths(int* pCount);
    void CollectFavorites(CMediaArray& items, CNodesArArray& paths, int* pCount) const;
    void CountEntries(int* pTopics, int* pItems) const;

    // The text forms of this topic and all below it, without a file head.
    // They live with the text formats (interchange library); both give 1.
    BOOL WriteMediaRecords(CStdioFileEx* file, const CTopicStrAliasAr* aliases,
                           const BOOL* excludeDiscFiles, const BOOL* writeAliases,
                           int* count) const;
    BOOL WriteM3u(CStdioFileEx* file, int* count) const;

    // The contents file form: path, media type, items, children.
    void Store(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema) const;
    void Load(CArchive& ar, const CTopicStrAliasAr& aliases, int* pSchema);

    CNodeArray& Path() { return *this; }
    const CNodeArray& Path() const { return *this; }
};

// Puts a topic in front of the one at `position`, or at the end when the
// position is at or behind the end; gives the position it took.
int PlaceTopic(CTopicArray& topics, int position, const CTopic& topic);

// The number of levels of `topic` and its subtree: 1 without children.
int SubtreeHeight(const CTopic& topic);

// Gives every topic of `topics` from position `from` on its position as the
// last index of its path, and rebuilds the paths below it.
void RenumberTopics(CTopicArray& topics, int from);
