#include "ui/ControlsBarLayout.h"

#include <initializer_list>

namespace {

constexpr int kGap = 6;

// Places the controls from the right edge leftwards, the first one
// rightmost.
void PlaceFromRight(BarRects& rects, std::initializer_list<BarControl> controls, int right, int y) {
    for (BarControl c : controls) {
        right -= rects[c].width();
        rects[c].moveTo(right, y);
        right -= kGap;
    }
}

// Places the controls from the left edge rightwards, the first one leftmost.
void PlaceFromLeft(BarRects& rects, std::initializer_list<BarControl> controls, int left, int y) {
    for (BarControl c : controls) {
        rects[c].moveTo(left, y);
        left += rects[c].width() + kGap;
    }
}

} // namespace

BarRects LayoutBar(const BarRects& model, int width, int* height) {
    BarRects rects = model;
    const int sliders = model[kVolumeSlider].width() + model[kVolumeLabel].width() +
                        model[kProgressSlider].width() + model[kProgressLabel].width() + 24;
    const int buttons = model[kHideLeft].width() + model[kStop].width() + model[kPause].width() +
                        model[kMute].width() + 30;
    const int y = model[kHideLeft].y();
    const int right = width - kGap;
    const auto sliderRow = {kVolumeSlider, kVolumeLabel, kProgressSlider, kProgressLabel};
    const auto buttonRow = {kMute, kPause, kStop, kHideLeft};

    if (sliders + buttons < width) {
        PlaceFromRight(rects,
                       {kVolumeSlider, kVolumeLabel, kProgressSlider, kProgressLabel, kMute, kPause,
                        kStop, kHideLeft},
                       right, y);
    } else {
        if (sliders < width)
            PlaceFromRight(rects, sliderRow, right, y);
        else
            PlaceFromLeft(rects, {kProgressLabel, kProgressSlider, kVolumeLabel, kVolumeSlider},
                          kGap, y);
        const int lower = y + model[kVolumeSlider].height();
        if (buttons < width)
            PlaceFromRight(rects, buttonRow, right, lower);
        else
            PlaceFromLeft(rects, {kHideLeft, kStop, kPause, kMute}, kGap, lower);
    }
    if (height)
        *height = rects[kHideLeft].bottom() + 1 + kGap;
    return rects;
}
