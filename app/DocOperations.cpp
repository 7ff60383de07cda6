// Changes of the tree made for the panes and dialogs. Each calls the node
// tree, and only when that succeeds refreshes the display and marks the
// contents as changed, so a failed call leaves display and flag alone.
#include "app/OrvexDoc.h"

BOOL COrvexDoc::SetItemFavorite(const CNodeArray& path, const CMediaItem& item, BOOL favorite,
                                BOOL forceFavoritesView) {
    // Decided before the refresh changes the display.
    const BOOL favoritesView = forceFavoritesView || IsFavoritesDisplayed();
    if (!m_contents.SetItemFavorite(path, item, favorite, TRUE))
        return FALSE;
    RefreshDisplay(TRUE, favoritesView, favoritesView ? nullptr : &m_contents.m_currentTopic, FALSE,
                   TRUE);
    m_bContentsChanged = TRUE;
    return TRUE;
}

BOOL COrvexDoc::RemoveMediaItem(const CNodeArray& path, const CMediaItem& item) {
    if (!m_contents.RemoveItem(path, item, TRUE))
        return FALSE;
    RefreshDisplay(TRUE, FALSE, &m_contents.m_currentTopic, FALSE, TRUE);
    m_bContentsChanged = TRUE;
    return TRUE;
}

BOOL COrvexDoc::RemoveMediaItems(const CNodeArray& path, const CMediaArray& items) {
    // The caller's list may be the display's own rows, which the refresh replaces.
    const CMediaArray copy = items;
    if (!m_contents.RemoveItems(path, copy, TRUE))
        return FALSE;
    RefreshDisplay(TRUE, FALSE, &m_contents.m_currentTopic, FALSE, TRUE);
    m_bContentsChanged = TRUE;
    return TRUE;
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
    if (!m_contents.MoveItems(items, fromPath, toPath, TRUE))
        return FALSE;
    RefreshDisplay(TRUE, FALSE, &m_contents.m_currentTopic, TRUE, TRUE);
    m_bContentsChanged = TRUE;
    return TRUE;
}

BOOL COrvexDoc::MoveTopic(const CNodeArray& fromPath, const CNodeArray& toPath, BOOL after) {
    if (!m_contents.MoveSibling(fromPath, toPath, after, TRUE))
        return FALSE;
    RefreshDisplay(TRUE, FALSE, &m_contents.m_currentTopic, TRUE, TRUE);
    m_bContentsChanged = TRUE;
    return TRUE;
}

BOOL COrvexDoc::RelocateTopic(const CNodeArray& fromPath, const CNodeArray& toPath, int mode) {
    if (!m_contents.RelocateTopic(fromPath, toPath, mode, TRUE))
        return FALSE;
    RefreshDisplay(TRUE, FALSE, &m_contents.m_currentTopic, TRUE, TRUE);
    m_bContentsChanged = TRUE;
    return TRUE;
}

BOOL COrvexDoc::DeleteTopic(const CNodeArray& path) {
    if (!m_contents.DeleteTopic(path, TRUE))
        return FALSE;
    RefreshDisplay(TRUE, FALSE, &m_contents.m_currentTopic, TRUE, TRUE);
    m_bContentsChanged = TRUE;
    return TRUE;
}

BOOL COrvexDoc::SortTopicMedia(const CNodeArray& path, BOOL ascending) {
    if (!m_contents.SortTopic(path, ascending, TRUE))
        return FALSE;
    RefreshDisplay(FALSE, FALSE, &m_contents.m_currentTopic, FALSE, TRUE);
    m_bContentsChanged = TRUE;
    return TRUE;
}
