#include "app/PlayedTitles.h"

#include <filesystem>
#include <fstream>

const char16_t* const kPlayedTitlesFile = u"PlayedTitles.txt";

namespace {

// A field may hold neither the separator nor a line end.
std::string Field(const CString& text) {
    std::string field = text.ToUtf8();
    for (char& c : field) {
        if (c == '\t' || c == '\r' || c == '\n')
            c = ' ';
    }
    return field;
}

// The last maxBytes of a file, from the first line that begins in them.
std::string Tail(const std::string& path, size_t maxBytes) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    if (!in)
        return std::string();
    auto size = static_cast<size_t>(in.tellg());
    size_t from = size > maxBytes ? size - maxBytes : 0;
    in.seekg(static_cast<std::streamoff>(from));
    std::string text(size - from, '\0');
    in.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<size_t>(in.gcount()));
    if (from > 0) {
        size_t lineStart = text.find('\n');
        text.erase(0, lineStart == std::string::npos ? text.size() : lineStart + 1);
    }
    return text;
}

} // namespace

BOOL AppendPlayedTitle(const CString& path, const CString& station, const CString& title,
                       time_t when) {
    struct tm local;
    localtime_r(&when, &local);
    char stamp[32];
    strftime(stamp, sizeof stamp, "%Y-%m-%d %H:%M:%S", &local);
    std::string line = std::string(stamp) + "\t" + Field(station) + "\t" + Field(title) + "\r\n";
    const std::string file = path.ToUtf8();
    std::error_code error;
    auto size = std::filesystem::file_size(file, error);
    if (!error && size + line.size() > kMaxPlayedTitlesBytes) {
        std::string kept = Tail(file, kMaxPlayedTitlesBytes / 2);
        std::ofstream out(file, std::ios::binary | std::ios::trunc);
        out.write(kept.data(), static_cast<std::streamsize>(kept.size()));
    }
    std::ofstream out(file, std::ios::binary | std::ios::app);
    out.write(line.data(), static_cast<std::streamsize>(line.size()));
    out.close();
    return out ? TRUE : FALSE;
}

CString ReadPlayedTitles(const CString& path, size_t maxBytes) {
    return CString::FromUtf8(Tail(path.ToUtf8(), maxBytes));
}
