// Port: the system's generator of pseudo-random numbers.
#pragma once

#include <cstdint>

namespace quillow {

class RandomGenerator {
public:
    virtual ~RandomGenerator() = default;
    /// Seeds the generator: the same number gives the same sequence.
    virtual void seed(std::uint32_t number) = 0;
    /// The next number of the sequence, from 0 to 2147483647.
    [[nodiscard]] virtual std::int64_t next() = 0;
};

} // namespace quillow
