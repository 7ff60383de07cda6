// The thin layer that puts the program's platform hooks on Qt: message boxes
// become QMessageBox dialogs, posted window messages ride on the Qt event
// loop, and the desktop's menu font becomes the default pane font.
#pragma once
#include <QFont>
#include <QString>

#include "platform/base/CString.h"
#include "platform/base/LogFont.h"

// Call once, after the QApplication exists and before the program starts.
void InstallQtPlatformGlue();

QString ToQString(const CString& text);
CString FromQString(const QString& text);

QFont FontFromLogFont(const LOGFONTW& font);
LOGFONTW LogFontFromFont(const QFont& font);
