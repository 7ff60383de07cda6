// Builds the bytes of the program's binary files by hand, from their format
// tables, so tests compare what the writers produce with what the tables say.
#pragma once
#include <cstdint>
#include <string>

#include "platform/base/CString.h"

namespace filebytes {

inline std::string I32(int32_t value) {
    std::string out(4, '\0');
    const auto u = static_cast<uint32_t>(value);
    for (int i = 0; i < 4; ++i)
        out[i] = static_cast<char>((u >> (8 * i)) & 0xFF);
    return out;
}

inline std::string U16(uint16_t value) {
    return std::string{static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
}

// The length field of the string form: one byte below 255; FF and 2 bytes
// below 0xFFFE; otherwise FF FF FF and 4 bytes.
inline std::string Length(uint32_t length) {
    if (length < 0xFF)
        return std::string(1, static_cast<char>(length));
    if (length < 0xFFFE)
        return "\xFF" + U16(static_cast<uint16_t>(length));
    return "\xFF\xFF\xFF" + I32(static_cast<int32_t>(length));
}

// A wide string: the tag FF FE FF, the length, UTF-16LE units.
inline std::string Wide(const CString& text) {
    std::string out = "\xFF\xFE\xFF" + Length(static_cast<uint32_t>(text.GetLength()));
    for (int i = 0; i < text.GetLength(); ++i)
        out += U16(static_cast<uint16_t>(text[i]));
    return out;
}

// A narrow string: the length and the bytes, with no tag.
inline std::string Narrow(const std::string& bytes) {
    return Length(static_cast<uint32_t>(bytes.size())) + bytes;
}

// The smallest useful contents file: one root topic A of media type 4, with
// no items and no children, written with an empty alias table.
inline std::string SmallContentsFile() {
    const char bytes[] = "\x01\x00\x00\x00"         // schema
                         "\x01\x00\x00\x00"         // root topic count
                         "\x01\x00\x00\x00"         // node count of the first topic
                         "\xFF\xFE\xFF\x01\x41\x00" // its node name, one wide character
                         "\x00\x00\x00\x00"         // its node index
                         "\x04\x00\x00\x00"         // media type
                         "\x00\x00\x00\x00"         // item count
                         "\x00\x00\x00\x00";        // child count
    return std::string(bytes, sizeof bytes - 1);
}

} // namespace filebytes
