// Timing of a window action over several runs: the median and the worst.
#pragma once
#include <algorithm>
#include <chrono>
#include <vector>

struct Figures {
    double median;
    double worst;
};

// Runs `prepare` (not timed), then `action` (timed), `runs` times.
template <typename Prepare, typename Action>
Figures Measure(int runs, Prepare prepare, Action action) {
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        prepare();
        const auto start = std::chrono::steady_clock::now();
        action();
        const auto end = std::chrono::steady_clock::now();
        times.push_back(std::chrono::duration<double, std::milli>(end - start).count());
    }
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], times.back()};
}
