// The operations that change the shape of the tree: they add, remove and move
// whole topics, and renumber the siblings behind every place they touch.
#include "contents/MediaContents.h"

namespace {

const char16_t* const kFavoritesName = u"Favorites";

// Tree order of two paths: compares positions level by level, a level that a
// path doesn't have counting as -1. Gives <0, 0 (same path) or >0.
int CompareTreeOrder(const CNodeArray& a, const CNodeArray& b) {
    const int levels = a.GetSize() > b.GetSize() ? a.GetSize() : b.GetSize();
    for (int level = 0; level < levels; ++level) {
        int ia = level < a.GetSize() ? a[level].m_index : -1;
        int ib = level < b.GetSize() ? b[level].m_index : -1;
        if (ia != ib)
            return ia < ib ? -1 : 1;
    }
    return 0;
}

} // namespace

CNodeArray PathAfterDeletion(const CNodeArray& path, const CNodeArray& deleted) {
    CNodeArray result = path;
    const int level = deleted.GetUpperBound();
    if (level < 0 || result.GetSize() <= level)
        return result;
    for (int i = 0; i < level; ++i) {
        if (!(result[i] == deleted[i]))
            return result;
    }
    if (result[level].m_index > deleted[level].m_index)
        result[level].m_index -= 1;
    return result;
}

BOOL CMediaContents::EditTopic(const CNodeArray& path, const CString& name, MediaType type,
                               BOOL bSetCurrent) {
    CTopic* topic = Find(path);
    if (!topic)
        return FALSE;
    if (!(name == topic->GetName())) {
        topic->SetName(name);
        int count = 0;
        topic->RebuildChildPaths(&count);
    }
    topic->m_mediaType = type;
    MakeCurrent(*topic, bSetCurrent);
    return TRUE;
}

BOOL CMediaContents::AddChildTopic(const CNodeArray& parentPath, const CTopic& topic,
                                   BOOL bSetCurrent) {
    CNodeItem last;
    if (parentPath.IsEmpty() || !topic.GetLastNode(last))
        return FALSE;
    CTopic* parent = Find(parentPath);
    if (!parent || parent->GetSize() + SubtreeHeight(topic) > MAX_TOPIC_DEPTH)
        return FALSE;
    const int i = parent->m_children.Add(topic);
    CTopic& child = parent->m_children[i];
    child.Path() = parent->Path();
    child.Add(CNodeItem(last.m_name, i));
    int count = 0;
    if (!child.RebuildChildPaths(&count))
        return FALSE;
    MakeCurrent(child, bSetCurrent);
    return TRUE;
}

BOOL CMediaContents::DeleteTopic(const CNodeArray& path, BOOL bSetCurrent) {
    if (path.IsEmpty())
        return FALSE;
    const CNodeItem& last = path[path.GetUpperBound()];

    if (path.GetSize() > 1) {
        CNodeArray parentPath;
        path.GetParentPath(parentPath);
        CTopic* parent = Find(parentPath);
        if (!parent)
            return FALSE;
        if (last.m_index < 0 || last.m_index >= parent->m_children.GetSize() ||
            !(parent->m_children[last.m_index].GetName() == last.m_name))
            return FALSE;
        parent->m_children.RemoveAt(last.m_index);
        RenumberTopics(parent->m_children, last.m_index);
        MakeCurrent(*parent, bSetCurrent);
        return TRUE;
    }

    if (last.m_index < 0 || last.m_index >= m_topics.GetSize() ||
        !(m_topics[last.m_index].GetName() == last.m_name))
        return FALSE;
    m_topics.RemoveAt(last.m_index);
    RenumberTopics(m_topics, last.m_index);
    if (bSetCurrent) {
        if (m_topics.IsEmpty())
            m_currentTopic.Clear(); // nothing is left to show
        else
            m_currentTopic = m_topics[last.m_index > 0 ? last.m_index - 1 : 0];
    }
    return TRUE;
}

