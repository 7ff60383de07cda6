// The playlist-item command: it asks its dialog, then hands what the user
// chose to the document's import operation, which does the work and says how
// it went.
#include "app/OrvexDoc.h"
#include "platform/base/MessageBox.h"

void COrvexDoc::ImportPlaylistItem(const CNodeArray& path, CMediaItem* item) {
    if (!m_pDialogs || !item)
        return;
    CImportPlaylistFields dialog;
    dialog.m_deleteItem = FALSE;
    if (m_pDialogs->DoModal(dialog) != IDOK)
        return;
    ImportPlaylistItemTo(path, *item, dialog.m_topic, dialog.m_deleteItem);
}
