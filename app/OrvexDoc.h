// The document: the one owner of all state that isn't a window. Panes and
// dialogs change the contents only through it, and it tells them what changed
// through numbered hints.
#pragma once
#include <vector>

#include "app/DesktopSettings.h"
#include "app/DocDialogs.h"
#include "app/DocView.h"
#include "contents/Extensions.h"
#include "contents/MediaContents.h"
#include "contents/TopicAliases.h"
#include "interchange/Export.h"
#include "interchange/ImportPlacing.h"
#include "platform/base/LogFont.h"
#include "player/LavSetup.h"
#include "radio/RadioBrowseDb.h"
#include "radio/RadioJob.h"

class COrvexDoc {
public:
    COrvexDoc();
    virtual ~COrvexDoc() = default;
    COrvexDoc(const COrvexDoc&) = delete;
    COrvexDoc& operator=(const COrvexDoc&) = delete;

    CMediaContents m_contents;
    CTopicStrAliasAr m_aliases;
    CTopic m_displayTopic;
    CMediaArray m_favorites;
    CNodesArArray m_favoritePaths;
    BOOL m_bFolderView = FALSE;
    BOOL m_bFavoritesView = FALSE;
    BOOL m_bContentsChanged = FALSE;
    CLavSetup m_lavSetup;
    LOGFONTW m_rightFont;
    LOGFONTW m_leftFont;
    CString m_videoFolder;
    CString m_contentsFolder;
    CString m_dataFolder;
    CString m_dvdPath;
    CString m_cdPath;
    CExtensionArray m_extensions;
    int32_t m_listRestoreItem = -1;
    int32_t m_listRestoreTop = -1;
    int32_t m_listRestoreCount = 0;
    CString m_listRestoreTopic;
    BOOL m_bListItemAdded = FALSE;
    BOOL m_bListItemsAdded = FALSE;
    BOOL m_bListItemsRemoved = FALSE;
    BOOL m_bRestoreColumns = TRUE;
    std::vector<int16_t> m_columnWidths;

    // Start-up: settles the data folder, seeds it and loads everything.
    virtual BOOL OnNewDocument();
    // Exit: stops playback, then offers to save unsaved changes.
    virtual BOOL SaveModified();

    // The data folder after seeding it from the start directory, file by file.
    // Gives the start directory when the user's folder can't be used.
    CString SettleDataFolder(const CString& startDirectory);

    // Check For Updates: compares this version with the download server's.
    void OnCheckForUpdates();
    // The program's version as "%d.%d.%d.%d".
    BOOL GetVersionString(CString& out);

    // The radio database and its update job (DocRadio.cpp).
    CRadioBrowseDb m_radioDb;
    CRadioBrowseDb m_radioDbNew;
    CString m_serverUrl;
    CString m_serverListUrl; // the deployment's list of servers; tools may point elsewhere
    RadioJobParams m_jobParams;
    CEvent m_cancelEvent;
    CString m_jobFile;
    CString m_jobUrl;
    HWND m_hwndUpdateDlg = nullptr;
    // Running while a job runs. Declared after everything the worker reads,
    // so that a job still running when the document goes is stopped and
    // waited for before any of it is destroyed.
    CJobThread m_hJobThread;

    BOOL SaveRadioDb();
    BOOL LoadRadioDb(const CString& path);
    // Finds a server once per process; 1 when one is known, after which the
    // update dialog opens. A failure has been shown in a message box.
    BOOL ChooseRadioServer();
    // "Update Radio Station Database": a server first, then the dialog.
    void OnUpdateRadioDb();
    // "Search For Radio Stations": the search dialog over m_radioDb.
    void OnSearchRadio();
    void StartRadioUpdate(HWND hwndDialog);
    void CancelRadioUpdate();
    void OnRadioUpdateDone();
    void OnRadioUpdateFailed();
    // The end messages of the job, as the main frame hands them on; 1 when
    // the message was one of them.
    BOOL OnRadioJobMessage(UINT message);
    // The search's results as audio stream items in a root topic, at most
    // maxCount of them (0: all); gives how many.
    int ImportStationResults(CString topicName, int maxCount);

