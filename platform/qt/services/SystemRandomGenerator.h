// The C library's generator, srandom and random of POSIX: one sequence for the whole process.
#pragma once

#include "platform/RandomGenerator.h"

#include <cstdlib>

namespace quillow {

class SystemRandomGenerator final : public RandomGenerator {
public:
    void seed(std::uint32_t seed) override { ::srandom(seed); }
    [[nodiscard]] std::int64_t next() override { return ::random(); }
};

} // namespace quillow
