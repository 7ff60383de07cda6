#include "platform/base/CommaRecordFile.h"

#include <string>
#include <vector>

#include "platform/base/File.h"

namespace {

void TakeLine(std::string_view line, const CommaRecordSink& add) {
    // Read as text: a line ends with LF, and a CR in front of it goes with it.
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    if (line.empty() || line.find("//") != std::string_view::npos)
        return;
    const size_t comma = line.find(',');
    if (comma == std::string_view::npos)
        return;
    add(CString::FromUtf8(line.substr(0, comma)), CString::FromUtf8(line.substr(comma + 1)));
}

} // namespace

BOOL ReadCommaRecordFile(const CString& path, const CommaRecordSink& add) {
    CFile file;
    if (!file.Open(path, CFile::modeRead | CFile::typeText))
        return FALSE;
    std::string pending;
    std::vector<char> block(0x4000);
    bool first = true;
    try {
        for (;;) {
            const UINT got = file.Read(block.data(), static_cast<UINT>(block.size()));
            if (got == 0)
                break;
            pending.append(block.data(), got);
            if (first && pending.size() >= 3) {
                if (pending.compare(0, 3, "\xEF\xBB\xBF") == 0)
                    pending.erase(0, 3);
                first = false;
            }
            size_t begin = 0;
            for (size_t lf; (lf = pending.find('\n', begin)) != std::string::npos; begin = lf + 1)
                TakeLine(std::string_view(pending).substr(begin, lf - begin), add);
            pending.erase(0, begin);
        }
    } catch (const CException&) {
        file.Abort();
        return FALSE;
    }
    TakeLine(pending, add);
    file.Abort();
    return TRUE;
}
