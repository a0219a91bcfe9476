#pragma once
#include <cstdint>
#include <vector>

namespace sample {

/// What a random sequence is for: each purpose has its own, so that a choice added to one moves nothing in
/// another.
enum class Purpose : std::uint64_t { Person = 1, Career, Address, Family, Shikaku, Wage, Hyouka, RunInput };

/// A random sequence of a person for one purpose, the same on every machine (SplitMix64 with a fixed seed).
class Random {
  public:
    Random(int person, Purpose purpose)
        : state_(mixed(0x6D696E74ULL + mixed(static_cast<std::uint64_t>(person)) +
                       static_cast<std::uint64_t>(purpose) * 0xD1B54A32D192ED03ULL)) {}

    int below(int limit) { return static_cast<int>((next() >> 33) % static_cast<std::uint64_t>(limit)); }
    int between(int first, int last) { return first + below(last - first + 1); }
    bool chance(int percent) { return below(100) < percent; }
    template <typename T>
    const T& pick(const std::vector<T>& list) {
        return list[static_cast<std::size_t>(below(static_cast<int>(list.size())))];
    }

  private:
    static std::uint64_t mixed(std::uint64_t z) {
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }
    std::uint64_t next() { return mixed(state_ += 0x9E3779B97F4A7C15ULL); }

    std::uint64_t state_;
};

}  // namespace sample
