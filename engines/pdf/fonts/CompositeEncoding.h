// The /Encoding of a composite font: a predefined CMap or an embedded one, which may be based on others (ISO 32000-2,
// 9.7.5).
#pragma once

#include "engines/pdf/fonts/CodeReader.h"
#include "engines/pdf/fonts/FontResources.h"
#include "engines/pdf/fonts/PredefinedCMaps.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quillow::pdf {

class CompositeEncoding {
public:
    /// CMaps that are based on one another; more are left out, and so are cycles.
    static constexpr std::size_t kMaximumChain = 8;

    /// `entry` is the value of /Encoding. What is no CMap counts as Identity-H.
    CompositeEncoding(FontResources& resources, const Object& entry);

    [[nodiscard]] CodeReader reader() const;
    [[nodiscard]] bool isVertical() const { return isVertical_; }
    /// 0 if there is none.
    [[nodiscard]] std::uint32_t cidOf(std::uint32_t code) const;
    /// The character that a code is by itself, as in UniGB-UTF16-H; 0 if none.
    [[nodiscard]] char32_t characterOf(std::uint32_t code) const;
    /// The collection of the CIDs; unknown if only the font says it.
    [[nodiscard]] CharacterCollection collection() const;

private:
    void follow(FontResources& resources, const Object& entry);
    void followName(std::string_view name);
    [[nodiscard]] CharacterCode codeOfPredefined(std::uint32_t value) const;

    std::vector<const CMap*> embedded_;          ///< each based on the next
    const PredefinedCMap* predefined_ = nullptr; ///< on which the last one is based
    bool isIdentity_ = false;                    ///< a code is a CID unless an embedded CMap says otherwise
    bool isVertical_ = false;
};

} // namespace quillow::pdf
