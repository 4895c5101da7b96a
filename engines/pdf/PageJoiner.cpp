#include "engines/pdf/PageJoiner.h"

#include "engines/pdf/Reflow.h"

#include <algorithm>
#include <utility>

namespace quillow::pdf {

namespace {

/// Pages after which the length of the text is estimated.
constexpr std::uint64_t kSample = 16;
/// Longer texts grow as they come.
constexpr std::size_t kMostReserved = std::size_t{16} << 20;

} // namespace

bool PageJoiner::add(PageOutcome page) {
    if (length_ > longestText_) {
        leaveOut(1, "the text is too long");
        return false;
    }
    loss_.charactersDecoded += page.loss.charactersDecoded;
    loss_.charactersWithoutUnicode += page.loss.charactersWithoutUnicode;
    loss_.partsSkipped += page.loss.partsSkipped;
    length_ += page.text.size() + 1;
    if (reflow_ == Reflow::joinLines) {
        ++pagesRead_;
        ++(page.text.empty() ? loss_.pagesWithoutText : pagesWithText_);
        pages_.push_back(std::move(page));
        return true;
    }
    // With page marks, every page has its mark, which ends the page's last line. Without them, empty pages leave
    // nothing.
    if (marks_ == PageMarks::formFeed && pagesRead_ > 0) {
        if (!text_.empty() && text_.back() == '\n') text_.pop_back();
        text_.push_back('\f');
    }
    ++pagesRead_;
    if (page.text.empty()) {
        ++loss_.pagesWithoutText;
        return true;
    }
    ++pagesWithText_;
    text_ += page.text;
    if (pagesRead_ == kSample) reserve();
    return true;
}

/// Memory that is not used is never touched, so that a text that is shorter than expected costs nothing.
void PageJoiner::reserve() {
    const std::size_t whole = text_.size() / kSample * expected_;
    text_.reserve(std::min(whole + whole / 4, kMostReserved));
}

void PageJoiner::leaveOut(std::size_t pages, std::string_view why) {
    if (pages == 0) return;
    loss_.partsSkipped += pages;
    if (why_.empty()) why_ = why;
}

Extraction PageJoiner::finish(std::uint64_t pages) && {
    Extraction extraction;
    extraction.loss = loss_;
    extraction.pages = pages;
    if (pagesRead_ == 0) {
        extraction.reason = Reason::damaged;
        extraction.detail = "no page can be read";
    } else if (pagesWithText_ == 0) {
        extraction.reason = Reason::noTextLayer;
        extraction.detail = "the pages hold no characters";
    } else {
        extraction.reason = loss_.partsSkipped > 0 ? Reason::partial : Reason::ok;
        extraction.detail = why_;
        if (loss_.partsSkipped > 0 && why_.empty()) extraction.detail = "some parts of pages are damaged";
        if (reflow_ == Reflow::joinLines) text_ = reflowed(pages_, marks_);
        if (text_.empty() || text_.back() != '\n') text_.push_back('\n');
        extraction.text = std::move(text_);
    }
    return extraction;
}

} // namespace quillow::pdf
