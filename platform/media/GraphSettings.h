// Choices the hosting program makes for every graph: which elements render
// sound and picture, and how a window handle maps to a native window that
// the picture can be drawn into.
#pragma once
#include <cstdint>
#include <functional>
#include <string>

#include "platform/base/Window.h"

// A pipeline description of the element that plays sound (or draws the
// picture). Empty restores the default: ORVEX_AUDIO_SINK / ORVEX_VIDEO_SINK
// when set, else the system's automatic sinks (with no display, the picture
// goes to a clock-synced null sink).
void SetGraphAudioSink(const std::string& description);
void SetGraphVideoSink(const std::string& description);
std::string GraphAudioSink();
std::string GraphVideoSink();

// How many times longer than asked a wait for a state change lasts:
// ORVEX_STATE_WAIT_SCALE when set to a number from 1 to 20, else 1. The
// program always waits as asked; test programs, which run two at a time and
// under the sanitizers on small machines, set it so that a start that is
// merely slow there is not taken for a failed one.
int GraphStateWaitScale();

// Gives the native window id behind a handle, or 0 when it has none.
using NativeWindowResolver = std::function<uintptr_t(HWND)>;
void SetNativeWindowResolver(NativeWindowResolver resolver);
uintptr_t ResolveNativeWindow(HWND hwnd);

// Places the picture's own native window inside its owner (client
// coordinates) and shows or hides it, as the owner's toolkit does it; called
// on the thread that steers the graph, never from the pipeline's threads.
// With a placer installed the sink fills that window, and no render
// rectangle is set: not every sink honours one.
using NativeWindowPlacer =
    std::function<void(HWND owner, long left, long top, long width, long height, bool visible)>;
void SetNativeWindowPlacer(NativeWindowPlacer placer);
bool HasNativeWindowPlacer();
void PlaceNativeWindow(HWND owner, long left, long top, long width, long height, bool visible);
