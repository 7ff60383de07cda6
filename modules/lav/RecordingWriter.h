// The files of a stream's recording: the bytes go unchanged into one file
// per title the stream announces, named after the title, in one folder.
// Thread-safe: the stream writes from its own thread while the user starts
// and stops on another.
#pragma once
#include <mutex>
#include <string>

class CRecordingWriter {
public:
    CRecordingWriter() = default;
    ~CRecordingWriter();
    CRecordingWriter(const CRecordingWriter&) = delete;
    CRecordingWriter& operator=(const CRecordingWriter&) = delete;

    // Arms the recording: folder (made when missing), the name for bytes
    // before the first title, the current title (may be empty) and the
    // file name extension. Gives 0, or the system's error number when the
    // folder can't be made (Failure then says so).
    int Start(const std::string& folder, const std::string& name, const std::string& title,
              const std::string& extension);
    void Stop();
    bool Recording() const;
    // Why the recording stopped by itself or could not start; empty when
    // it did not.
    std::string Failure() const;
    // True once after the recording stopped by itself, for the one notice.
    bool TakeFailure();
    // The file being written, empty between files.
    std::string CurrentFile() const;

    // The stream announced a new title: the next bytes go to a new file.
    void NewTitle(const std::string& title);
    // The stream's bytes. False when writing failed just now: the recording
    // has stopped, and Failure says why.
    bool Write(const void* data, size_t size);
    // The stream ended: the file is closed; the recording stays armed.
    void EndOfStream();

    // A file name made from a title: no path separators or control
    // characters, no leading dots or blanks, at most kMaxNameBytes of UTF-8.
    static std::string SafeFileName(const std::string& title);
    static constexpr size_t kMaxNameBytes = 200;

private:
    bool OpenLocked();
    void CloseLocked();
    void FailLocked(int error, const std::string& path);

    mutable std::mutex m_lock;
    bool m_recording = false;
    std::string m_folder;
    std::string m_name;
    std::string m_title;
    std::string m_extension;
    std::string m_failure;
    bool m_failureUntold = false;
    std::string m_path;
    int m_fd = -1;
};
