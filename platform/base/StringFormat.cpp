// printf-style formatting for CString. Every conversion takes the next
// argument as the type it was captured with, so a mismatch between the format
// text and the arguments can never read memory it should not.
#include <cstdio>
#include <string>

#include "platform/base/CString.h"
#include "platform/base/Utf.h"

namespace {

struct Conversion {
    std::string flags;
    int width = -1;
    int precision = -1;
    char type = 0;
};

std::u16string Pad(std::u16string text, const Conversion& conv) {
    if (conv.width > 0 && static_cast<int>(text.size()) < conv.width) {
        size_t fill = static_cast<size_t>(conv.width) - text.size();
        if (conv.flags.find('-') != std::string::npos)
            text.append(fill, u' ');
        else
            text.insert(0, fill, u' ');
    }
    return text;
}

std::string NumberFormat(const Conversion& conv, const char* length, char type) {
    std::string f = "%" + conv.flags;
    if (conv.width >= 0)
        f += std::to_string(conv.width);
    if (conv.precision >= 0)
        f += "." + std::to_string(conv.precision);
    f += length;
    f += type;
    return f;
}

std::u16string FormatNumber(const Conversion& conv, const CFormatArg& arg) {
    char buffer[512];
    char type = conv.type;
    std::string f;
    switch (type) {
    case 'd':
    case 'i': {
        long long v = arg.kind == CFormatArg::Unsigned   ? static_cast<long long>(arg.u)
                      : arg.kind == CFormatArg::Floating ? static_cast<long long>(arg.d)
                                                         : arg.i;
        f = NumberFormat(conv, "ll", 'd');
        snprintf(buffer, sizeof buffer, f.c_str(), v);
        break;
    }
    case 'u':
    case 'x':
    case 'X':
    case 'o': {
        unsigned long long v =
            arg.kind == CFormatArg::Signed     ? static_cast<unsigned long long>(arg.i)
            : arg.kind == CFormatArg::Floating ? static_cast<unsigned long long>(arg.d)
                                               : arg.u;
        f = NumberFormat(conv, "ll", type);
        snprintf(buffer, sizeof buffer, f.c_str(), v);
        break;
    }
    default: {
        double v = arg.kind == CFormatArg::Floating   ? arg.d
                   : arg.kind == CFormatArg::Unsigned ? static_cast<double>(arg.u)
                                                      : static_cast<double>(arg.i);
        f = NumberFormat(conv, "", type);
        snprintf(buffer, sizeof buffer, f.c_str(), v);
        break;
    }
    }
    return Utf8ToUtf16(buffer);
}

std::u16string ArgAsText(const CFormatArg& arg) {
    switch (arg.kind) {
    case CFormatArg::Text16:
        return std::u16string(arg.s16);
    case CFormatArg::Text8:
        return Utf8ToUtf16(arg.s8);
    case CFormatArg::Signed:
        return Utf8ToUtf16(std::to_string(arg.i));
    case CFormatArg::Unsigned:
        return Utf8ToUtf16(std::to_string(arg.u));
    case CFormatArg::Floating:
        return Utf8ToUtf16(std::to_string(arg.d));
    case CFormatArg::Pointer: {
        char buffer[32];
        snprintf(buffer, sizeof buffer, "%p", arg.p);
        return Utf8ToUtf16(buffer);
    }
    }
    return {};
}

} // namespace

CString CString::FormatList(const CString& format, const CFormatArg* args, size_t count) {
    const std::u16string& f = format.str();
    std::u16string out;
    out.reserve(f.size() + 16 * count);
    size_t next = 0;
    auto take = [&]() -> const CFormatArg* { return next < count ? &args[next++] : nullptr; };

    for (size_t i = 0; i < f.size(); ++i) {
        char16_t ch = f[i];
        if (ch != u'%') {
            out += ch;
            continue;
        }
        if (i + 1 < f.size() && f[i + 1] == u'%') {
            out += u'%';
            ++i;
            continue;
        }
        Conversion conv;
        size_t j = i + 1;
        while (j < f.size() &&
               (f[j] == u'-' || f[j] == u'+' || f[j] == u' ' || f[j] == u'0' || f[j] == u'#')) {
            conv.flags += static_cast<char>(f[j]);
            ++j;
        }
        auto readNumber = [&](int& value) {
            if (j < f.size() && f[j] == u'*') {
                const CFormatArg* a = take();
                long long v =
                    a ? (a->kind == CFormatArg::Unsigned ? static_cast<long long>(a->u) : a->i) : 0;
                value = static_cast<int>(v < 0 ? 0 : (v > 10000 ? 10000 : v));
                ++j;
                return;
            }
            if (j < f.size() && f[j] >= u'0' && f[j] <= u'9') {
                value = 0;
                while (j < f.size() && f[j] >= u'0' && f[j] <= u'9' && value < 10000) {
                    value = value * 10 + (f[j] - u'0');
                    ++j;
                }
            }
        };
        readNumber(conv.width);
        if (j < f.size() && f[j] == u'.') {
            ++j;
            conv.precision = 0;
            readNumber(conv.precision);
        }
        // Length modifiers say nothing here: the argument knows its own width.
        while (j < f.size() && (f[j] == u'h' || f[j] == u'l' || f[j] == u'L' || f[j] == u'z' ||
                                f[j] == u'j' || f[j] == u't' || f[j] == u'q')) {
            ++j;
        }
        if (j + 2 < f.size() && f[j] == u'I' && f[j + 1] == u'6' && f[j + 2] == u'4')
            j += 3;
        if (j >= f.size()) {
            out.append(f, i, std::u16string::npos);
            break;
        }
        conv.type = static_cast<char>(f[j] < 0x80 ? f[j] : '?');
        const CFormatArg* arg = nullptr;
        switch (conv.type) {
        case 's':
        case 'S': {
            arg = take();
            std::u16string text = arg ? ArgAsText(*arg) : std::u16string();
            if (conv.precision >= 0 && static_cast<int>(text.size()) > conv.precision)
                text.resize(static_cast<size_t>(conv.precision));
            out += Pad(std::move(text), conv);
            break;
        }
        case 'c':
        case 'C': {
            arg = take();
            std::u16string text;
            if (arg)
                text = arg->kind == CFormatArg::Text16 || arg->kind == CFormatArg::Text8
                           ? ArgAsText(*arg).substr(0, 1)
                           : std::u16string(
                                 1, static_cast<char16_t>(
                                        arg->kind == CFormatArg::Unsigned ? arg->u : arg->i));
            out += Pad(std::move(text), conv);
            break;
        }
        case 'd':
        case 'i':
        case 'u':
        case 'x':
        case 'X':
        case 'o':
        case 'f':
        case 'F':
        case 'e':
        case 'E':
        case 'g':
        case 'G':
            arg = take();
            if (arg && (arg->kind == CFormatArg::Text16 || arg->kind == CFormatArg::Text8))
                out += Pad(ArgAsText(*arg), conv);
            else if (arg)
                out += FormatNumber(conv, *arg);
            break;
        case 'p':
            arg = take();
            if (arg)
                out += Pad(ArgAsText(*arg), conv);
            break;
        default:
            // Not a conversion we know: keep the text as written.
            out.append(f, i, j - i + 1);
            break;
        }
        i = j;
    }
    return CString(std::move(out));
}
