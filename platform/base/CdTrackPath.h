// The path of one audio CD track: the disc (a drive's device, or a disc
// image file) followed by "/TrackNN.cda", as the drive's folder lists it.
// Header only: the CD source module reads these paths too.
#pragma once
#include <cstdio>
#include <string>

constexpr int kMaxCdTracks = 99;

// "Track01.cda" ... "Track99.cda".
inline std::string CdTrackFileName(int track) {
    char name[16];
    snprintf(name, sizeof(name), "Track%02d.cda", track);
    return name;
}

// Splits a track path into the disc and the track number (1-99); false for
// any path that names no track.
inline bool SplitCdTrackPath(const std::string& path, std::string& disc, int& track) {
    const size_t slash = path.find_last_of('/');
    if (slash == std::string::npos || slash == 0)
        return false;
    const std::string name = path.substr(slash + 1);
    if (name.size() != 11)
        return false;
    auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    std::string folded;
    for (char c : name)
        folded += lower(c);
    if (folded.compare(0, 5, "track") != 0 || folded.compare(7, 4, ".cda") != 0)
        return false;
    const char tens = folded[5], units = folded[6];
    if (tens < '0' || tens > '9' || units < '0' || units > '9')
        return false;
    track = (tens - '0') * 10 + (units - '0');
    if (track < 1 || track > kMaxCdTracks)
        return false;
    disc = path.substr(0, slash);
    return true;
}
