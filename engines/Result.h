// What a step of an engine returns if it can fail: the value, or the reason why there is none.
#pragma once

#include "engines/Extraction.h"

#include <cassert>
#include <string>
#include <utility>
#include <variant>

namespace quillow {

/// Why a document, or a part of one, could not be read.
struct Failure {
    Reason reason = Reason::damaged;
    std::string detail; ///< a short phrase for the user
};

template <class Value>
class [[nodiscard]] Result {
public:
    Result(Value value) // NOLINT(google-explicit-constructor): a step ends with `return value;`
        : content_(std::in_place_index<0>, std::move(value)) {}
    Result(Failure failure) // NOLINT(google-explicit-constructor): or with `return Failure{...};`
        : content_(std::in_place_index<1>, std::move(failure)) {}

    [[nodiscard]] bool ok() const { return content_.index() == 0; }
    explicit operator bool() const { return ok(); }

    /// Call it only if ok().
    [[nodiscard]] Value& value() {
        assert(ok());
        return *std::get_if<0>(&content_);
    }
    [[nodiscard]] const Value& value() const {
        assert(ok());
        return *std::get_if<0>(&content_);
    }
    /// Call it only if not ok().
    [[nodiscard]] const Failure& failure() const {
        assert(!ok());
        return *std::get_if<1>(&content_);
    }

private:
    std::variant<Value, Failure> content_;
};

} // namespace quillow
