// The packs a DVD-Video disc is made of: 2048-byte MPEG-2 program stream
// packs, each holding pieces of the picture, the sound tracks, the
// sub-pictures or the navigation data. Splitting a pack finds those pieces.
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

constexpr size_t kDvdPackSize = 2048;

enum class DvdStreamKind { Nav, Video, Audio, SubPicture };
enum class DvdAudioCoding { None, Ac3, Dts, Lpcm, Mpeg };

// One piece of an elementary stream inside a pack.
struct DvdPayload {
    DvdStreamKind kind = DvdStreamKind::Nav;
    DvdAudioCoding audio = DvdAudioCoding::None;
    int track = 0;       // audio 0-7, sub-picture 0-31
    bool hasPts = false; // the piece starts an access unit at pts
    uint64_t pts = 0;    // 90 kHz
    bool scrambled = false;
    size_t offset = 0; // of the piece's bytes in the pack
    size_t size = 0;
};

// The pieces of one pack, in their order; false when the bytes are no MPEG-2
// pack. Pieces of streams the disc format does not define are left out.
bool SplitDvdPack(const uint8_t* pack, size_t size, std::vector<DvdPayload>& out);

// The MPEG video end-of-sequence code: it tells a decoder that the last
// picture it holds is complete.
extern const uint8_t kMpegSequenceEnd[4];
