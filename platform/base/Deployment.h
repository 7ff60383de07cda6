// Addresses that belong to a deployment of the program rather than to its
// logic. Every web address the program knows stands here and nowhere else.
#pragma once

// The project's home page, shown in the About box.
inline constexpr const char16_t* kProjectWebAddress = u"https://orvex.sourceforge.io";

// The project's download server, reached over HTTPS. The update check reads
// the version file from it, then asks for the statistics file.
inline constexpr const char16_t* kDownloadServerHost = u"orvex.sourceforge.io";
inline constexpr const char16_t* kVersionFilePath = u"/orvex/SourceCode/version.dat";
inline constexpr const char16_t* kVersionStatsPath = u"/orvex/SourceCode/VersionStats.7z";

// Web addresses of the open source projects credited in the About box, in the
// order the box lists them.
struct CreditedProject {
    const char16_t* name;
    const char16_t* address;
};
inline constexpr CreditedProject kCreditedProjects[] = {
    {u"LAV Filters:", u"https://github.com/Nevcairiel/LAVFilters"},
    {u"FFMPEG:", u"https://ffmpeg.org"},
    {u"Curl:", u"https://curl.se"},
    {u"WolfSSL:", u"https://www.wolfssl.com"},
    {u"MPC-HC:", u"https://github.com/clsid2/mpc-hc"},
    {u"Radio-Browser:", u"https://www.radio-browser.info"},
};

// The domain all Radio Browser servers share (its length, 22, is part of how
// the server list is read), and the list of those servers.
inline constexpr const char16_t* RB_SERVER_DOMAIN = u"api.radio-browser.info";
inline constexpr const char16_t* RB_SERVER_LIST_URL =
    u"https://all.api.radio-browser.info/json/servers";

// The sample stream the Open Media URL box starts with.
inline constexpr const char16_t* kSampleStreamUrl = u"https://ice1.somafm.com/groovesalad-128-mp3";
