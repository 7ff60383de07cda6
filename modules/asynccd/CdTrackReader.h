// One track of an audio CD, read through libcdio: from a drive (through the
// paranoia layer, which corrects what a scratched disc gets wrong) or from a
// disc image such as a cue sheet with its bin file (read as it stands).
#pragma once
#include <cstdint>
#include <string>
#include <vector>

struct _CdIo;
struct cdrom_drive_s;
struct cdrom_paranoia_s;

class CCdTrackReader {
public:
    CCdTrackReader() = default;
    ~CCdTrackReader();
    CCdTrackReader(const CCdTrackReader&) = delete;
    CCdTrackReader& operator=(const CCdTrackReader&) = delete;

    // Opens the disc and finds the track; false when the disc cannot be
    // opened or the track is not one of its audio tracks.
    bool Open(const std::string& disc, int track);
    uint32_t Sectors() const { return m_sectors; }
    // Reads whole sectors of the track, counted from its start; false on a
    // read error.
    bool Read(uint32_t first, uint32_t count, uint8_t* out);

private:
    void Close();

    _CdIo* m_cdio = nullptr;
    cdrom_drive_s* m_drive = nullptr;
    cdrom_paranoia_s* m_paranoia = nullptr;
    int32_t m_firstLsn = 0;
    uint32_t m_sectors = 0;
    // Where the paranoia layer will read next, as a sector of the track.
    int64_t m_paranoiaNext = -1;
};
