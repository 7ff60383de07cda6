// orvexctl fetch: one blocking transfer, exactly as the program makes it, into
// a file. Certificates come from the start directory (the working directory).
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "net/Curlinet.h"
#include "tools/CtlCommand.h"

namespace {

constexpr const char* kName = "fetch";

bool ParseByteCount(const std::string& text, unsigned& out) {
    if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos)
        return false;
    errno = 0;
    unsigned long long value = strtoull(text.c_str(), nullptr, 10);
    if (errno != 0 || value > std::numeric_limits<uint32_t>::max())
        return false;
    out = static_cast<unsigned>(value);
    return true;
}

int RunFetch(const CtlArgs& args) {
    std::vector<std::string> positional;
    unsigned maxBytes = 0;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--max-bytes") {
            if (i + 1 >= args.size() || !ParseByteCount(args[i + 1], maxBytes)) {
                fprintf(stderr, "orvexctl fetch: --max-bytes needs a byte count from 0 to %u\n",
                        std::numeric_limits<uint32_t>::max());
                return 2;
            }
            ++i;
        } else {
            positional.push_back(args[i]);
        }
    }
    if (positional.size() != 2)
        return CtlUsageError(kName);

    CCurlinet net;
    CString error;
    if (!net.GetInternetData(CString(positional[0]), CString(positional[1]), &error, maxBytes)) {
        if (error.IsEmpty())
            error.Format(u"Can not write %s", positional[1]);
        fprintf(stderr, "%s\n", error.ToUtf8().c_str());
        return 1;
    }
    return 0;
}

CtlCommandRegistrar registrar(kName, "URL FILE [--max-bytes N]",
                              "downloads URL into FILE (HTTP status not examined; a limit of 0 "
                              "is none)",
                              RunFetch);

} // namespace
