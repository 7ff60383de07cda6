// Small helpers that build trees and paths for the tests.
#pragma once
#include <initializer_list>
#include <utility>

#include "contents/MediaContents.h"

inline CNodeArray MakePath(std::initializer_list<std::pair<const char16_t*, int>> nodes) {
    CNodeArray path;
    for (const auto& [name, index] : nodes)
        path.Add(CNodeItem(CString(name), index));
    return path;
}

inline CStringArray Names(std::initializer_list<const char16_t*> names) {
    CStringArray out;
    for (const char16_t* n : names)
        out.Add(CString(n));
    return out;
}

inline CMediaItem MakeItem(const char16_t* name, MediaType type,
                           std::initializer_list<const char16_t*> topics, BOOL favorite = FALSE) {
    CMediaItem item;
    item.m_type = type;
    item.m_name = name;
    item.m_location = CString(u"/media/") + name;
    item.m_topics = Names(topics);
    item.m_favorite = favorite;
    return item;
}

// Adds a topic path of the given names and gives its path.
inline CNodeArray Ensure(CMediaContents& tree, std::initializer_list<const char16_t*> names,
                         MediaType type = MEDIA_AUDIO_FILE) {
    CNodeArray path;
    tree.EnsureTopicPath(Names(names), &type, path);
    return path;
}

// The names of the roots (or of the children of `path`), in order.
inline CString ChildNames(CMediaContents& tree, const CNodeArray* path = nullptr) {
    CString out;
    const CTopicArray* topics = &tree.m_topics;
    CTopic copy;
    if (path) {
        tree.GetTopicCopy(*path, copy);
        topics = &copy.m_children;
    }
    for (const CTopic& t : *topics) {
        if (!out.IsEmpty())
            out += u',';
        out += t.GetName();
    }
    return out;
}

// Checks the path invariants of the whole tree: every topic's path is its
// parent's followed by (its name, its position).
inline bool PathsConsistent(const CTopicArray& topics, const CNodeArray& parent) {
    for (int i = 0; i < topics.GetSize(); ++i) {
        const CTopic& t = topics[i];
        if (t.GetSize() != parent.GetSize() + 1)
            return false;
        for (int k = 0; k < parent.GetSize(); ++k)
            if (!(t[k] == parent[k]))
                return false;
        if (t[t.GetUpperBound()].m_index != i)
            return false;
        if (!PathsConsistent(t.m_children, t.Path()))
            return false;
    }
    return true;
}

inline bool PathsConsistent(const CMediaContents& tree) {
    return PathsConsistent(tree.m_topics, CNodeArray());
}
