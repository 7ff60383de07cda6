#include "platform/media/GraphSettings.h"

#include <cstdlib>
#include <mutex>

namespace {

struct Settings {
    std::mutex lock;
    std::string audio;
    std::string video;
    NativeWindowResolver resolver;
    NativeWindowPlacer placer;
};

Settings& TheSettings() {
    static Settings settings;
    return settings;
}

std::string FromEnv(const char* name) {
    const char* value = getenv(name);
    return value ? value : "";
}

} // namespace

int GraphStateWaitScale() {
    static const int scale = [] {
        const int value = std::atoi(FromEnv("ORVEX_STATE_WAIT_SCALE").c_str());
        return value >= 1 && value <= 20 ? value : 1;
    }();
    return scale;
}

void SetGraphAudioSink(const std::string& description) {
    std::lock_guard<std::mutex> lock(TheSettings().lock);
    TheSettings().audio = description;
}

void SetGraphVideoSink(const std::string& description) {
    std::lock_guard<std::mutex> lock(TheSettings().lock);
    TheSettings().video = description;
}

std::string GraphAudioSink() {
    std::lock_guard<std::mutex> lock(TheSettings().lock);
    if (!TheSettings().audio.empty())
        return TheSettings().audio;
    std::string env = FromEnv("ORVEX_AUDIO_SINK");
    return env.empty() ? "autoaudiosink" : env;
}

std::string GraphVideoSink() {
    std::lock_guard<std::mutex> lock(TheSettings().lock);
    if (!TheSettings().video.empty())
        return TheSettings().video;
    std::string env = FromEnv("ORVEX_VIDEO_SINK");
    if (!env.empty())
        return env;
    if (FromEnv("DISPLAY").empty() && FromEnv("WAYLAND_DISPLAY").empty())
        return "fakesink sync=true";
    return "autovideosink";
}

void SetNativeWindowResolver(NativeWindowResolver resolver) {
    std::lock_guard<std::mutex> lock(TheSettings().lock);
    TheSettings().resolver = std::move(resolver);
}

uintptr_t ResolveNativeWindow(HWND hwnd) {
    NativeWindowResolver resolver;
    {
        std::lock_guard<std::mutex> lock(TheSettings().lock);
        resolver = TheSettings().resolver;
    }
    return resolver && hwnd ? resolver(hwnd) : 0;
}

void SetNativeWindowPlacer(NativeWindowPlacer placer) {
    std::lock_guard<std::mutex> lock(TheSettings().lock);
    TheSettings().placer = std::move(placer);
}

bool HasNativeWindowPlacer() {
    std::lock_guard<std::mutex> lock(TheSettings().lock);
    return static_cast<bool>(TheSettings().placer);
}

void PlaceNativeWindow(HWND owner, long left, long top, long width, long height, bool visible) {
    NativeWindowPlacer placer;
    {
        std::lock_guard<std::mutex> lock(TheSettings().lock);
        placer = TheSettings().placer;
    }
    if (placer && owner)
        placer(owner, left, top, width, height, visible);
}
