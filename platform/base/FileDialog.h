// The file and folder pickers, reached from dialogs and commands through two
// installable hooks, like the font dialog: the user interface shows real
// pickers, tests answer them themselves.
#pragma once
#include <functional>

#include "platform/base/Array.h"

constexpr DWORD OFN_OVERWRITEPROMPT = 0x00000002;
constexpr DWORD OFN_ALLOWMULTISELECT = 0x00000200;
constexpr DWORD OFN_PATHMUSTEXIST = 0x00000800;
constexpr DWORD OFN_FILEMUSTEXIST = 0x00001000;

constexpr UINT BIF_RETURNONLYFSDIRS = 0x0001;
constexpr UINT BIF_EDITBOX = 0x0010;
constexpr UINT BIF_NEWDIALOGSTYLE = 0x0040;

struct FileDialogRequest {
    BOOL open = TRUE;      // 1: pick an existing file to read; 0: name a file to write
    CString defaultExt;    // with its dot, added to a typed name that has none
    CString defaultName;   // the name the picker starts with
    CString filter;        // "Text (*.txt)|*.txt|All Files (*.*)|*.*||"
    CString initialFolder; // empty: the picker's own choice
    DWORD flags = 0;       // OFN_ values
    CString title;         // empty: the picker's own
};

struct FolderBrowseRequest {
    CString prompt;
    CString initialFolder; // the folder the picker starts in; empty: its own choice
    UINT flags = 0;        // BIF_ values
};

// Each gives 1 and the chosen path on OK, 0 and the path untouched otherwise.
using FileDialogHook = std::function<BOOL(const FileDialogRequest& request, CString& path)>;
using FolderBrowseHook = std::function<BOOL(const FolderBrowseRequest& request, CString& path)>;
// A picker of several existing files: 1 and the chosen paths, in the
// picker's order, on OK; 0 and the list untouched otherwise.
using MultiFileDialogHook =
    std::function<BOOL(const FileDialogRequest& request, CStringArray& paths)>;

// Install a hook and give the previous one.
FileDialogHook SetFileDialogHook(FileDialogHook hook);
FolderBrowseHook SetFolderBrowseHook(FolderBrowseHook hook);
MultiFileDialogHook SetMultiFileDialogHook(MultiFileDialogHook hook);

// With no hook installed there is nobody to choose: 0.
BOOL RunFileDialog(const FileDialogRequest& request, CString& path);
BOOL BrowseForFolder(const FolderBrowseRequest& request, CString& path);
BOOL RunMultiFileDialog(const FileDialogRequest& request, CStringArray& paths);
