// Where the program finds what it ships with: its filter folders, its name
// files and the default copies of the data files.
#pragma once
#include "platform/base/CString.h"

// The working directory when it holds the shipped files, as a staged build
// run in its folder does. Otherwise the installation folder that lies beside
// the running executable (its bin folder's sibling lib/orvex), when that holds
// them. Otherwise the working directory again.
CString FindStartDirectory();

// The rule itself, for a given working directory and executable path.
CString ChooseStartDirectory(const CString& workingDirectory, const CString& executablePath);

// Whether a folder holds the shipped files: their mark is the filter folder
// "LAV", without which nothing plays.
BOOL HoldsShippedFiles(const CString& folder);