    void AddView(IDocView* view);
    void RemoveView(IDocView* view);
    void UpdateAllViews(IDocView* sender, int hint, const CString* object = nullptr);

    // Import and export (DocImportExport.cpp). The readers give nonzero on
    // success; *count is the number of valid records (Media Record Format)
    // or of items placed (playlists). An empty topic makes the Media Record
    // reader overwrite the contents; the playlist readers refuse it. A
    // playlist source starting with "http" is downloaded first.
    BOOL ReadMediaRecords(const CString& path, const CString& topic, int* count);
    BOOL ReadM3u(const CString& source, const CString& topic, int* count);
    BOOL ReadPls(const CString& source, const CString& topic, int* count);
    BOOL ExportMediaRecords(const CString& path, BOOL excludeDiscFiles, BOOL unicode,
                            BOOL writeAliases, int* count);
    BOOL ExportM3u(const CString& path, BOOL unicode, int* count);
    // The Import and Export commands once their dialogs are answered: each
    // does the work and shows its one message.
    BOOL ImportFromSource(ImportSource source, const CString& path, const CString& topic);
    BOOL ExportContents(const CExportOptions& options, const CString& path);
    // Export Topic: the checks before its dialog (with their boxes), and the
    // writing after it.
    BOOL PrepareTopicExport(const CNodeArray& path, CTopic& topic);
    BOOL ExportTopicTo(const CTopic& topic, const CExportOptions& options, const CString& filePath);
    // A playlist item of the list, imported under `topic` once its dialog is
    // answered; `path` is the topic that holds the item.
    BOOL ImportPlaylistItemTo(const CNodeArray& path, const CMediaItem& item, const CString& topic,
                              BOOL deleteItem);

    // The commands that ask through a dialog first (DocEditing.cpp,
    // DocImportExportCommands.cpp, DocCommands.cpp). Without dialogs they do
    // nothing.
    void SetDialogs(IDocDialogs* dialogs) { m_pDialogs = dialogs; }
    IDocDialogs* GetDialogs() const { return m_pDialogs; }
    // `item` is the item as it stands in the topic at `path`; a new one is a
    // blank with the topic's type and names.
    void EditMediaItem(CNodeArray path, CMediaItem item, BOOL isNew);
    // A new topic: a root topic for an empty `path`, else a child of it, of
    // the parent's `type`. Otherwise the topic at `path` is renamed or retyped.
    void EditTopic(const CNodeArray& path, MediaType type, BOOL isNew);
    void OnFolderLocations();
    void OnLavSetup();
    void OnImport();
    void OnExport();
    void ExportTopic(const CNodeArray& path);
    void ImportPlaylistItem(const CNodeArray& path, CMediaItem* item);

    // Library files (DocContentsFile.cpp, DocUserData.cpp). Each gives 1 on
    // success; LoadContents replaces the tree and shows the favourites.
    BOOL SaveContents(const CString& path);
    BOOL LoadContents(const CString& path);
    BOOL SaveUserData(const CString& path);
    BOOL LoadUserData(const CString& path);

    // The display model (DocDisplay.cpp): what the list pane shows.
    void RefreshDisplay(BOOL rebuildFavorites, BOOL showFavorites, const CTopic* pTopic,
                        BOOL updateTree, BOOL updateList);
    BOOL ShowTopic(const CNodeArray& path);
    BOOL SelectTopic(const CNodeArray& path);
    BOOL ShowFavorites();
    // The favourites are recognised by the name of the displayed topic.
    BOOL IsFavoritesDisplayed() const;

    // Changes of the tree (DocOperations.cpp): each calls the tree, refreshes
    // the display and marks the contents changed; 0 changes nothing.
    BOOL SetItemFavorite(const CNodeArray& path, const CMediaItem& item, BOOL favorite,
                         BOOL forceFavoritesView);
    BOOL RemoveMediaItem(const CNodeArray& path, const CMediaItem& item);
    BOOL RemoveMediaItems(const CNodeArray& path, const CMediaArray& items);
    BOOL MoveMediaItem(const CMediaItem& item, const CNodeArray& fromPath,
                       const CNodeArray& toPath);
    BOOL MoveMediaItems(const CMediaArray& items, const CNodeArray& fromPath,
                        const CNodeArray& toPath);
    BOOL MoveTopic(const CNodeArray& fromPath, const CNodeArray& toPath, BOOL after);
    BOOL RelocateTopic(const CNodeArray& fromPath, const CNodeArray& toPath, int mode);
    BOOL DeleteTopic(const CNodeArray& path);
    BOOL SortTopicMedia(const CNodeArray& path, BOOL ascending);

