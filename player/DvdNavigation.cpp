// A DVD while it plays: the navigator's events in the pump, the time codes,
// and the jumps to titles, chapters and menus that the user asks for.
#include "platform/base/AppContext.h"
#include "platform/base/UserMessages.h"
#include "player/MediaPlayer.h"

uint32_t CMediaPlayer::BcdTimeToSeconds(uint32_t v) {
    auto digit = [v](int shift) { return (v >> shift) & 0xF; };
    return (digit(4) * 10 + digit(0)) * 3600 + (digit(12) * 10 + digit(8)) * 60 + digit(20) * 10 +
           digit(16);
}

uint32_t CMediaPlayer::HmsfToSeconds(uint32_t v) {
    return (v & 0xFF) * 3600 + ((v >> 8) & 0xFF) * 60 + ((v >> 16) & 0xFF);
}

DVD_HMSF_TIMECODE CMediaPlayer::SecondsToHmsf(uint32_t seconds) {
    DVD_HMSF_TIMECODE time{};
    time.bHours = static_cast<BYTE>(seconds / 3600);
    time.bMinutes = static_cast<BYTE>(seconds / 60 % 60);
    time.bSeconds = static_cast<BYTE>(seconds % 60);
    return time;
}

void CMediaPlayer::OnDvdEvent(LONG code, LONG_PTR p1, LONG_PTR p2, CStringArray& messages) {
    switch (code) {
    case EC_DVD_DOMAIN_CHANGE:
        m_dvdDomain = static_cast<uint32_t>(p1);
        break;
    case EC_DVD_TITLE_CHANGE:
        m_dvdTitle = static_cast<uint32_t>(p1);
        break;
    case EC_DVD_CHAPTER_START:
        m_dvdChapter = static_cast<uint32_t>(p1);
        OnDvdChapterStart();
        break;
    case EC_DVD_BUTTON_CHANGE:
        m_dvdButtonCount = static_cast<uint32_t>(p1);
        m_dvdButton = static_cast<uint32_t>(p2);
        break;
    case EC_DVD_CURRENT_TIME:
        m_dvdSeconds = BcdTimeToSeconds(static_cast<uint32_t>(p1));
        break;
    case EC_DVD_ERROR:
    case EC_DVD_WARNING: {
        // Told nowhere: the list lasts for this pass of the pump.
        CString text = DvdProblemText(code, p1);
        if (!text.IsEmpty())
            messages.Add(text);
        break;
    }
    case EC_DVD_NO_FP_PGC:
        if (m_pDvdControl)
            m_pDvdControl->PlayTitle(1, 0, nullptr);
        break;
    case EC_DVD_CURRENT_HMSF_TIME:
        m_dvdSeconds = HmsfToSeconds(static_cast<uint32_t>(p1));
        break;
    default:
        break;
    }
}

CString CMediaPlayer::DvdProblemText(LONG code, LONG_PTR p1) {
    CString text;
    if (code == EC_DVD_ERROR) {
        switch (p1) {
        case DVD_ERROR_Unexpected:
            text =
                u"An unexpected error (possibly incorrectly authored content)\nwas encountered.\n"
                u"Can't playback this DVD-Video disc.\n";
            break;
        case DVD_ERROR_InvalidDVD1_0Disc:
            text = u"This DVD-Video disc is incorrectly authored.\nCan't playback this disc.\n";
            break;
        case DVD_ERROR_LowParentalLevel:
            text = u"Player parental level is set lower than the lowest parental\nlevel available "
                   u"in this DVD-Video content.\nCannot playback this DVD-Video disc.\n";
            break;
        default:
            break;
        }
        return text;
    }
    switch (p1) {
    case DVD_WARNING_InvalidDVD1_0Disc:
        text = u"DVD Warning: Current disc is not v1.0 spec compliant\n";
        break;
    case DVD_WARNING_FormatNotSupported:
        text = u"DVD Warning: The decoder does not support the new format\n.";
        break;
    case DVD_WARNING_IllegalNavCommand:
        text = u"DVD Warning: An illegal navigation command was encountered.\n";
        break;
    case DVD_WARNING_Open:
        text = u"DVD Warning: Could not open a file on the DVD disc.\n";
        break;
    case DVD_WARNING_Seek:
        text = u"DVD Warning: Could not seek in a file on the DVD disc.\n";
        break;
    case DVD_WARNING_Read:
        text = u"DVD Warning: Could not read a file on the DVD disc.\n";
        break;
    default:
        text.Format(u"DVD Warning: An unknown (%ld) warning received.\n", static_cast<long>(p1));
        break;
    }
    return text;
}

