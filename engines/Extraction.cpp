#include "engines/Extraction.h"

namespace quillow {

std::string_view reasonName(Reason reason) {
    switch (reason) {
    case Reason::ok: return "ok";
    case Reason::okEmpty: return "ok-empty";
    case Reason::noTextLayer: return "no-text-layer";
    case Reason::partial: return "partial";
    case Reason::wrongType: return "wrong-type";
    case Reason::damaged: return "damaged";
    case Reason::locked: return "locked";
    case Reason::tooLarge: return "too-large";
    case Reason::timeout: return "timeout";
    case Reason::outOfMemory: return "out-of-memory";
    case Reason::crashed: return "crashed";
    case Reason::unreadable: return "unreadable";
    case Reason::unwritable: return "unwritable";
    case Reason::skipped: return "skipped";
    }
    return "damaged";
}

std::optional<Reason> reasonNamed(std::string_view name) {
    for (int i = 0; i <= static_cast<int>(Reason::skipped); ++i)
        if (reasonName(static_cast<Reason>(i)) == name) return static_cast<Reason>(i);
    return std::nullopt;
}

} // namespace quillow
