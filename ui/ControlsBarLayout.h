// Where the transport bar puts its eight controls for a given width: one
// row when everything fits, else sliders above and buttons below, each row
// right-aligned while it fits and left-aligned when it does not.
#pragma once
#include <QRect>
#include <array>

// The controls in the order of their ids, 1001 to 1008.
enum BarControl {
    kHideLeft,
    kStop,
    kPause,
    kMute,
    kProgressLabel,
    kProgressSlider,
    kVolumeLabel,
    kVolumeSlider,
    kBarControlCount
};

using BarRects = std::array<QRect, kBarControlCount>;

// `model` holds each control's size and its place in the one-row model of
// the bar; the result keeps the sizes, and `height` receives the height the
// bar asks for.
BarRects LayoutBar(const BarRects& model, int width, int* height);
