// Opening a DVD-Video disc: a VIDEO_TS folder (or the folder above it), an
// image file or a drive. Before the navigator takes the disc, the disc is
// looked at once: whether its menus and titles can be read at all (an
// encrypted disc cannot, since Debian ships no descrambling library), whether
// it has a first-play program, and what its picture is.
#pragma once
#include <string>

// The navigation library's handle; its headers stay out of this one, since
// their names clash with those of the pipeline interfaces.
struct dvdnav_s;

struct CDvdDiscFacts {
    bool hasFirstPlay = true;
    int width = 720;
    int height = 480;
    // The shape of one pixel, so that the picture shows at its display aspect.
    int parN = 8;
    int parD = 9;
};

// Looks at the disc; false with the reason, in words for the user, when it
// cannot be played.
bool ExamineDvdDisc(const std::string& path, CDvdDiscFacts& facts, std::string& reason);

// The navigation library on the disc; null with the reason when it refuses
// the disc. Its error messages land in `messages` instead of on the
// terminal, for as long as the handle lives.
dvdnav_s* OpenDvdNavigation(const std::string& path, std::string* messages, std::string& reason);

// The pixel shape of a frame of this size shown at this display aspect.
void DvdPixelAspect(int width, int height, bool wide, int& parN, int& parD);
