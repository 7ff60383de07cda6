// The Import, Export, Export Topic and playlist-item commands: each asks its
// dialog, then hands what the user chose to the document's import and export
// operations, which do the work and say how it went.
#include "app/OrvexDoc.h"
#include "platform/base/MessageBox.h"

namespace {

// Exactly one source is chosen once the dialog says OK; tested in this order.
ImportSource SourceOf(const CImportFields& dialog) {
    if (dialog.m_fromDat)
        return IMPORT_SOURCE_DAT;
    if (dialog.m_fromText)
        return IMPORT_SOURCE_MEDIA_RECORDS;
    if (dialog.m_fromPls)
        return IMPORT_SOURCE_PLS;
    return IMPORT_SOURCE_M3U;
}

CExportOptions OptionsOf(const CExportFields& dialog) {
    CExportOptions options;
    if (dialog.m_toDat)
        options.m_form = EXPORT_FORM_DAT;
    else if (dialog.m_toText)
        options.m_form = EXPORT_FORM_MEDIA_RECORDS;
    else if (dialog.m_toM3u)
        options.m_form = EXPORT_FORM_M3U;
    options.m_excludeDiscFiles = dialog.m_excludeDiscFiles;
    options.m_unicode = dialog.m_unicode;
    options.m_writeAliases = dialog.m_writeAliases;
    return options;
}

} // namespace

void COrvexDoc::OnImport() {
    if (!m_pDialogs)
        return;
    CImportFields dialog;
    dialog.m_startFolder = m_contentsFolder;
    if (m_pDialogs->DoModal(dialog) != IDOK)
        return;
    if (!(dialog.m_fromDat || dialog.m_fromText || dialog.m_fromPls || dialog.m_fromM3u))
        return;
    ImportFromSource(SourceOf(dialog), dialog.m_path, dialog.m_topic);
}

void COrvexDoc::OnExport() {
    if (!m_pDialogs)
        return;
    CExportFields dialog;
    dialog.m_startFolder = m_contentsFolder;
    if (m_pDialogs->DoModal(dialog) != IDOK)
        return;
    ExportContents(OptionsOf(dialog), dialog.m_path);
}

void COrvexDoc::ExportTopic(const CNodeArray& path) {
    if (!m_pDialogs)
        return;
    CTopic topic;
    if (!PrepareTopicExport(path, topic))
        return;
    CExportFields dialog;
    dialog.m_startFolder = m_contentsFolder;
    dialog.m_title = u"Export Topic";
    dialog.m_topicOnly = TRUE;
    if (m_pDialogs->DoModal(dialog) != IDOK)
        return;
    ExportTopicTo(topic, OptionsOf(dialog), dialog.m_path);
}

void COrvexDoc::ImportPlaylistItem(const CNodeArray& path, CMediaItem* item) {
    if (!m_pDialogs || !item)
        return;
    CImportPlaylistFields dialog;
    dialog.m_deleteItem = FALSE;
    if (m_pDialogs->DoModal(dialog) != IDOK)
        return;
    ImportPlaylistItemTo(path, *item, dialog.m_topic, dialog.m_deleteItem);
}
