// The discs the tests and the benchmarks play, made when they start: a
// DVD-Video folder authored with the Debian tools (ffmpeg's DVD target,
// spumux, dvdauthor), the same disc as an encrypted one reads without a
// descrambler, and an audio CD image (cue sheet and bin file) of generated
// tones. A maker that fails gives false, with the tool's words in Errors().
#pragma once
#include <sys/wait.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/support/TempDir.h"

class CDiscMaker {
public:
    // Where the menu's two buttons lie on the 720x480 picture.
    static constexpr int kButtonTop = 300, kButtonBottom = 380;
    static constexpr int kButton1Left = 100, kButton1Right = 300;
    static constexpr int kButton2Left = 420, kButton2Right = 620;
    // The audio CD: two tracks, in seconds.
    static constexpr double kTrackSeconds[2] = {1.5, 1.0};

    // Makes its discs in a folder that outlives what plays them.
    explicit CDiscMaker(std::string folder) : m_folder(std::move(folder)) {}
    const std::string& Errors() const { return m_errors; }

    // The folder that holds VIDEO_TS: a menu on a blue ground with two
    // white buttons (highlighted yellow), whose first button plays title 1
    // and second title 2; title 1 is 4 s of red with a 440 Hz tone in two
    // chapters (the second from about 2 s), title 2 is 2 s of green with an
    // 880 Hz tone. Each title goes back to the menu at its end.
    bool MakeDvd(std::string& dvd) {
        const std::string ffmpeg = "ffmpeg -hide_banner -loglevel error -y ";
        const std::string target = " -target ntsc-dvd -b:v 1500k -aspect 4:3 ";
        auto clip = [&](const char* colour, double seconds, const char* audio, const char* out) {
            const std::string s = std::to_string(seconds);
            return Run(ffmpeg + "-f lavfi -i color=c=" + colour + ":s=720x480:r=30000/1001:d=" + s +
                       " -f lavfi -i " + audio + ":r=48000:d=" + s + " -t " + s + target + out);
        };
        bool ok = clip("0x2040C0", 1, "anullsrc=cl=stereo", "menu.mpg") &&
                  clip("red", 4, "sine=f=440", "t1.mpg") &&
                  clip("green", 2, "sine=f=880", "t2.mpg");
        // The buttons' pictures: the same two boxes in three colours.
        const std::string boxes =
            "255*(between(Y," + std::to_string(kButtonTop) + "," +
            std::to_string(kButtonBottom - 1) + ")*(between(X," + std::to_string(kButton1Left) +
            "," + std::to_string(kButton1Right - 1) + ")+between(X," +
            std::to_string(kButton2Left) + "," + std::to_string(kButton2Right - 1) + ")))";
        const char* const shades[3][2] = {{"normal", "r=255:g=255:b=255"},
                                          {"highlight", "r=255:g=255:b=0"},
                                          {"select", "r=255:g=0:b=0"}};
        for (const auto& shade : shades) {
            ok = ok && Run(ffmpeg + "-f lavfi -i color=c=black:s=720x480,format=rgba -vf \"geq=" +
                           shade[1] + ":a='" + boxes + "'\" -frames:v 1 " + shade[0] + ".png");
        }
        auto button = [](const char* name, int left, int right) {
            return std::string("<button name=\"") + name + "\" x0=\"" + std::to_string(left) +
                   "\" y0=\"" + std::to_string(kButtonTop) + "\" x1=\"" + std::to_string(right) +
                   "\" y1=\"" + std::to_string(kButtonBottom) + "\"/>";
        };
        TempDir::Write(Path("buttons.xml"),
                       "<subpictures><stream><spu force=\"yes\" start=\"00:00:00.00\" "
                       "image=\"normal.png\" highlight=\"highlight.png\" select=\"select.png\">" +
                           button("b1", kButton1Left, kButton1Right) +
                           button("b2", kButton2Left, kButton2Right) +
                           "</spu></stream></subpictures>");
        ok = ok && Run("spumux -m dvd buttons.xml < menu.mpg > menu-buttons.mpg");
        const std::string menu = "<pgc entry=\"%s\"><vob file=\"menu-buttons.mpg\" pause=\"inf\"/>"
                                 "<button name=\"b1\">jump title 1;</button>"
                                 "<button name=\"b2\">jump title 2;</button></pgc>";
        auto entry = [&](const char* name) {
            std::string text = menu;
            text.replace(text.find("%s"), 2, name);
            return text;
        };
        TempDir::Write(
            Path("dvd.xml"),
            "<dvdauthor dest=\"dvd\"><vmgm><fpc>jump menu 1;</fpc><menus>"
            "<video format=\"ntsc\" aspect=\"4:3\"/>" +
                entry("title") +
                "</menus></vmgm><titleset><menus><video format=\"ntsc\" aspect=\"4:3\"/>" +
                entry("root") +
                "</menus><titles><video format=\"ntsc\" aspect=\"4:3\"/>"
                "<pgc><vob file=\"t1.mpg\" chapters=\"0,00:00:02.000\"/>"
                "<post>call vmgm menu 1;</post></pgc>"
                "<pgc><vob file=\"t2.mpg\"/><post>call vmgm menu 1;</post></pgc>"
                "</titles></titleset></dvdauthor>");
        ok = ok && Run("VIDEO_FORMAT=NTSC dvdauthor -x dvd.xml");
        dvd = Path("dvd");
        return ok && std::filesystem::exists(Path("dvd/VIDEO_TS/VIDEO_TS.IFO"));
    }

