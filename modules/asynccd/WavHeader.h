// The 44-byte header of a WAV file of CD audio: PCM, two channels, 44,100
// samples a second, 16 bits each, little-endian. The CD source puts it in
// front of a track's samples, so that the track reads as a WAV file.
#pragma once
#include <array>
#include <cstdint>

constexpr uint32_t kCdSectorBytes = 2352;
constexpr uint32_t kWavHeaderBytes = 44;

inline std::array<uint8_t, kWavHeaderBytes> CdWavHeader(uint32_t dataBytes) {
    std::array<uint8_t, kWavHeaderBytes> h{};
    auto put32 = [&h](size_t at, uint32_t v) {
        for (int i = 0; i < 4; ++i)
            h[at + i] = static_cast<uint8_t>(v >> (8 * i));
    };
    auto put16 = [&h](size_t at, uint16_t v) {
        h[at] = static_cast<uint8_t>(v);
        h[at + 1] = static_cast<uint8_t>(v >> 8);
    };
    auto tag = [&h](size_t at, const char* text) {
        for (int i = 0; i < 4; ++i)
            h[at + i] = static_cast<uint8_t>(text[i]);
    };
    tag(0, "RIFF");
    put32(4, 36 + dataBytes);
    tag(8, "WAVE");
    tag(12, "fmt ");
    put32(16, 16);     // the format chunk's size
    put16(20, 1);      // PCM
    put16(22, 2);      // channels
    put32(24, 44100);  // samples a second
    put32(28, 176400); // bytes a second
    put16(32, 4);      // bytes a sample frame
    put16(34, 16);     // bits a sample
    tag(36, "data");
    put32(40, dataBytes);
    return h;
}
