#include "modules/asynccd/CdTrackReader.h"

#include <cdio/cdio.h>
#include <cdio/logging.h>
#include <cdio/paranoia/cdda.h>
#include <cdio/paranoia/paranoia.h>

#include <cstring>

#include "modules/asynccd/WavHeader.h"

namespace {

// The library's own messages would go to the terminal; a failure is told
// by the result instead.
void Quiet(cdio_log_level_t, const char*) {}

} // namespace

CCdTrackReader::~CCdTrackReader() {
    Close();
}

void CCdTrackReader::Close() {
    if (m_paranoia)
        cdio_paranoia_free(m_paranoia);
    m_paranoia = nullptr;
    if (m_drive) {
        cdio_cddap_close_no_free_cdio(m_drive);
    }
    m_drive = nullptr;
    if (m_cdio)
        cdio_destroy(m_cdio);
    m_cdio = nullptr;
}

bool CCdTrackReader::Open(const std::string& disc, int track) {
    Close();
    cdio_log_set_handler(Quiet);
    m_cdio = cdio_open(disc.c_str(), DRIVER_UNKNOWN);
    if (!m_cdio)
        return false;
    const track_t first = cdio_get_first_track_num(m_cdio);
    const track_t count = cdio_get_num_tracks(m_cdio);
    if (first == CDIO_INVALID_TRACK || count == CDIO_INVALID_TRACK || track < first ||
        track >= first + count ||
        cdio_get_track_format(m_cdio, static_cast<track_t>(track)) != TRACK_FORMAT_AUDIO) {
        Close();
        return false;
    }
    const lsn_t start = cdio_get_track_lsn(m_cdio, static_cast<track_t>(track));
    const lsn_t last = cdio_get_track_last_lsn(m_cdio, static_cast<track_t>(track));
    if (start == CDIO_INVALID_LSN || last == CDIO_INVALID_LSN || last < start) {
        Close();
        return false;
    }
    m_firstLsn = start;
    m_sectors = static_cast<uint32_t>(last - start + 1);
    // A real drive is read through the paranoia layer; an image holds
    // exactly what was written to it.
    const driver_id_t driver = cdio_get_driver_id(m_cdio);
    if (driver != DRIVER_BINCUE && driver != DRIVER_NRG && driver != DRIVER_CDRDAO) {
        m_drive = cdio_cddap_identify_cdio(m_cdio, CDDA_MESSAGE_FORGETIT, nullptr);
        if (m_drive && cdio_cddap_open(m_drive) == 0) {
            m_paranoia = cdio_paranoia_init(m_drive);
            if (m_paranoia)
                cdio_paranoia_modeset(m_paranoia, PARANOIA_MODE_FULL ^ PARANOIA_MODE_NEVERSKIP);
        }
    }
    return true;
}

bool CCdTrackReader::Read(uint32_t first, uint32_t count, uint8_t* out) {
    if (!m_cdio || first + count > m_sectors || first + count < first)
        return false;
    if (!m_paranoia) {
        return cdio_read_audio_sectors(m_cdio, out, m_firstLsn + static_cast<lsn_t>(first),
                                       count) == DRIVER_OP_SUCCESS;
    }
    if (m_paranoiaNext != first) {
        cdio_paranoia_seek(m_paranoia, m_firstLsn + static_cast<int32_t>(first), SEEK_SET);
        m_paranoiaNext = first;
    }
    for (uint32_t i = 0; i < count; ++i) {
        const int16_t* samples = cdio_paranoia_read(m_paranoia, nullptr);
        if (!samples)
            return false;
        memcpy(out + static_cast<size_t>(i) * kCdSectorBytes, samples, kCdSectorBytes);
        ++m_paranoiaNext;
    }
    return true;
}