    // A copy of a DVD folder as an encrypted disc reads without a
    // descrambler: every pack marked as scrambled.
    static void MakeEncryptedCopy(const std::string& dvd, const std::string& copy) {
        std::filesystem::copy(dvd, copy, std::filesystem::copy_options::recursive);
        for (const auto& entry : std::filesystem::directory_iterator(copy + "/VIDEO_TS")) {
            if (entry.path().extension() == ".VOB")
                MarkScrambled(entry.path().string());
        }
    }

    // The cue sheet of a two-track audio CD, with its bin file beside it.
    std::string MakeAudioCd() {
        std::string pcm;
        std::string cue = "FILE \"disc.bin\" BINARY\n";
        const double frequencies[2] = {440.0, 880.0};
        for (int t = 0; t < 2; ++t) {
            const int sectors = static_cast<int>(kTrackSeconds[t] * 75);
            const int start = static_cast<int>(pcm.size() / 2352);
            char index[64];
            snprintf(index, sizeof(index), "  TRACK %02d AUDIO\n    INDEX 01 %02d:%02d:%02d\n",
                     t + 1, start / 4500, start / 75 % 60, start % 75);
            cue += index;
            for (int i = 0; i < sectors * 588; ++i) {
                const auto sample =
                    static_cast<int16_t>(8000 * std::sin(2 * M_PI * frequencies[t] * i / 44100.0));
                for (int channel = 0; channel < 2; ++channel) {
                    pcm += static_cast<char>(sample & 0xFF);
                    pcm += static_cast<char>((sample >> 8) & 0xFF);
                }
            }
        }
        TempDir::Write(Path("disc.bin"), pcm);
        TempDir::Write(Path("disc.cue"), cue);
        return Path("disc.cue");
    }

private:
    std::string Path(const std::string& name) const { return m_folder + "/" + name; }

    // Runs a tool in the discs' folder; its input and output may be files.
    bool Run(const std::string& command) {
        const std::string errors = Path("errors.txt");
        const std::string line =
            "cd '" + m_folder + "' && (" + command + ") >/dev/null 2>'" + errors + "'";
        const int status = std::system(line.c_str());
        const bool ok = status != -1 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
        if (!ok)
            m_errors += command + "\n" + TempDir::Read(errors);
        return ok;
    }

    // Sets the scrambling bits of every PES packet of every pack.
    static void MarkScrambled(const std::string& path) {
        std::string bytes = TempDir::Read(path);
        for (size_t pack = 0; pack + 2048 <= bytes.size(); pack += 2048) {
            auto* p = reinterpret_cast<uint8_t*>(&bytes[pack]);
            if (p[0] != 0 || p[1] != 0 || p[2] != 1 || p[3] != 0xBA)
                continue;
            size_t pos = 14 + (p[13] & 7);
            while (pos + 9 <= 2048 && p[pos] == 0 && p[pos + 1] == 0 && p[pos + 2] == 1) {
                const uint8_t id = p[pos + 3];
                if (id == 0xBD || (id >= 0xC0 && id <= 0xEF))
                    p[pos + 6] |= 0x10;
                pos += 6 + ((p[pos + 4] << 8) | p[pos + 5]);
            }
        }
        TempDir::Write(path, bytes);
    }

    std::string m_folder;
    std::string m_errors;
};