void CMediaPlayer::OnDvdChapterStart() {
    m_dvdTitleSeconds = 0;
    if (m_state != 2 || !m_bDvd || !m_pDvdControl)
        return;
    DVD_HMSF_TIMECODE time{};
    ULONG flags = 0;
    if (!m_pDvdInfo || FAILED(m_pDvdInfo->GetTotalTitleTime(&time, &flags)))
        return;
    uint32_t packed = 0;
    memcpy(&packed, &time, sizeof(packed));
    m_dvdTitleSeconds = HmsfToSeconds(packed);
    m_dvdTitleCount = 0;
    ULONG volumes = 0, volume = 0, titles = 0;
    DVD_DISC_SIDE side = DVD_SIDE_A;
    if (FAILED(m_pDvdInfo->GetDVDVolumeInfo(&volumes, &volume, &side, &titles)))
        return;
    m_dvdTitleCount = titles;
    m_dvdChapterCount = GetChapterCount(m_dvdTitle);
    if (HWND dialog = AfxGetAppContext().GetDvdNavWindow())
        PostMessageW(dialog, UM_DVD_INFO, 0, 0);
}

void CMediaPlayer::PlayChapterInTitle(uint32_t title, uint32_t chapter) {
    if (!m_pDvdControl)
        return;
    if (SUCCEEDED(m_pDvdControl->PlayChapterInTitle(title, chapter, 0, nullptr))) {
        m_dvdChapter = chapter;
        m_dvdTitle = title;
    }
}

void CMediaPlayer::ShowDvdMenu(DVD_MENU_ID menu) {
    if (m_pDvdControl)
        m_pDvdControl->ShowMenu(menu, 0, nullptr);
}

uint32_t CMediaPlayer::GetChapterCount(uint32_t title) {
    ULONG count = 0;
    if (!m_pDvdInfo || FAILED(m_pDvdInfo->GetNumberOfChapters(title, &count)))
        return 0;
    return count;
}

void CMediaPlayer::SelectMenuButton(int x, int y) {
    if (!m_pDvdControl)
        return;
    if (m_dvdDomain != DVD_DOMAIN_VideoManagerMenu && m_dvdDomain != DVD_DOMAIN_VideoTitleSetMenu)
        return;
    if (m_dvdButtonCount == 0 || m_dvdButton == 0 || m_dvdButton > m_dvdButtonCount)
        return;
    m_pDvdControl->SelectAtPosition(POINT{x, y});
}

void CMediaPlayer::ActivateMenuButton(int x, int y) {
    if (m_pDvdControl)
        m_pDvdControl->ActivateAtPosition(POINT{x, y});
}

CString CMediaPlayer::GetDomainName() const {
    switch (m_dvdDomain) {
    case DVD_DOMAIN_FirstPlay:
        return CString(u"First Play");
    case DVD_DOMAIN_VideoManagerMenu:
        return CString(u"Video Manager Menu");
    case DVD_DOMAIN_VideoTitleSetMenu:
        return CString(u"Video Title Set Menu");
    case DVD_DOMAIN_Title:
        return CString(u"Title");
    case DVD_DOMAIN_Stop:
        return CString(u"Stop");
    default:
        return CString(u"None");
    }
}

CString CMediaPlayer::GetTitleDurationText() const {
    CString text;
    text.Format(u"Hr: %u Min: %u Sec: %u", m_dvdTitleSeconds / 3600, m_dvdTitleSeconds / 60 % 60,
                m_dvdTitleSeconds % 60);
    return text;
}
