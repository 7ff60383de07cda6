// The DVD Navigator's events and the numbers they carry. Kept apart from the
// interfaces, so that the navigator's reader can use them beside the
// navigation library's own headers, whose names would clash with the rest.
#pragma once
#include "platform/media/ComTypes.h"

// The navigator's domains, as EC_DVD_DOMAIN_CHANGE carries them.
constexpr LONG kDvdDomainFirstPlay = 1;
constexpr LONG kDvdDomainVideoManagerMenu = 2;
constexpr LONG kDvdDomainVideoTitleSetMenu = 3;
constexpr LONG kDvdDomainTitle = 4;
constexpr LONG kDvdDomainStop = 5;

// The DVD events of the graph; param1 and param2 as each says.
constexpr LONG EC_DVD_DOMAIN_CHANGE = 0x101;     // the new DVD_DOMAIN
constexpr LONG EC_DVD_TITLE_CHANGE = 0x102;      // the title number
constexpr LONG EC_DVD_CHAPTER_START = 0x103;     // the chapter number
constexpr LONG EC_DVD_BUTTON_CHANGE = 0x107;     // buttons of the menu, the selected one (0: none)
constexpr LONG EC_DVD_CURRENT_TIME = 0x10B;      // the title time as BCD hh:mm:ss
constexpr LONG EC_DVD_ERROR = 0x10C;             // a DVD_ERROR value
constexpr LONG EC_DVD_WARNING = 0x10D;           // a DVD_WARNING value
constexpr LONG EC_DVD_NO_FP_PGC = 0x10F;         // the disc has no first-play program
constexpr LONG EC_DVD_CURRENT_HMSF_TIME = 0x11A; // the title time as a DVD_HMSF_TIMECODE

constexpr LONG DVD_ERROR_Unexpected = 1;
constexpr LONG DVD_ERROR_InvalidDVD1_0Disc = 3;
constexpr LONG DVD_ERROR_LowParentalLevel = 5;

constexpr LONG DVD_WARNING_InvalidDVD1_0Disc = 1;
constexpr LONG DVD_WARNING_FormatNotSupported = 2;
constexpr LONG DVD_WARNING_IllegalNavCommand = 3;
constexpr LONG DVD_WARNING_Open = 4;
constexpr LONG DVD_WARNING_Seek = 5;
constexpr LONG DVD_WARNING_Read = 6;
