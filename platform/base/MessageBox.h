// Message boxes from logic code. The user interface routes them to real
// dialogs; tests and command-line tools install their own hook, so every text
// the program shows can be checked or printed.
#pragma once
#include <functional>

#include "platform/base/CString.h"
#include "platform/base/Window.h"

constexpr UINT MB_OK = 0x0;
constexpr UINT MB_OKCANCEL = 0x1;
constexpr UINT MB_YESNOCANCEL = 0x3;
constexpr UINT MB_YESNO = 0x4;
constexpr UINT MB_ICONERROR = 0x10;
constexpr UINT MB_ICONHAND = MB_ICONERROR;
constexpr UINT MB_ICONSTOP = MB_ICONERROR;
constexpr UINT MB_ICONQUESTION = 0x20;
constexpr UINT MB_ICONEXCLAMATION = 0x30;
constexpr UINT MB_ICONWARNING = MB_ICONEXCLAMATION;
constexpr UINT MB_ICONINFORMATION = 0x40;
constexpr UINT MB_TYPEMASK = 0xF;
constexpr UINT MB_ICONMASK = 0xF0;

constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

// The caption of boxes that name none: the program's title.
extern const char16_t* const kAppTitle;

struct MessageBoxRequest {
    HWND owner = nullptr;
    CString text;
    CString caption;
    UINT type = MB_OK;
};

using MessageBoxHook = std::function<int(const MessageBoxRequest&)>;

// Installs a hook and gives the previous one. An empty hook restores the
// default, which writes the text to standard error and answers with the first
// button of the box (OK or Yes).
MessageBoxHook SetMessageBoxHook(MessageBoxHook hook);

int MessageBoxW(HWND owner, const CString& text, const CString& caption, UINT type);
int AfxMessageBox(const CString& text, UINT type = MB_OK);

// The answer a box of this type gives when nobody is there to click.
int DefaultMessageBoxAnswer(UINT type);