BOOL CMediaContents::MoveSibling(const CNodeArray& fromPath, const CNodeArray& toPath, BOOL after,
                                 BOOL bSetCurrent) {
    BOOL bothRoots = FALSE;
    if (fromPath.GetSize() != toPath.GetSize() || !fromPath.IsSiblingOf(toPath, &bothRoots))
        return FALSE;
    CTopic moved;
    if (!GetTopicCopy(fromPath, moved))
        return FALSE;
    const CNodeItem& target = toPath[toPath.GetUpperBound()];
    const int oldPos = fromPath[fromPath.GetUpperBound()].m_index;

    CTopicArray* siblings;
    int newPos;
    if (bothRoots) {
        siblings = &m_topics;
        int p = target.m_index + (after ? 1 : 0);
        if (p < 0)
            p = 0;
        // The Favorites row stands above all roots: behind it is the first place.
        if (target.m_name == kFavoritesName && after)
            p = 0;
        p = PlaceTopic(*siblings, p, moved);
        const int oldNow = p <= oldPos ? oldPos + 1 : oldPos;
        siblings->RemoveAt(oldNow);
        newPos = p < oldNow ? p : p - 1;
    } else {
        CNodeArray parentPath;
        fromPath.GetParentPath(parentPath);
        CTopic* parent = Find(parentPath);
        if (!parent)
            return FALSE;
        siblings = &parent->m_children;
        siblings->RemoveAt(oldPos);
        int p = target.m_index;
        if (p > oldPos)
            p -= 1;
        if (after)
            p += 1;
        if (p < 0)
            p = 0;
        newPos = PlaceTopic(*siblings, p, moved);
    }
    RenumberTopics(*siblings, oldPos < newPos ? oldPos : newPos);
    MakeCurrent((*siblings)[newPos], bSetCurrent);
    return TRUE;
}

BOOL CMediaContents::InsertBeside(const CTopic& topic, const CNodeArray& toPath, BOOL after,
                                  CNodeArray& placedPath) {
    int p = toPath[toPath.GetUpperBound()].m_index + (after ? 1 : 0);
    if (p < 0)
        return FALSE;
    CTopicArray* destination;
    CTopic placed = topic;
    if (toPath.GetSize() == 1) {
        destination = &m_topics;
        placed.RemoveAll();
    } else {
        CNodeArray parentPath;
        toPath.GetParentPath(parentPath);
        CTopic* parent = Find(parentPath);
        if (!parent)
            return FALSE;
        destination = &parent->m_children;
        placed.Path() = parent->Path();
    }
    placed.Add(CNodeItem(topic.GetName(), p));
    p = PlaceTopic(*destination, p, placed);
    RenumberTopics(*destination, p);
    placedPath = (*destination)[p].Path();
    return TRUE;
}

BOOL CMediaContents::RelocateTopic(const CNodeArray& fromPath, const CNodeArray& toPath, int mode,
                                   BOOL bSetCurrent) {
    if (mode != RELOCATE_INTO && mode != RELOCATE_BEFORE && mode != RELOCATE_AFTER)
        return FALSE;
    CTopic moved, target;
    if (!GetTopicCopy(fromPath, moved) || !GetTopicCopy(toPath, target))
        return FALSE;
    // A topic can't go into or beside its own subtree: the subtree would be lost.
    if (fromPath.IsPrefixOf(toPath, nullptr))
        return FALSE;
    const int order = CompareTreeOrder(fromPath, toPath);
    if (order == 0)
        return FALSE;
    // Nor so deep that the subtree would pass the deepest level.
    const int levelAbove = toPath.GetSize() - (mode == RELOCATE_INTO ? 0 : 1);
    if (levelAbove + SubtreeHeight(moved) > MAX_TOPIC_DEPTH)
        return FALSE;

    BOOL bothRoots = FALSE;
    if (mode != RELOCATE_INTO && fromPath.IsSiblingOf(toPath, &bothRoots))
        return MoveSibling(fromPath, toPath, mode == RELOCATE_AFTER, bSetCurrent);

    // The step taken first happens behind the other path, so the other path
    // still holds for the second step.
    const bool deleteFirst = order > 0;
    if (deleteFirst && !DeleteTopic(fromPath, FALSE))
        return FALSE;

    CNodeArray placedPath;
    if (mode == RELOCATE_INTO) {
        if (!AddChildTopic(toPath, moved, FALSE))
            return FALSE;
        CTopic* parent = Find(toPath);
        if (!parent)
            return FALSE;
        placedPath = parent->m_children[parent->m_children.GetUpperBound()].Path();
    } else if (!InsertBeside(moved, toPath, mode == RELOCATE_AFTER, placedPath)) {
        return FALSE;
    }

    if (!deleteFirst) {
        if (!DeleteTopic(fromPath, FALSE))
            return FALSE;
        placedPath = PathAfterDeletion(placedPath, fromPath);
    }
    if (bSetCurrent)
        GetTopicCopy(placedPath, m_currentTopic);
    return TRUE;
}
