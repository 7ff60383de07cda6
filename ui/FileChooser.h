// The platform file and folder pickers on Qt: the dialogs' Browse buttons and
// the document's commands reach them through the picker hooks.
#pragma once
#include <QStringList>

#include "platform/base/CString.h"

// Call once, after the QApplication exists.
void InstallFileChooser();

// "Name (*.x)|*.x|All Files (*.*)|*.*||" as Qt's name filters: one entry a
// pair, its patterns from the pattern half, "*.*" as "*" (a name without a
// dot is a file too).
QStringList QtNameFilters(const CString& filter);
