// A file that takes the place of another only once it is complete. The new
// bytes go to a fresh file beside the old one; Close flushes them to the disc
// and renames the new file over the old in one step, so a save that fails at
// any point (a full disc, a crash, a lost power supply) leaves the old file
// exactly as it was.
#pragma once
#include "platform/base/File.h"

class CReplacingFile : public CFile {
public:
    CReplacingFile() = default;
    ~CReplacingFile() override;

    // Makes the new file in the folder of `path`, or, when `path` is a
    // symbolic link, in the folder of the file the link leads to, which the
    // link then keeps naming. A device or a pipe is written to directly.
    // Every report names `path`. Gives 0 on failure and fills *error when
    // given.
    BOOL OpenForReplace(const CString& path, CFileException* error = nullptr);
    // Flushes the new file to the disc and puts it in the old one's place;
    // throws CFileException (and leaves the old file) when that fails.
    void Close() override;
    // Drops the new file; the old one stays.
    void Abort() override;

private:
    void RemoveNewFile();

    std::string m_target;  // the file that is replaced, links followed
    std::string m_newFile; // where the new bytes are written
};
