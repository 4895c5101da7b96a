// A generator that returns the values that the test sets, and records its seeds.
#pragma once

#include "platform/RandomGenerator.h"

#include <vector>

namespace quillow {

class FakeRandomGenerator final : public RandomGenerator {
public:
    void seed(std::uint32_t seed) override { seeds_.push_back(seed); }
    [[nodiscard]] std::int64_t next() override { return next_; }

    void setNext(std::int64_t next) { next_ = next; }
    [[nodiscard]] const std::vector<std::uint32_t>& seeds() const { return seeds_; }

private:
    std::vector<std::uint32_t> seeds_;
    std::int64_t next_ = 0;
};

} // namespace quillow
