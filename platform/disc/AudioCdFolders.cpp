#include "platform/disc/AudioCdFolders.h"

#include <cdio/cdio.h>
#include <cdio/logging.h>

#include <mutex>

#include "platform/base/CdTrackPath.h"

namespace {

// A drive with no disc or a file that is no image is an ordinary answer
// here, not something for the terminal.
void Quiet(cdio_log_level_t, const char*) {}

std::string Trimmed(const CString& folder) {
    std::string path = folder.ToUtf8();
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

bool EndsWithNoCase(const std::string& text, const std::string& tail) {
    if (text.size() < tail.size())
        return false;
    for (size_t i = 0; i < tail.size(); ++i) {
        char c = text[text.size() - tail.size() + i];
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
        if (c != tail[i])
            return false;
    }
    return true;
}

// The audio tracks of the disc, by number; empty when there is no disc or
// no audio on it.
struct CAudioDisc {
    std::vector<int> tracks;
    lsn_t leadout = 0;
};

CAudioDisc ReadDisc(const std::string& path) {
    static std::once_flag quiet;
    std::call_once(quiet, [] { cdio_log_set_handler(Quiet); });
    CAudioDisc disc;
    CdIo_t* cdio = cdio_open(path.c_str(), DRIVER_UNKNOWN);
    if (!cdio)
        return disc;
    const track_t first = cdio_get_first_track_num(cdio);
    const track_t count = cdio_get_num_tracks(cdio);
    if (first != CDIO_INVALID_TRACK && count != CDIO_INVALID_TRACK) {
        for (int track = first; track < first + count && track <= kMaxCdTracks; ++track) {
            if (cdio_get_track_format(cdio, static_cast<track_t>(track)) == TRACK_FORMAT_AUDIO)
                disc.tracks.push_back(track);
        }
        disc.leadout = cdio_get_track_lsn(cdio, CDIO_CDROM_LEADOUT_TRACK);
    }
    cdio_destroy(cdio);
    return disc;
}

} // namespace

bool CAudioCdFolders::MayHoldTracks(const std::string& folder) {
    return folder.rfind("/dev/", 0) == 0 || EndsWithNoCase(folder, ".cue") ||
           EndsWithNoCase(folder, ".toc") || EndsWithNoCase(folder, ".nrg");
}

BOOL CAudioCdFolders::ListFolder(const CString& folder, std::vector<CFolderEntry>& entries) {
    const std::string path = Trimmed(folder);
    if (!MayHoldTracks(path))
        return FALSE;
    const CAudioDisc disc = ReadDisc(path);
    if (disc.tracks.empty())
        return FALSE;
    for (int track : disc.tracks)
        entries.push_back({CString::FromUtf8(CdTrackFileName(track)), FALSE, TRUE});
    return TRUE;
}

CString CAudioCdFolders::MediumKey(const CString& root) {
    const std::string path = Trimmed(root);
    if (!MayHoldTracks(path))
        return CString();
    const CAudioDisc disc = ReadDisc(path);
    if (disc.tracks.empty())
        return CString();
    return CString::FromUtf8("cdda:" + std::to_string(disc.tracks.size()) + ":" +
                             std::to_string(disc.leadout));
}

void InstallAudioCdFolders() {
    AddSystemFolderProvider(std::make_shared<CAudioCdFolders>());
}
