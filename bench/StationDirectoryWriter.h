// Writes a made-up station directory in the XML form of the Radio Browser
// servers: one <station> element a station, its data in attributes. The
// mixture follows the live directory: a long tail of countries, states,
// languages and tags, names in many scripts, playlists, entities, raw tabs
// and line ends in values, and fields left empty. The same seed always gives
// the same bytes.
#pragma once
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

class StationDirectoryWriter {
public:
    explicit StationDirectoryWriter(uint64_t seed = 20261123) : m_state(seed) {}

    // The whole document for `count` stations.
    std::string Document(int count) {
        std::string out = "<result>\n";
        out.reserve(static_cast<size_t>(count) * 960 + 32);
        for (int i = 0; i < count; ++i)
            AppendStation(out, i);
        out += "</result>";
        return out;
    }

    // Writes the document to `path` in pieces; gives false when it can't.
    bool WriteFile(const std::string& path, int count) {
        FILE* f = fopen(path.c_str(), "wb");
        if (!f)
            return false;
        std::string out = "<result>\n";
        for (int i = 0; i < count; ++i) {
            AppendStation(out, i);
            if (out.size() > (1u << 20)) {
                fwrite(out.data(), 1, out.size(), f);
                out.clear();
            }
        }
        out += "</result>";
        fwrite(out.data(), 1, out.size(), f);
        return fclose(f) == 0;
    }

private:
    uint64_t Next() {
        uint64_t z = (m_state += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }
    int Below(int n) { return static_cast<int>(Next() % static_cast<uint64_t>(n)); }
    bool Chance(int percent) { return Below(100) < percent; }
    // A long-tailed pick from 0..n-1: small numbers far more often.
    int Skewed(int n) {
        const double u = static_cast<double>(Next() >> 11) / 9007199254740992.0;
        int k = static_cast<int>(static_cast<double>(n) * u * u * u);
        return k < n ? k : n - 1;
    }

    static constexpr const char* kCountries[] = {
        "US", "DE", "FR", "GB", "RU", "IT", "ES", "BR", "MX", "CA", "NL", "PL", "AU", "AR", "GR",
        "TR", "CH", "AT", "BE", "IN", "UA", "CZ", "RO", "PT", "CO", "CL", "JP", "SE", "HU", "ID",
        "PE", "PH", "SK", "NO", "DK", "FI", "IE", "RS", "HR", "BG", "CN", "KR", "TW", "EC", "VE",
        "UY", "PY", "BO", "CR", "GT", "SV", "HN", "NI", "PA", "DO", "CU", "PR", "JM", "TT", "HT",
        "NZ", "ZA", "NG", "KE", "GH", "EG", "MA", "TN", "DZ", "SN", "CI", "CM", "UG", "TZ", "ET",
        "IL", "SA", "AE", "QA", "KW", "IR", "IQ", "LB", "JO", "SY", "PK", "BD", "LK", "NP", "TH",
        "VN", "MY", "SG", "KH", "LA", "MM", "MN", "KZ", "UZ", "KG", "TJ", "AZ", "GE", "AM", "BY",
        "LT", "LV", "EE", "MD", "SI", "BA", "ME", "MK", "AL", "XK", "CY", "MT", "LU", "IS", "AD",
        "MC", "LI", "SM", "VA", "FO", "GL", "BM", "BS", "BB", "AG", "LC", "VC", "GD", "KN", "DM",
        "AW", "CW", "SR", "GY", "BZ", "RE", "GP", "MQ", "GF", "NC", "PF", "FJ", "PG", "WS", "TO"};
    static constexpr const char* kLanguages[] = {
        "en", "de", "es", "fr", "ru", "it", "pt", "nl", "pl", "el", "tr", "uk", "cs", "ro", "hu",
        "sv", "ja", "zh", "ar", "ko", "hi", "id", "fi", "no", "da", "sk", "hr", "sr", "bg", "he",
        "fa", "th", "vi", "ms", "ca", "eu", "gl", "lt", "lv", "et", "sl", "bs", "mk", "sq", "is",
        "ga", "cy", "af", "sw", "ta", "te", "bn", "ur", "pa", "ml", "kn", "mr", "ne", "si", "km"};
    static constexpr const char* kLanguageNames[] = {
        "english",    "german",   "spanish",   "french",     "russian",  "italian",
        "portuguese", "dutch",    "polish",    "greek",      "turkish",  "ukrainian",
        "czech",      "romanian", "hungarian", "swedish",    "japanese", "chinese",
        "arabic",     "korean",   "hindi",     "indonesian", "finnish",  "norwegian"};
    static constexpr const char* kCommonTags[] = {"pop",
                                                  "music",
                                                  "news",
                                                  "rock",
                                                  "talk",
                                                  "80s",
                                                  "classical",
                                                  "jazz",
                                                  "dance",
                                                  "oldies",
                                                  "top 40",
                                                  "hits",
                                                  "90s",
                                                  "electronic",
                                                  "country",
                                                  "70s",
                                                  "christian",
                                                  "house",
                                                  "public radio",
                                                  "community radio",
                                                  "easy listening",
                                                  "adult contemporary",
                                                  "ambient",
                                                  "chillout",
                                                  "folk",
                                                  "blues",
                                                  "hip-hop",
                                                  "rnb",
                                                  "soul",
                                                  "reggae",
                                                  "latin",
                                                  "sports",
                                                  "culture",
                                                  "information",
                                                  "local news",
                                                  "classic rock",
                                                  "alternative",
                                                  "indie",
                                                  "metal",
                                                  "techno",
                                                  "trance",
                                                  "lounge",
                                                  "world music",
                                                  "variety",
                                                  "entertainment",
                                                  "religious",
                                                  "gospel",
                                                  "children",
                                                  "education",
                                                  "schlager",
                                                  "chanson",
                                                  "salsa",
                                                  "cumbia",
                                                  "bachata",
                                                  "regional mexican",
                                                  "k-pop",
                                                  "j-pop",
                                                  "anime",
                                                  "soundtrack",
                                                  "retro",
                                                  "disco",
                                                  "funk",
                                                  "punk",
                                                  "grunge",
                                                  "edm",
                                                  "deep house",
                                                  "drum and bass",
                                                  "dubstep",
                                                  "hard rock",
                                                  "heavy metal",
                                                  "smooth jazz",
                                                  "piano",
                                                  "opera",
                                                  "baroque",
                                                  "instrumental",
                                                  "relax",
                                                  "meditation",
                                                  "nature",
                                                  "comedy",
                                                  "politics",
                                                  "business",
                                                  "weather",
                                                  "traffic",
                                                  "college radio",
                                                  "student radio",
                                                  "university",
                                                  "noticias",
                                                  "música",
                                                  "música popular",
                                                  "españa",
                                                  "méxico",
                                                  "россия",
                                                  "музыка",
                                                  "новости",
                                                  "ελληνικά",
                                                  "日本",
                                                  "音乐",
                                                  "뉴스",
                                                  "عربي",
                                                  "Pop",
                                                  "Rock",
                                                  "News"};
    static constexpr const char* kNameWords[] = {"Radio",
                                                 "FM",
                                                 "Sound",
                                                 "Wave",
                                                 "Classic",
                                                 "Hits",
                                                 "Jazz",
                                                 "Rock",
                                                 "City",
                                                 "Star",
                                                 "One",
                                                 "Nova",
                                                 "Antenne",
                                                 "Deutschlandfunk",
                                                 "Café",
                                                 "Música",
                                                 "Estación",
                                                 "Señal",
                                                 "Россия",
                                                 "Радио",
                                                 "Европа",
                                                 "Ελληνικό",
                                                 "Ράδιο",
                                                 "東京",
                                                 "ラジオ",
                                                 "中国之声",
                                                 "音乐台",
                                                 "라디오",
                                                 "راديو",
                                                 "القرآن",
                                                 "רדיו",
                                                 "🎵",
                                                 "🔥",
                                                 "Örebro",
                                                 "Zürich",
                                                 "São",
                                                 "Kraków",
                                                 "Łódź",
                                                 "Český",
                                                 "Ñandú",
                                                 "Ísland",
                                                 "Türkü",
                                                 "&amp;",
                                                 "&apos;80s&apos;",
                                                 "&quot;Live&quot;"};
    static constexpr const char* kSyllables[] = {"ber", "lin", "ham", "ma",   "ri",    "to", "sa",
                                                 "no",  "ka",  "vo",  "del",  "san",   "ta", "fe",
                                                 "ur",  "go",  "wi",  "ston", "ville", "ná", "ö"};

    template <size_t N>
    const char* Pick(const char* const (&list)[N], bool skewed = true) {
        return list[skewed ? Skewed(static_cast<int>(N)) : Below(static_cast<int>(N))];
    }

    std::string Word() {
        std::string w;
        const int n = 2 + Below(3);
        for (int i = 0; i < n; ++i)
            w += kSyllables[Below(static_cast<int>(std::size(kSyllables)))];
        w[0] = static_cast<char>(w[0] - 32 * (w[0] >= 'a' && w[0] <= 'z'));
        return w;
    }

    std::string StateName(int country, int index) {
        // Each country has its own pool, larger for the larger countries.
        uint64_t saved = m_state;
        m_state = static_cast<uint64_t>(country) * 7919 + static_cast<uint64_t>(index) * 104729;
        std::string name = Word();
        if (Chance(40))
            name += " " + Word();
        if (Chance(10))
            name = "Île-de-" + name;
        m_state = saved;
        return name;
    }

    std::string Name(int i) {
        std::string name;
        if (Chance(3))
            name += " ";
        const int words = 1 + Below(5);
        for (int w = 0; w < words; ++w) {
            if (w)
                name += " ";
            name += Chance(45) ? Pick(kNameWords) : Word();
        }
        if (Chance(30))
            name += " " + std::to_string(87 + Below(21)) + "." + std::to_string(Below(10));
        if (Chance(2))
            name += "\tLive\nStream";
        if (Chance(15))
            name += " #" + std::to_string(i);
        return name;
    }

    std::string Url(int i) {
        std::string url = (Chance(70) ? "https://" : "http://") + std::string("stream") +
                          std::to_string(Below(40)) + "." + Word() + ".example.net/";
        const int kind = Below(100);
        if (kind < 3)
            url += "listen/" + std::to_string(i) + ".m3u";
        else if (kind < 5)
            url += "tunein/" + std::to_string(i) + ".pls";
        else if (kind < 9)
            url += "hls/" + std::to_string(i) + "/playlist.m3u8";
        else if (kind < 11)
            url += "live.m3u?token=" + std::to_string(Next());
        else if (kind < 11 && Chance(50))
            url += "s?" + std::string(1500 + Below(3000), 'q');
        else
            url += "stream/" + std::to_string(i) + (Chance(50) ? ".mp3" : "");
        return url;
    }

    std::string Tags() {
        if (Chance(22))
            return "";
        std::string tags;
        const int n = 1 + Skewed(12);
        for (int t = 0; t < n; ++t) {
            if (t)
                tags += Chance(85) ? "," : ", ";
            if (Chance(75))
                tags += Pick(kCommonTags);
            else
                tags += "tag " + std::to_string(Skewed(4000));
        }
        if (Chance(3))
            tags += ",";
        return tags;
    }

    static void Attr(std::string& out, const char* key, const std::string& value) {
        out += ' ';
        out += key;
        out += "=\"";
        out += value;
        out += '"';
    }

    std::string Uuid() {
        char text[40];
        snprintf(text, sizeof text, "%08llx-%04llx-4%03llx-%04llx-%012llx",
                 static_cast<unsigned long long>(Next() & 0xFFFFFFFF),
                 static_cast<unsigned long long>(Next() & 0xFFFF),
                 static_cast<unsigned long long>(Next() & 0xFFF),
                 static_cast<unsigned long long>(Next() & 0xFFFF),
                 static_cast<unsigned long long>(Next() & 0xFFFFFFFFFFFF));
        return text;
    }

    std::string Time() {
        char text[72];
        snprintf(text, sizeof text, "2025-%02d-%02d %02d:%02d:%02d", 1 + Below(12), 1 + Below(28),
                 Below(24), Below(60), Below(60));
        return text;
    }

    void AppendStation(std::string& out, int i) {
        const int countryIndex = Skewed(static_cast<int>(std::size(kCountries)));
        const std::string country = kCountries[countryIndex];
        out += "  <station";
        Attr(out, "changeuuid", Uuid());
        Attr(out, "stationuuid", Uuid());
        Attr(out, "serveruuid", Chance(70) ? Uuid() : "");
        Attr(out, "name", Chance(1) ? "" : Name(i));
        const std::string url = Url(i);
        Attr(out, "url", url);
        Attr(out, "url_resolved", Chance(10) ? "" : (Chance(20) ? Url(i) : url));
        Attr(out, "homepage", "https://www." + Word() + ".example.org/");
        Attr(out, "favicon", Chance(40) ? "" : "https://cdn.example.org/" + Word() + ".png");
        Attr(out, "tags", Tags());
        Attr(out, "country", Word() + " Land");
        Attr(out, "countrycode", Chance(4) ? "" : country);
        Attr(out, "iso_3166_2", Chance(50) ? "" : country + "-" + std::to_string(Below(40)));
        std::string state;
        if (country == "US" && Chance(3))
            state = " ";
        else if (!Chance(25))
            state = StateName(countryIndex, Skewed(8 + 400 / (countryIndex + 1)));
        Attr(out, "state", state);
        const bool named = Chance(12);
        Attr(out, "language", Pick(kLanguageNames));
        std::string codes;
        if (!named) {
            codes = Pick(kLanguages);
            if (Chance(15))
                codes += std::string(",") + Pick(kLanguages);
        }
        Attr(out, "languagecodes", codes);
        Attr(out, "votes", Chance(1) ? "many" : std::to_string(Skewed(5000)));
        Attr(out, "lastchangetime", Time());
        Attr(out, "codec", Chance(60) ? "MP3" : (Chance(50) ? "AAC" : "OGG"));
        Attr(out, "bitrate", std::to_string(32 * (1 + Below(10))));
        Attr(out, "hls", Chance(5) ? "1" : "0");
        Attr(out, "lastcheckok", Chance(90) ? "1" : "0");
        Attr(out, "lastchecktime", Time());
        Attr(out, "lastchecktime_iso8601", "2025-04-27T15:17:54Z");
        Attr(out, "lastcheckoktime", Time());
        Attr(out, "lastlocalchecktime", Time());
        Attr(out, "clicktimestamp", Time());
        Attr(out, "clickcount", std::to_string(Skewed(20000)));
        Attr(out, "clicktrend", std::to_string(Below(21) - 10));
        Attr(out, "ssl_error", "0");
        Attr(out, "geo_lat", Chance(30) ? std::to_string(Below(180) - 90) + ".123456" : "");
        Attr(out, "geo_long", Chance(30) ? std::to_string(Below(360) - 180) + ".654321" : "");
        Attr(out, "has_extended_info", "false");
        out += "></station>\n";
    }

    uint64_t m_state;
};
