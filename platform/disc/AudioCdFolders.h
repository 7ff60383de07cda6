// An audio CD has no file system: its "folder" is made from the disc's table
// of contents, as one read-only "TrackNN.cda" file for each audio track. The
// folder of an optical drive's device (when no file system of its disc is
// mounted) and of a disc image file (a cue sheet with its bin file, a
// cdrdao table of contents, a Nero image) is answered here, through libcdio.
#pragma once
#include <memory>
#include <string>

#include "platform/base/Drives.h"

class CAudioCdFolders : public IFolderProvider {
public:
    BOOL ListFolder(const CString& folder, std::vector<CFolderEntry>& entries) override;
    // The disc's table of contents in short, so that one disc changed for
    // another in the same drive counts as a new disc; empty with no disc.
    CString MediumKey(const CString& root) override;

    // Whether a folder text can name an audio CD at all: a device, or a disc
    // image file. Nothing else is opened.
    static bool MayHoldTracks(const std::string& folder);
};

// Makes the system's drive list show audio CDs' tracks.
void InstallAudioCdFolders();
