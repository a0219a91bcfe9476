#pragma once
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <map>
#include <memory>
#include <vector>

/// What the measurements share: a company of each size is made once, and work is timed beside its yardstick.
namespace measured {

template <typename Company>
Company& company(int employees) {
    static std::map<int, std::unique_ptr<Company>> made;
    auto& entry = made[employees];
    if (!entry) entry = std::make_unique<Company>(employees);
    return *entry;
}

template <typename Work>
double seconds(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> samples) {
    const auto middle = samples.begin() + std::ptrdiff_t(samples.size() / 2);
    std::nth_element(samples.begin(), middle, samples.end());
    return *middle;
}

/// Own work and floor in turns.
template <typename Own, typename Bare>
void compare(benchmark::State& state, const Own& own, const Bare& bare) {
    std::vector<double> ours, floor;
    for (auto _ : state) {
        ours.push_back(seconds(own));
        floor.push_back(seconds(bare));
        state.SetIterationTime(ours.back());
    }
    state.counters["per_employee_us"] = median(ours) * 1e6 / double(state.range(0));
    state.counters["floor_ms"] = median(floor) * 1e3;
    state.counters["times_floor"] = median(ours) / median(floor);
}

}  // namespace measured
