// The platform font dialog on Qt: the document's font commands reach it
// through the font dialog hook.
#pragma once

// Call once, after the QApplication exists.
void InstallFontChooser();
