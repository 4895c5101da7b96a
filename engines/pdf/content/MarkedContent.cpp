#include "engines/pdf/content/MarkedContent.h"

#include <utility>

namespace quillow::pdf {

void MarkedContent::clear() {
    current_ = {};
    outer_.clear();
    ignored_ = 0;
    floor_ = 0;
    actualText_.clear();
    actualTexts_ = 0;
}

void MarkedContent::begin(const Sequence& sequence) {
    if (outer_.size() == kMaximumDepth) {
        ++ignored_;
        return;
    }
    outer_.push_back(current_);
    if (sequence.id != Run::kNoMark) current_.id = sequence.id;
    if (sequence.isRunning) current_.flags |= kRunning;
    if (sequence.isHidden) current_.isHidden = true;
    if (sequence.actualText != nullptr && current_.actualText == 0) {
        current_.flags |= kActualText;
        current_.actualText = ++actualTexts_;
        actualText_ = *sequence.actualText;
    }
}

void MarkedContent::end() {
    if (depth() <= floor_) return;
    if (ignored_ > 0) {
        --ignored_;
        return;
    }
    current_ = outer_.back();
    outer_.pop_back();
}

std::u32string MarkedContent::takeActualText() {
    return std::exchange(actualText_, {});
}

void MarkedContent::endTo(std::size_t depth) {
    while (this->depth() > depth && this->depth() > floor_)
        end();
}

} // namespace quillow::pdf
