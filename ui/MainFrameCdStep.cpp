// Steps through a CD's track list from outside the window (the desktop's
// media keys).
#include "ui/MainFrame.h"

void CMainFrame::StepCdTrack(int) {
    // The track walk comes with the disc graphs.
}
