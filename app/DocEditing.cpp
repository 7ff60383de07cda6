// The two editing commands of the panes. Each compares what came back from
// its dialog with what went in, so the tree is touched as little as
// possible: a changed favourite mark goes through the favourites road alone,
// a topic renamed to its own name only changes its type.
#include "app/OrvexDoc.h"
#include "platform/base/MessageBox.h"

void COrvexDoc::EditMediaItem(CNodeArray path, CMediaItem item, BOOL isNew) {
    if (!m_pDialogs)
        return;
    CEditMediaItemFields dialog;
    dialog.m_pDoc = this;
    dialog.m_item = item;
    dialog.m_title = isNew ? u"New Media Item" : u"Edit Media Item";
    if (m_pDialogs->DoModal(dialog) != IDOK)
        return;
    const CMediaItem& edited = dialog.m_item;

    if (isNew) {
        if (edited.IsValid() && m_contents.AddItem(path, edited, TRUE)) {
            RefreshDisplay(TRUE, FALSE, &m_contents.m_currentTopic, FALSE, TRUE);
            m_bContentsChanged = TRUE;
        } else {
            AfxMessageBox(CString(u"New Media Item failed!"), MB_OK);
        }
        return;
    }
    // With both changed only the mark is applied: the item is found by the
    // fields it came in with, and one road at a time keeps that search true.
    if (dialog.m_favoriteChanged) {
        if (!SetItemFavorite(path, item, edited.m_favorite, FALSE))
            AfxMessageBox(CString(u"EditMediaItem failed!"), MB_OK);
        return;
    }
    if (dialog.m_fieldsChanged) {
        if (m_contents.ReplaceItem(path, item, edited, TRUE)) {
            RefreshDisplay(TRUE, FALSE, &m_contents.m_currentTopic, FALSE, TRUE);
            m_bContentsChanged = TRUE;
        } else {
            AfxMessageBox(CString(u"EditMediaItem failed!"), MB_OK);
        }
        return;
    }
    m_bContentsChanged = TRUE;
}

void COrvexDoc::EditTopic(const CNodeArray& path, MediaType type, BOOL isNew) {
    if (!m_pDialogs)
        return;
    CNewTopicFields dialog;
    dialog.m_pDoc = this;
    if (isNew) {
        const BOOL root = path.IsEmpty();
        // A child takes its parent's type; a parent without one can't have any.
        if (!root && type == MEDIA_NONE)
            return;
        dialog.m_mediaType = root ? MEDIA_NONE : type;
        dialog.m_title = u"New Topic";
        if (m_pDialogs->DoModal(dialog) != IDOK)
            return;
        const MediaType chosen = static_cast<MediaType>(dialog.m_mediaType);
        BOOL added = FALSE;
        if (root) {
            CStringArray names;
            names.Add(dialog.m_name);
            added = m_contents.AddTopicPath(names, &chosen, TRUE);
        } else {
            CTopic topic;
            topic.Add(CNodeItem(dialog.m_name, -1));
            topic.m_mediaType = chosen;
            added = m_contents.AddChildTopic(path, topic, TRUE);
        }
        if (!added)
            return;
        RefreshDisplay(FALSE, FALSE, &m_contents.m_currentTopic, TRUE, TRUE);
        m_bContentsChanged = TRUE;
        return;
    }

    CTopic topic;
    if (path.IsEmpty() || !m_contents.GetTopicCopy(path, topic))
        return;
    dialog.m_title = u"Edit Topic";
    dialog.m_mediaType = topic.m_mediaType;
    dialog.m_name = topic.GetName();
    if (m_pDialogs->DoModal(dialog) != IDOK)
        return;
    if (dialog.m_name == topic.GetName() &&
        static_cast<MediaType>(dialog.m_mediaType) == topic.m_mediaType) {
        m_bContentsChanged = TRUE;
        return;
    }
    if (m_contents.EditTopic(path, dialog.m_name, static_cast<MediaType>(dialog.m_mediaType),
                             TRUE)) {
        RefreshDisplay(FALSE, FALSE, &m_contents.m_currentTopic, TRUE, TRUE);
        m_bContentsChanged = TRUE;
    }
}
