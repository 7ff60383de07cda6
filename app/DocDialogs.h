// The dialogs that the document's commands run, as the fields the command
// fills before the dialog opens and reads back after OK. The user interface
// gives the document real dialogs (IDocDialogs); without them every command
// that needs an answer ends as after a Cancel.
#pragma once
#include "contents/MediaItem.h"
#include "platform/base/Types.h"

class COrvexDoc;

// "Edit MediaItem": one media item.
struct CEditMediaItemFields {
    CString m_name;
    CString m_location;
    BOOL m_favorite = FALSE;
    BOOL m_favoriteChanged = FALSE; // OK found a changed favourite mark
    BOOL m_fieldsChanged = FALSE;   // OK found a changed type, name or location
    COrvexDoc* m_pDoc = nullptr;    // without it the controls stay empty
    CMediaItem m_item;              // in: the item before the edit; out: as edited
    CString m_title = u"Edit MediaItem";
};

// "New Topic" / "Edit Topic": a topic's name and media type.
struct CNewTopicFields {
    CString m_name;
    COrvexDoc* m_pDoc = nullptr; // without it the controls stay empty
    int32_t m_mediaType = MEDIA_NONE;
    CString m_title = u"New Topic";
};

// "Set Folder Paths": where browsing for files starts.
struct CFoldersFields {
    CString m_contentsFolder;
    CString m_videoFolder;
    // Where stream recordings go; empty for the desktop's default.
    CString m_recordingsFolder;
};

// "Import Playlist": where a playlist item's entries go.
struct CImportPlaylistFields {
    BOOL m_deleteItem = TRUE; // delete the playlist item after the import
    CString m_topic = u"Imported Media";
};

// "LAV Filters Setup": the four audio decoder choices.
struct CLavSetupFields {
    BOOL m_bWma2 = FALSE;
    BOOL m_bWmaPro = FALSE;
    BOOL m_bWmaAll = FALSE;
    BOOL m_bStereoSpeakers = FALSE;
    BOOL m_bChanged = FALSE; // a box was clicked or the defaults were taken
};

// "Import Contents Media": the source of an import.
struct CImportFields {
    CString m_path;
    CString m_topic;
    BOOL m_fromDat = FALSE;
    BOOL m_fromM3u = FALSE;
    BOOL m_fromText = FALSE;
    BOOL m_fromPls = FALSE;
    BOOL m_overwrite = FALSE;
    BOOL m_place = FALSE;
    CString m_startFolder; // where Browse starts
};

// "Export Contents Media": the target of an export.
struct CExportFields {
    CString m_path;
    BOOL m_excludeDiscFiles = FALSE;
    BOOL m_toText = FALSE;
    BOOL m_toDat = FALSE;
    BOOL m_unicode = FALSE;
    BOOL m_writeAliases = FALSE;
    BOOL m_toM3u = FALSE;
    CString m_startFolder; // where Browse starts
    CString m_title = u"Export Contents Media";
    BOOL m_topicOnly = FALSE; // the .dat choice isn't offered
};

// How a transfer that the user watches ended.
enum TransferOutcome {
    TRANSFER_DONE = 0,
    TRANSFER_FAILED = 1,
    TRANSFER_CANCELLED = 2,
};

class IDocDialogs {
public:
    virtual ~IDocDialogs() = default;
    // Each runs its dialog modally on the fields and gives IDOK, with the
    // fields as the dialog left them, or IDCANCEL.
    virtual int DoModal(CEditMediaItemFields& fields) = 0;
    virtual int DoModal(CNewTopicFields& fields) = 0;
    virtual int DoModal(CFoldersFields& fields) = 0;
    virtual int DoModal(CImportPlaylistFields& fields) = 0;
    virtual int DoModal(CLavSetupFields& fields) = 0;
    virtual int DoModal(CImportFields& fields) = 0;
    virtual int DoModal(CExportFields& fields) = 0;
    // Fetches `url` into `target` as a limited GetInternetData does, while
    // the user sees its progress and may cancel it. A failure's text goes to
    // *error; nothing is shown.
    virtual TransferOutcome Download(const CString& url, const CString& target, unsigned maxBytes,
                                     CString* error) = 0;
    // The radio dialogs work on the document themselves while they are open:
    // "Update Radio Station Database" naming the chosen server, and "Search
    // Radio Stations". Without them the commands open nothing.
    virtual void RunRadioUpdateDialog(const CString& /*server*/) {}
    virtual void RunRadioSearchDialog() {}
};
