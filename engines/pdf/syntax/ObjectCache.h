// The indirect objects of a document that were read already.
#pragma once

#include "engines/pdf/syntax/Object.h"

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace quillow::pdf {

/// A place for each object number. Places are made in blocks when they are first used, because a file may number few
/// objects high.
class ObjectCache {
public:
    enum class State : std::uint8_t { unread, beingRead, read };
    struct Place {
        Object object;
        State state = State::unread;
    };

    /// A place keeps its address.
    [[nodiscard]] Place& at(std::uint32_t number) {
        if (number / kBlock >= blocks_.size()) blocks_.resize(number / kBlock + 1);
        std::unique_ptr<Block>& block = blocks_[number / kBlock];
        if (!block) block = std::make_unique<Block>();
        return (*block)[number % kBlock];
    }

private:
    static constexpr std::size_t kBlock = 64;
    using Block = std::array<Place, kBlock>;

    std::vector<std::unique_ptr<Block>> blocks_;
};

} // namespace quillow::pdf
