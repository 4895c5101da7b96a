#include "cli/results/ResultRecord.h"

#include "text/Utf8.h"

#include <array>
#include <cmath>
#include <nlohmann/json.hpp>

namespace quillow::cli {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kBase64Digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string base64Of(std::string_view bytes) {
    std::string out;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i)
            group = group << 8U | (at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0U);
        for (std::size_t i = 0; i < 4; ++i)
            out.push_back(at + i <= bytes.size() ? kBase64Digits[group >> (18 - 6 * i) & 0x3FU] : '=');
    }
    return out;
}

std::optional<std::string> bytesOfBase64(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    std::string out;
    for (std::size_t at = 0; at < text.size(); at += 4) {
        std::uint32_t group = 0;
        std::size_t digits = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            const char c = text[at + i];
            const std::size_t digit = c == '=' ? std::string_view::npos : kBase64Digits.find(c);
            // Padding is at the end of the last group only, and leaves at least one byte.
            if (digit == std::string_view::npos && (c != '=' || at + 4 != text.size() || i < 2)) return std::nullopt;
            if (digit != std::string_view::npos && digits < i) return std::nullopt;
            if (digit != std::string_view::npos) ++digits;
            group = group << 6U | (digit == std::string_view::npos ? 0U : static_cast<std::uint32_t>(digit));
        }
        for (std::size_t i = 0; i + 1 < digits; ++i)
            out.push_back(static_cast<char>(group >> (16 - 8 * i) & 0xFFU));
    }
    return out;
}

std::string withoutInvalidBytes(std::string_view bytes) {
    std::string out;
    while (!bytes.empty()) {
        const text::DecodedCodePoint decoded = text::decodeUtf8(bytes);
        text::appendUtf8(out, decoded.codePoint);
        bytes.remove_prefix(decoded.length);
    }
    return out;
}

std::string encodedName(std::string_view name) {
    return std::string(name) + "_b64";
}

void put(Json& object, const std::string& name, std::string_view bytes) {
    if (text::isValidUtf8(bytes)) {
        object[name] = bytes;
    } else {
        object[name] = withoutInvalidBytes(bytes);
        object[encodedName(name)] = base64Of(bytes);
    }
}

void put(Json& object, const std::string& name, const std::optional<std::string>& text) {
    if (text) {
        put(object, name, std::string_view(*text));
    } else {
        object[name] = nullptr;
    }
}

/// Reads members of an object. After a member that is missing or of another type, isWhole() is false.
class Members {
public:
    explicit Members(const Json& object)
        : object_(object) {}

    [[nodiscard]] bool isWhole() const { return isWhole_; }

    std::optional<std::string> textOrNothing(const std::string& name) {
        if (const auto encoded = object_.find(encodedName(name)); encoded != object_.end()) {
            std::optional<std::string> bytes =
                encoded->is_string() ? bytesOfBase64(encoded->get_ref<const std::string&>()) : std::nullopt;
            if (!bytes) isWhole_ = false;
            return bytes;
        }
        const auto found = object_.find(name);
        if (found != object_.end() && found->is_null()) return std::nullopt;
        if (found == object_.end() || !found->is_string()) {
            isWhole_ = false;
            return std::nullopt;
        }
        return found->get<std::string>();
    }

    std::string text(const std::string& name) {
        std::optional<std::string> found = textOrNothing(name);
        if (!found) isWhole_ = false;
        return std::move(found).value_or(std::string());
    }

    std::uint64_t number(const std::string& name) {
        const auto found = object_.find(name);
        if (found != object_.end() && found->is_number_unsigned()) return found->get<std::uint64_t>();
        isWhole_ = false;
        return 0;
    }

    double fraction(const std::string& name) {
        const auto found = object_.find(name);
        if (found != object_.end() && found->is_number()) return found->get<double>();
        isWhole_ = false;
        return 0;
    }

    Reason reason(const std::string& name) {
        const std::optional<Reason> found = reasonNamed(text(name));
        if (!found) isWhole_ = false;
        return found.value_or(Reason::damaged);
    }

private:
    const Json& object_;
    bool isWhole_ = true;
};

Json objectOf(const LossAccount& loss) {
    return {{"characters_decoded", loss.charactersDecoded},
            {"characters_without_unicode", loss.charactersWithoutUnicode},
            {"pages_without_text", loss.pagesWithoutText},
            {"parts_skipped", loss.partsSkipped}};
}

/// Microseconds are exact enough, and keep the line short.
double rounded(double milliseconds) {
    return std::round(milliseconds * 1000) / 1000;
}

} // namespace

std::string lineOf(const ResultRecord& record) {
    Json object;
    object["schema"] = kResultsSchema;
    put(object, "path", std::string_view(record.path));
    put(object, "output", record.output);
    object["status"] = reasonName(record.status);
    put(object, "detail", std::string_view(record.detail));
    object["pages"] = record.pages;
    object["characters"] = record.characters;
    object["text_bytes"] = record.textBytes;
    object["loss"] = objectOf(record.loss);
    put(object, "document_sha256", record.documentHash);
    put(object, "text_sha256", record.textHash);
    object["milliseconds"] = rounded(record.milliseconds);
    put(object, "engine", std::string_view(record.engine));
    return object.dump() + "\n";
}

std::optional<ResultRecord> recordOf(std::string_view line) {
    constexpr auto kNoCallback = nullptr;
    constexpr bool kThrow = false;
    const Json object = Json::parse(line.begin(), line.end(), kNoCallback, kThrow);
    if (!object.is_object()) return std::nullopt;
    Members members(object);
    const auto loss = object.find("loss");
    if (members.number("schema") != kResultsSchema || loss == object.end() || !loss->is_object()) return std::nullopt;
    ResultRecord record;
    record.path = members.text("path");
    record.output = members.textOrNothing("output");
    record.status = members.reason("status");
    record.detail = members.text("detail");
    record.pages = members.number("pages");
    record.characters = members.number("characters");
    record.textBytes = members.number("text_bytes");
    record.documentHash = members.textOrNothing("document_sha256");
    record.textHash = members.textOrNothing("text_sha256");
    record.milliseconds = members.fraction("milliseconds");
    record.engine = members.text("engine");
    Members losses(*loss);
    record.loss.charactersDecoded = losses.number("characters_decoded");
    record.loss.charactersWithoutUnicode = losses.number("characters_without_unicode");
    record.loss.pagesWithoutText = losses.number("pages_without_text");
    record.loss.partsSkipped = losses.number("parts_skipped");
    if (!members.isWhole() || !losses.isWhole()) return std::nullopt;
    return record;
}

} // namespace quillow::cli
