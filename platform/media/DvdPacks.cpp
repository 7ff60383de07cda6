#include "platform/media/DvdPacks.h"

const uint8_t kMpegSequenceEnd[4] = {0x00, 0x00, 0x01, 0xB7};

namespace {

constexpr uint8_t kPackStart = 0xBA;
constexpr uint8_t kPrivateStream1 = 0xBD;

bool StartCode(const uint8_t* p) {
    return p[0] == 0 && p[1] == 0 && p[2] == 1;
}

uint64_t ReadPts(const uint8_t* p) {
    return (static_cast<uint64_t>((p[0] >> 1) & 0x07) << 30) | (static_cast<uint64_t>(p[1]) << 22) |
           (static_cast<uint64_t>(p[2] >> 1) << 15) | (static_cast<uint64_t>(p[3]) << 7) |
           (static_cast<uint64_t>(p[4]) >> 1);
}

// Names the piece by the private stream's own first byte, and skips the
// header bytes that byte announces.
bool ClassifyPrivate(const uint8_t* data, DvdPayload& piece) {
    if (piece.size < 1)
        return false;
    const uint8_t sub = data[piece.offset];
    size_t skip = 0;
    if (sub >= 0x20 && sub <= 0x3F) {
        piece.kind = DvdStreamKind::SubPicture;
        piece.track = sub & 0x1F;
        skip = 1;
    } else if (sub >= 0x80 && sub <= 0x87) {
        piece.kind = DvdStreamKind::Audio;
        piece.audio = DvdAudioCoding::Ac3;
        piece.track = sub & 0x07;
        skip = 4; // the id, the frame count and the first access unit
    } else if (sub >= 0x88 && sub <= 0x8F) {
        piece.kind = DvdStreamKind::Audio;
        piece.audio = DvdAudioCoding::Dts;
        piece.track = sub & 0x07;
        skip = 4;
    } else if (sub >= 0xA0 && sub <= 0xA7) {
        piece.kind = DvdStreamKind::Audio;
        piece.audio = DvdAudioCoding::Lpcm;
        piece.track = sub & 0x07;
        skip = 1; // the decoder reads the rest of the header itself
    } else {
        return false;
    }
    if (piece.size < skip)
        return false;
    piece.offset += skip;
    piece.size -= skip;
    return true;
}

} // namespace

bool SplitDvdPack(const uint8_t* pack, size_t size, std::vector<DvdPayload>& out) {
    if (!pack || size < 14 || !StartCode(pack) || pack[3] != kPackStart || (pack[4] & 0xC0) != 0x40)
        return false;
    size_t pos = 14 + (pack[13] & 0x07);
    while (pos + 6 <= size && StartCode(pack + pos)) {
        const uint8_t id = pack[pos + 3];
        const size_t length = (static_cast<size_t>(pack[pos + 4]) << 8) | pack[pos + 5];
        const size_t end = pos + 6 + length;
        if (end > size)
            break;
        const bool video = id >= 0xE0 && id <= 0xEF;
        const bool mpegAudio = id >= 0xC0 && id <= 0xC7;
        if ((video || mpegAudio || id == kPrivateStream1) && length >= 3 &&
            (pack[pos + 6] & 0xC0) == 0x80) {
            const size_t headerLength = pack[pos + 8];
            const size_t start = pos + 9 + headerLength;
            if (start <= end) {
                DvdPayload piece;
                piece.offset = start;
                piece.size = end - start;
                piece.scrambled = (pack[pos + 6] & 0x30) != 0;
                if ((pack[pos + 7] & 0x80) && headerLength >= 5) {
                    piece.hasPts = true;
                    piece.pts = ReadPts(pack + pos + 9);
                }
                bool known = true;
                if (video) {
                    piece.kind = DvdStreamKind::Video;
                } else if (mpegAudio) {
                    piece.kind = DvdStreamKind::Audio;
                    piece.audio = DvdAudioCoding::Mpeg;
                    piece.track = id & 0x07;
                } else if (piece.scrambled) {
                    // Scrambled bytes cannot tell which stream they are.
                    piece.kind = DvdStreamKind::Audio;
                } else {
                    known = ClassifyPrivate(pack, piece);
                }
                if (known)
                    out.push_back(piece);
            }
        }
        pos = end;
    }
    return true;
}
