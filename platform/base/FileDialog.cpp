#include "platform/base/FileDialog.h"

#include "platform/base/HookSlot.h"

namespace {

CHookSlot<FileDialogHook> g_fileHook;
CHookSlot<FolderBrowseHook> g_folderHook;
CHookSlot<MultiFileDialogHook> g_multiFileHook;

template <typename Hook, typename Request, typename Answer>
BOOL Run(const CHookSlot<Hook>& slot, const Request& request, Answer& path) {
    const Hook hook = slot.Get();
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
    return g_fileHook.Swap(std::move(hook));
}

FolderBrowseHook SetFolderBrowseHook(FolderBrowseHook hook) {
    return g_folderHook.Swap(std::move(hook));
}

MultiFileDialogHook SetMultiFileDialogHook(MultiFileDialogHook hook) {
    return g_multiFileHook.Swap(std::move(hook));
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
