// Decrypts streams and applies their filters (ISO 32000-2, 7.3.8.2, 7.4, 7.6.3).
#pragma once

#include "engines/pdf/Limits.h"
#include "engines/pdf/crypt/Decryption.h"
#include "engines/pdf/filters/Filter.h"
#include "engines/pdf/syntax/Document.h"
#include "text/ByteBuffer.h"

#include <array>

namespace quillow::pdf {

/// Filters of one stream; real ones have up to three.
inline constexpr std::size_t kMaximumFilters = 16;

/// Where entries of a stream's dictionary lead to that are references.
class References {
public:
    virtual ~References() = default;
    /// The object itself or, if it is a reference, what it leads to.
    [[nodiscard]] virtual Object resolve(const Object& object) = 0;
};

/// For the streams that are read before any object can be looked up.
class NoReferences final : public References {
public:
    [[nodiscard]] Object resolve(const Object& object) override {
        return object.type() == Object::Type::reference ? Object() : object;
    }
};

/// The filters of a stream in the order in which they are applied.
struct FilterChain {
    struct Step {
        FilterName filter = FilterName::flate;
        PredictorParameters parameters;
    };
    std::array<Step, kMaximumFilters> steps;
    std::size_t count = 0;
    std::string_view cryptFilter; ///< the name from a Crypt filter (7.4.10); empty if there is none
    bool isKnown = true;          ///< false if a filter is unknown, or they are too many
    bool isImage = false;         ///< one of the filters is for pictures
};
[[nodiscard]] FilterChain filtersOf(const Dictionary& dictionary, References& references);

class StreamDecoder {
public:
    /// The bytes that may still be decoded.
    explicit StreamDecoder(std::size_t bytesLeft)
        : limit_(bytesLeft)
        , bytesLeft_(bytesLeft) {}

    /// The result is a view of `out`, of the file, or empty. `decryption` is null for what is not encrypted.
    [[nodiscard]] StreamBytes decode(const StreamContent& stream, References& references, const Decryption* decryption,
                                     text::ByteBuffer& out);

    /// Whether all streams are empty from now on.
    [[nodiscard]] bool isExhausted() const { return bytesLeft_ < kLeastDecoded; }

    /// From 0 to 1.
    [[nodiscard]] double usedShare() const {
        return isExhausted() ? 1 : static_cast<double>(limit_ - bytesLeft_) / static_cast<double>(limit_);
    }

private:
    [[nodiscard]] StreamBytes apply(const FilterChain& chain, StreamBytes bytes, std::size_t limit,
                                    text::ByteBuffer* to, text::ByteBuffer* other);

    std::size_t limit_;
    std::size_t bytesLeft_;
    FilterDecoder filters_;
    text::ByteBuffer scratch_; ///< what is between two filters
};

} // namespace quillow::pdf
