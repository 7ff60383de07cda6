// The display model: what the list pane shows, a stored topic, the favourites
// or a scanned folder, and the one road by which it changes after the tree
// has changed.
#include "app/OrvexDoc.h"

const char16_t* const kFavoritesName = u"Favorites";

void COrvexDoc::RefreshDisplay(BOOL rebuildFavorites, BOOL showFavorites, const CTopic* pTopic,
                               BOOL updateTree, BOOL updateList) {
    m_bFolderView = FALSE;
    m_bFavoritesView = FALSE;
    if (rebuildFavorites)
        m_contents.BuildFavorites(m_favorites, m_favoritePaths, nullptr);
    if (showFavorites) {
        m_displayTopic.Clear();
        m_displayTopic.SetName(CString(kFavoritesName));
        m_displayTopic.m_media = m_favorites;
        m_bFavoritesView = TRUE;
    } else if (pTopic && pTopic != &m_displayTopic) {
        // Assigned in place: the strings of the rows shown before are reused,
        // which matters for a topic of many thousand items.
        m_displayTopic = *pTopic;
    }
    // The tree goes first, so that the list is built against the new tree.
    if (updateTree)
        UpdateAllViews(nullptr, HINT_TREE);
    if (updateList)
        UpdateAllViews(nullptr, HINT_LIST);
}

namespace {

BOOL DisplayTopicAt(COrvexDoc& doc, const CNodeArray& path, BOOL updateTree) {
    CTopic copy;
    if (!doc.m_contents.GetTopicCopy(path, copy))
        return FALSE;
    doc.RefreshDisplay(FALSE, FALSE, &copy, updateTree, TRUE);
    return TRUE;
}

} // namespace

BOOL COrvexDoc::ShowTopic(const CNodeArray& path) {
    return DisplayTopicAt(*this, path, TRUE);
}

BOOL COrvexDoc::SelectTopic(const CNodeArray& path) {
    return DisplayTopicAt(*this, path, FALSE);
}

BOOL COrvexDoc::ShowFavorites() {
    RefreshDisplay(FALSE, TRUE, nullptr, FALSE, TRUE);
    return TRUE;
}

BOOL COrvexDoc::IsFavoritesDisplayed() const {
    return m_displayTopic.GetName() == kFavoritesName;
}
