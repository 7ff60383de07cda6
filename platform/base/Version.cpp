#include "platform/base/Version.h"

CString GetProgramVersionText() {
    CString text;
    text.Format(u"%d.%d.%d.%d", kProgramVersion.major, kProgramVersion.minor, kProgramVersion.build,
                kProgramVersion.revision);
    return text;
}
