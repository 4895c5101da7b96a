// The encryption of Type 1 fonts (Adobe Type 1 Font Format 1.1, 7): a fixed key, meant to keep casual readers out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::pdf {

class Type1Cipher {
public:
    static constexpr std::uint16_t kProgramKey = 55665;
    static constexpr std::uint16_t kCharstringKey = 4330;

    explicit Type1Cipher(std::uint16_t key)
        : key_(key) {}

    [[nodiscard]] std::uint8_t decrypt(std::uint8_t cipher) {
        const auto plain = static_cast<std::uint8_t>(cipher ^ (key_ >> 8));
        key_ = static_cast<std::uint16_t>((cipher + key_) * kFactor + kAddend);
        return plain;
    }

private:
    static constexpr unsigned kFactor = 52845;
    static constexpr unsigned kAddend = 22719;

    std::uint16_t key_;
};

} // namespace quillow::pdf
