// The version compiled into the program, most significant part first.
#pragma once
#include "platform/base/CString.h"

struct ProgramVersion {
    int major;
    int minor;
    int build;
    int revision;
};

constexpr ProgramVersion kProgramVersion{0, 9, 0, 0};

// "%d.%d.%d.%d" of the four parts.
CString GetProgramVersionText();
