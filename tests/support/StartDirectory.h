// A start directory of the program's own for a test: the shipped name files
// of the radio database and empty default data files, and, on request, the
// staged filter modules and manual.
#pragma once
#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/support/TempDir.h"

inline void MakeStartDirectory(const std::filesystem::path& start, bool withStagedFolders = false) {
    std::filesystem::create_directories(start);
    for (const char* file : {"RadioBrowse_CC.txt", "RadioBrowse_LC.txt"}) {
        std::filesystem::copy_file(std::string(getenv("ORVEX_SOURCE_DIR")) + "/deploy/" + file,
                                   start / file);
    }
    for (const char* file :
         {"OrvexContents.dat", "OrvexUser.dat", "RadioBrowse.dat", "results.txt"})
        TempDir::Write((start / file).string(), "");
    if (withStagedFolders) {
        for (const char* folder : {"LAV", "OrvexHelp"}) {
            std::filesystem::create_directory_symlink(
                std::string(getenv("ORVEX_STAGE_DIR")) + "/" + folder, start / folder);
        }
    }
}
