#include "platform/media/DvdDisc.h"

#include <dvdnav/dvdnav.h>
#include <dvdread/dvd_reader.h>
#include <dvdread/ifo_read.h>
#include <dvdread/ifo_types.h>

#include <cstdarg>
#include <cstdio>
#include <numeric>
#include <vector>

#include "platform/media/DvdPacks.h"

namespace {

// How many blocks of a VOB are looked at for scrambled packs.
constexpr int kBlocksLookedAt = 16;

const char* const kEncryptedReason =
    "This DVD is encrypted (CSS). Orvex cannot read it: descrambling needs the libdvdcss "
    "library, which Debian does not ship.";

// The libraries' messages: the last error is kept as the reason of a
// refusal, nothing goes to the terminal.
void KeepMessage(void* priv, int level, int errorLevel, const char* format, va_list args) {
    if (level != errorLevel || !priv)
        return;
    char text[512];
    vsnprintf(text, sizeof(text), format, args);
    *static_cast<std::string*>(priv) = text;
}

void ReaderLog(void* priv, dvd_logger_level_t level, const char* format, va_list args) {
    KeepMessage(priv, level, DVD_LOGGER_LEVEL_ERROR, format, args);
}

void NavigatorLog(void* priv, dvdnav_logger_level_t level, const char* format, va_list args) {
    KeepMessage(priv, level, DVDNAV_LOGGER_LEVEL_ERROR, format, args);
}

const dvd_logger_cb kReaderLogger = {ReaderLog};
const dvdnav_logger_cb kNavigatorLogger = {NavigatorLog};

enum class VobState { Missing, Clear, Scrambled, Unreadable };

VobState LookAtVob(dvd_reader_t* dvd, int titleSet, dvd_read_domain_t domain) {
    dvd_file_t* file = DVDOpenFile(dvd, titleSet, domain);
    if (!file)
        return VobState::Missing;
    std::vector<unsigned char> blocks(kDvdPackSize * kBlocksLookedAt);
    const ssize_t size = DVDFileSize(file);
    const int count = size > 0 && size < kBlocksLookedAt ? static_cast<int>(size) : kBlocksLookedAt;
    const ssize_t read = size > 0 ? DVDReadBlocks(file, 0, count, blocks.data()) : 0;
    DVDCloseFile(file);
    if (size > 0 && read <= 0)
        return VobState::Unreadable;
    std::vector<DvdPayload> pieces;
    for (ssize_t i = 0; i < read; ++i) {
        pieces.clear();
        SplitDvdPack(blocks.data() + i * kDvdPackSize, kDvdPackSize, pieces);
        for (const DvdPayload& piece : pieces) {
            if (piece.scrambled)
                return VobState::Scrambled;
        }
    }
    return VobState::Clear;
}

} // namespace

void DvdPixelAspect(int width, int height, bool wide, int& parN, int& parD) {
    parN = (wide ? 16 : 4) * height;
    parD = (wide ? 9 : 3) * width;
    const int divisor = std::gcd(parN, parD);
    if (divisor > 0) {
        parN /= divisor;
        parD /= divisor;
    }
}

bool ExamineDvdDisc(const std::string& path, CDvdDiscFacts& facts, std::string& reason) {
    std::string message;
    dvd_reader_t* dvd = DVDOpen2(&message, &kReaderLogger, path.c_str());
    if (!dvd) {
        reason = "No DVD-Video disc could be opened at " + path + ".";
        return false;
    }
    ifo_handle_t* vmg = ifoOpen(dvd, 0);
    if (!vmg || !vmg->vmgi_mat) {
        if (vmg)
            ifoClose(vmg);
        DVDClose(dvd);
        reason = "The disc's VIDEO_TS.IFO is missing or damaged.";
        return false;
    }
    facts.hasFirstPlay = vmg->first_play_pgc != nullptr;
    const video_attr_t& video = vmg->vmgi_mat->vmgm_video_attr;
    const bool pal = video.video_format == 1;
    facts.height = pal ? 576 : 480;
    static const int kWidths[4] = {720, 704, 352, 352};
    facts.width = kWidths[video.picture_size & 3];
    if ((video.picture_size & 3) == 3)
        facts.height /= 2;
    DvdPixelAspect(facts.width, facts.height, video.display_aspect_ratio == 3, facts.parN,
                   facts.parD);
    const int titleSets = vmg->vmgi_mat->vmg_nr_of_title_sets;
    ifoClose(vmg);

    // The menus and the first title set tell whether the disc can be read.
    VobState menus = LookAtVob(dvd, 0, DVD_READ_MENU_VOBS);
    VobState titles = titleSets > 0 ? LookAtVob(dvd, 1, DVD_READ_TITLE_VOBS) : VobState::Missing;
    DVDClose(dvd);
    if (menus == VobState::Scrambled || titles == VobState::Scrambled) {
        reason = kEncryptedReason;
        return false;
    }
    if (menus == VobState::Unreadable || titles == VobState::Unreadable) {
        reason = "The disc's video files cannot be read. If the disc is encrypted (CSS), "
                 "descrambling needs the libdvdcss library, which Debian does not ship.";
        return false;
    }
    return true;
}

dvdnav_s* OpenDvdNavigation(const std::string& path, std::string* messages, std::string& reason) {
    dvdnav_t* nav = nullptr;
    messages->clear();
    if (dvdnav_open2(&nav, messages, &kNavigatorLogger, path.c_str()) != DVDNAV_STATUS_OK) {
        if (nav)
            dvdnav_close(nav);
        reason = messages->empty() ? "The disc's navigation data cannot be read." : *messages;
        return nullptr;
    }
    // Menus and titles in the disc's own languages; the position counts
    // within the program chain, as titles are timed.
    dvdnav_set_readahead_flag(nav, 1);
    dvdnav_menu_language_select(nav, const_cast<char*>("en"));
    dvdnav_audio_language_select(nav, const_cast<char*>("en"));
    dvdnav_spu_language_select(nav, const_cast<char*>("en"));
    dvdnav_set_PGC_positioning_flag(nav, 1);
    return nav;
}
