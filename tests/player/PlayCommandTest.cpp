// orvexctl play as a program: its options, and names it must take as files.
#include <filesystem>

#include "tests/player/PlayerTestSupport.h"
#include "tests/support/OrvexctlRun.h"

TEST(PlayCommandTest, HelpAndUnknownOptionsAreNoFileNames) {
    TempDir dir;
    CtlRun help = Orvexctl(dir, "play --help");
    EXPECT_EQ(0, help.exitCode);
    EXPECT_EQ(0u, help.out.find("usage: orvexctl play [--seconds N] [--] FILE|URL\n")) << help.out;
    EXPECT_EQ(std::string::npos, help.out.find("File Source Error"));
    CtlRun unknown = Orvexctl(dir, "play --loud x.ogg");
    EXPECT_EQ(2, unknown.exitCode);
    EXPECT_EQ("usage: orvexctl play [--seconds N] [--] FILE|URL\n", unknown.err);
}

TEST(PlayCommandTest, RelativeNamesWithAColonAreFiles) {
    // A start directory with the filter modules, and the media in it.
    TempDir dir;
    std::filesystem::create_directory_symlink(StagedStartDir() + "/LAV", dir / "LAV");
    std::filesystem::copy_file(TestMedia::Get().Audio(), dir / "Live:2019.ogg");
    std::filesystem::copy_file(TestMedia::Get().Audio(), dir / "--help");
    CtlRun run = Orvexctl(dir, "play --seconds 0 Live:2019.ogg", "ORVEX_AUDIO_SINK=fakesink");
    EXPECT_EQ(0, run.exitCode) << run.out;
    EXPECT_EQ("playing Live:2019.ogg (2 s)\nstopped\n", run.out);
    // After "--" even a name like an option is a file.
    run = Orvexctl(dir, "play --seconds 0 -- --help", "ORVEX_AUDIO_SINK=fakesink");
    EXPECT_EQ("playing --help (2 s)\nstopped\n", run.out);
}
