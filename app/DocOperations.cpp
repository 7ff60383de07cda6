// Changes of the tree made for the panes and dialogs. Each calls the node
// tree, and only when that succeeds refreshes the display and marks the
// contents as changed, so a failed call leaves display and flag alone.
#include "app/OrvexDoc.h"

namespace {

// The common end of a change that leaves the list on the current topic.
BOOL ShowCurrentAfter(COrvexDoc& doc, BOOL changed, BOOL rebuildFavorites, BOOL updateTree) {
    if (!changed)
        return FALSE;
    doc.RefreshDisplay(rebuildFavorites, FALSE, &doc.m_contents.m_currentTopic, updateTree, TRUE);
    doc.m_bContentsChanged = TRUE;
    return TRUE;
}

} // namespace

BOOL COrvexDoc::SetItemFavorite(const CNodeArray& path, const CMediaItem& item, BOOL favorite,
                                BOOL forceFavoritesView) {
    const BOOL favoritesView = forceFavoritesView || IsFavoritesDisplayed();
    if (!m_contents.SetItemFavorite(path, item, favorite, TRUE))
        return FALSE;
    RefreshDisplay(TRUE, favoritesView, favoritesView ? nullptr : &m_contents.m_currentTopic, FALSE,
                   TRUE);
    m_bContentsChanged = TRUE;
    return TRUE;
}

BOOL COrvexDoc::RemoveMediaItem(const CNodeArray& path, const CMediaItem& item) {
    return ShowCurrentAfter(*this, m_contents.RemoveItem(path, item, TRUE), TRUE, FALSE);
}

BOOL COrvexDoc::RemoveMediaItems(const CNodeArray& path, const CMediaArray& items) {
    // The caller's list may be the display's own rows, which the refresh replaces.
    const CMediaArray copy = items;
    return ShowCurrentAfter(*this, m_contents.RemoveItems(path, copy, TRUE), TRUE, FALSE);
}

BOOL COrvexDoc::MoveMediaItem(const CMediaItem& item, const CNodeArray& fromPath,
                              const CNodeArray& toPath) {
    if (!m_contents.MoveItem(item, fromPath, toPath))
        return FALSE;
    // The item has moved whatever follows: the list shows where it went, or
    // the current topic should the target no longer be found.
    CTopic target;
    const CTopic* shown =
        m_contents.GetTopicCopy(toPath, target) ? &target : &m_contents.m_currentTopic;
    RefreshDisplay(TRUE, FALSE, shown, TRUE, TRUE);
    m_bContentsChanged = TRUE;
    return TRUE;
}

BOOL COrvexDoc::MoveMediaItems(const CMediaArray& items, const CNodeArray& fromPath,
                               const CNodeArray& toPath) {
    return ShowCurrentAfter(*this, m_contents.MoveItems(items, fromPath, toPath, TRUE), TRUE, TRUE);
}

BOOL COrvexDoc::MoveTopic(const CNodeArray& fromPath, const CNodeArray& toPath, BOOL after) {
    return ShowCurrentAfter(*this, m_contents.MoveSibling(fromPath, toPath, after, TRUE), TRUE,
                            TRUE);
}

BOOL COrvexDoc::RelocateTopic(const CNodeArray& fromPath, const CNodeArray& toPath, int mode) {
    return ShowCurrentAfter(*this, m_contents.RelocateTopic(fromPath, toPath, mode, TRUE), TRUE,
                            TRUE);
}

BOOL COrvexDoc::DeleteTopic(const CNodeArray& path) {
    return ShowCurrentAfter(*this, m_contents.DeleteTopic(path, TRUE), TRUE, TRUE);
}

BOOL COrvexDoc::SortTopicMedia(const CNodeArray& path, BOOL ascending) {
    return ShowCurrentAfter(*this, m_contents.SortTopic(path, ascending, TRUE), FALSE, FALSE);
}
