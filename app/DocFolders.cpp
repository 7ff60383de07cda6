// Folders of the drives shown in the list as made-up topics, and "Add
// Files...". A folder is looked at one level deep, in the order the file
// system gives; nothing of it reaches the contents.
#include <algorithm>

#include "app/MainFrameLink.h"
#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/base/Drives.h"
#include "platform/base/FileDialog.h"

namespace {

// The length, in characters, of the name buffer that the file picker of
// "Add Files..." fills: a selection whose list of names doesn't fit fails.
constexpr int kAddFilesNameBuffer = 10247;

std::vector<CString> DriveRoots() {
    std::vector<CString> roots;
    for (const CDriveInfo& drive : GetDriveList().GetDrives())
        roots.push_back(drive.m_root);
    return roots;
}

CNodeArray FolderNodes(const CStringArray& names) {
    CNodeArray path;
    for (const CString& name : names)
        path.Add(CNodeItem(name, -1));
    return path;
}

// The selection as the classic picker writes it into its buffer: a single
// path, or the folder and each name, each closed by a terminator, and one
// more terminator at the end.
int SelectionLength(const CStringArray& paths) {
    if (paths.GetSize() == 1)
        return paths[0].GetLength() + 2;
    long long length = 1;
    for (int i = 0; i < paths.GetSize(); ++i) {
        const int slash = paths[i].ReverseFind(u'/');
        if (i == 0)
            length += slash + 1;
        length += paths[i].GetLength() - slash;
        if (length > kAddFilesNameBuffer)
            break;
    }
    return static_cast<int>(std::min<long long>(length, kAddFilesNameBuffer + 1));
}

} // namespace

BOOL COrvexDoc::IsMediaFile(const CString& name) {
    CExtension extension;
    return m_extensions.ClassifyLocation(name, extension) ? TRUE : FALSE;
}

BOOL COrvexDoc::AddFolderFile(const CString& folder, const CString& name, CMediaArray* items) {
    if (!items || !IsMediaFile(name))
        return FALSE;
    CMediaItem item;
    item.m_name = name;
    item.m_location = folder + u"/" + name;
    // Only a CD track counts as audio; every other file of a disc is video.
    item.m_type = name.Find(CString(u".cda")) >= 0 ? MEDIA_AUDIO_FILE : MEDIA_VIDEO_FILE;
    SplitFolderPath(folder, DriveRoots(), item.m_topics);
    items->Add(std::move(item));
    return TRUE;
}

void COrvexDoc::AddFolderTopic(const CString& fullPath, CTopicArray* topics) {
    if (!topics)
        return;
    CStringArray names;
    SplitFolderPath(fullPath, DriveRoots(), names);
    CTopic topic;
    topic.Path() = FolderNodes(names);
    topic.m_mediaType = MEDIA_VIDEO_FILE;
    topics->Add(std::move(topic));
}

void COrvexDoc::ShowDiscFolder(const CString& folder) {
    CMediaArray items;
    CTopicArray topics;
    std::vector<CFolderEntry> entries;
    // No listing leaves both lists empty: the list then shows no rows.
    if (GetDriveList().ListFolder(folder, entries)) {
        for (const CFolderEntry& entry : entries) {
            if (entry.m_isFolder) {
                if (entry.m_name != u"." && entry.m_name != u"..")
                    AddFolderTopic(FolderChild(folder, entry.m_name), &topics);
            } else {
                AddFolderFile(folder, entry.m_name, &items);
            }
        }
    }
    CStringArray names;
    SplitFolderPath(folder, DriveRoots(), names);
    CTopic topic;
    topic.Path() = FolderNodes(names);
    topic.m_mediaType = MEDIA_VIDEO_FILE;
    topic.m_media = std::move(items);
    topic.m_children = std::move(topics);

    m_bFavoritesView = FALSE;
    m_bFolderView = TRUE;
    m_displayTopic = std::move(topic);
    UpdateAllViews(nullptr, HINT_LIST);
}

void COrvexDoc::AddMediaFiles(const CNodeArray& topicPath, MediaType type) {
    if (!GetMainFrame())
        return;
    const BOOL video = type == MEDIA_VIDEO_FILE;
    FileDialogRequest request;
    request.open = TRUE;
    request.flags = OFN_ALLOWMULTISELECT | OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST;
    if (video) {
        request.filter = u"Video Files (*.avi*.mp4*.flv*.wmv*.mov*.webm*.ogg)|"
                         u"*.avi;*.mp4;*.flv;*.wmv;*.mov;*.webm;*.ogg|All Files (*.*)|*.*||";
        request.title = u"Add Video Files";
    } else {
        request.filter = u"Audio Files (*.aac*.flac*.m4a*.mp3*.ogg*.wav*.wma)|"
                         u"*.aac;*.flac;*.m4a;*.mp3;*.oog;*.wav;*.wma|All Files (*.*)|*.*||";
        request.title = u"Add Audio Files";
    }
    // The video folder is where browsing for any media file starts.
    if (!m_videoFolder.IsEmpty())
        request.initialFolder = m_videoFolder;
    CStringArray paths;
    if (!RunMultiFileDialog(request, paths) || paths.IsEmpty())
        return;
    if (SelectionLength(paths) > kAddFilesNameBuffer)
        return;

    CStringArray names;
    topicPath.GetPathNames(names);
    CMediaArray items;
    for (const CString& path : paths) {
        CMediaItem item;
        item.m_type = type;
        item.m_topics = names;
        item.m_location = path;
        item.m_name = path.Mid(path.ReverseFind(u'/') + 1);
        items.Add(std::move(item));
    }
    if (m_contents.AddItems(topicPath, items, TRUE)) {
        RefreshDisplay(FALSE, FALSE, &m_contents.m_currentTopic, FALSE, TRUE);
        m_bContentsChanged = TRUE;
    }
}
