#include "platform/base/FileDialog.h"

#include <mutex>

namespace {

std::mutex g_pickerHookLock;
FileDialogHook g_fileHook;
FolderBrowseHook g_folderHook;
MultiFileDialogHook g_multiFileHook;

template <typename Hook>
Hook Swap(Hook& slot, Hook hook) {
    std::lock_guard<std::mutex> lock(g_pickerHookLock);
    Hook previous = std::move(slot);
    slot = std::move(hook);
    return previous;
}

template <typename Hook, typename Request, typename Answer>
BOOL Run(const Hook& slot, const Request& request, Answer& path) {
    Hook hook;
    {
        std::lock_guard<std::mutex> lock(g_pickerHookLock);
        hook = slot;
    }
    if (!hook)
        return FALSE;
    // The picker works on a copy: a Cancel leaves the caller's path as it was.
    Answer chosen = path;
    if (!hook(request, chosen))
        return FALSE;
    path = chosen;
    return TRUE;
}

} // namespace

FileDialogHook SetFileDialogHook(FileDialogHook hook) {
    return Swap(g_fileHook, std::move(hook));
}

FolderBrowseHook SetFolderBrowseHook(FolderBrowseHook hook) {
    return Swap(g_folderHook, std::move(hook));
}

MultiFileDialogHook SetMultiFileDialogHook(MultiFileDialogHook hook) {
    return Swap(g_multiFileHook, std::move(hook));
}

BOOL RunFileDialog(const FileDialogRequest& request, CString& path) {
    return Run(g_fileHook, request, path);
}

BOOL BrowseForFolder(const FolderBrowseRequest& request, CString& path) {
    return Run(g_folderHook, request, path);
}

BOOL RunMultiFileDialog(const FileDialogRequest& request, CStringArray& paths) {
    return Run(g_multiFileHook, request, paths);
}