    // Commands (DocCommands.cpp).
    // m_dataFolder + "/OrvexContents.dat" and + "/OrvexUser.dat".
    CString ContentsFilePath() const;
    CString UserDataFilePath() const;
    void OnSaveContents();
    // Run the font dialog on the pane's font; OK applies it.
    void OnFontLeft();
    void OnFontRight();
    // The OK of "Set Folder Paths": both folders taken, changed or not.
    void SetFolderLocations(const CString& contentsFolder, const CString& videoFolder);
    void OnDiscChange(const CString& drive, BOOL arrived);
    // "Orvex Help": the manual's contents in the desktop's browser.
    void OnHelp();

    // Playable discs in the drives (DocDiscs.cpp). FindDiscPath stores in
    // m_dvdPath (dvd) or m_cdPath what the first drive that holds one gives:
    // a DVD's VIDEO_TS folder, or the root of an audio CD's tracks.
    BOOL FindDiscPath(BOOL dvd);
    static BOOL ProbeDiscRoot(const CString& root, CString* found, BOOL dvd);
    // Whether "Play DVD" and "Play CD" are enabled; each looks at the drives.
    BOOL OnUpdatePlayDvd();
    BOOL OnUpdatePlayCd();
    BOOL OnUpdateDvdNavigation();
    void OnPlayDvd();
    void OnPlayCd();
    void OnDvdNavigation();

    // Folders and drives (DocFolders.cpp). A shown folder is a made-up
    // topic: its media files as items, its sub-folders as child topics,
    // never stored.
    void ShowDiscFolder(const CString& folder);
    BOOL AddFolderFile(const CString& folder, const CString& name, CMediaArray* items);
    void AddFolderTopic(const CString& fullPath, CTopicArray* topics);
    BOOL IsMediaFile(const CString& name);
    // "Add Files...": files picked by the user become items of the topic,
    // of the topic's type; those the topic holds already are left out.
    void AddMediaFiles(const CNodeArray& topicPath, MediaType type);

    // Desktop features (DocDesktop.cpp, DocStationPlaylist.cpp).
    CDesktopSettings m_desktopSettings;
    CString DesktopSettingsPath() const;
    // Writes the desktop settings at once; 0 when they could not be written.
    BOOL SaveDesktopSettings();
    CString PlayedTitlesPath() const;
    // The first stream a station's playlist address names; 0 after a box
    // that says why (a cancelled download says nothing).
    BOOL ResolveStationPlaylist(const CString& url, CString& stream);

private:
    void PlaceImported(const CMediaArray& items, const CString& topic, int* count);
    BOOL ReadPlaylist(BOOL pls, const CString& source, const CString& topic, int* count);
    // Fetches a playlist URL into `target`; a failure shows its box, naming
    // the reader.
    BOOL DownloadPlaylist(const CString& url, const CString& target, const char16_t* reader);
    // The two ends of a job: waiting for the worker and resetting the bar
    // (0 when no job runs), and the clean-up afterwards.
    BOOL BeginRadioJobEnd();
    void EndRadioJob();

    std::vector<IDocView*> m_views;
    IDocDialogs* m_pDialogs = nullptr;
    // The user stopped the last playlist download: the import ends unsaid.
    BOOL m_bPlaylistCancelled = FALSE;
};

// Whether a stream address names a playlist (.pls, .m3u; not HLS's .m3u8)
// by the end of its path, query and fragment aside.
BOOL IsStationPlaylistUrl(const CString& url);
// An address or path without its query ("?...") and fragment ("#...").
CString AddressWithoutQuery(const CString& url);

// The name of the made-up topic that shows the favourites.
extern const char16_t* const kFavoritesName;
// The four data files, in the order they are seeded.
extern const char16_t* const kSeededDataFiles[4];
