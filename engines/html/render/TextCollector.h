// The rendered text collection of the HTML Standard ("get the text", section 3.2.7) together with the
// white-space processing of CSS Text 3, section 4. The renderer adds what it finds in document order; `finish`
// returns the text.
#pragma once

#include "engines/html/css/Style.h"
#include "text/TextSink.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillow::html {

/// The state of an inline formatting context: it decides whether the next space is visible.
struct LineState {
    enum class Space : std::uint8_t { none, visible, hidden };
    bool atStart = true;         ///< at the line's start, where collapsible white space is removed
    Space pending = Space::none; ///< a collapsed space, visible only if something follows it on the line
    bool pendingBreak = false;   ///< the pending space comes from text with a line break
    std::size_t opportunity = static_cast<std::size_t>(-1); ///< size of the text at the last break opportunity
    /// The offset after a written space that is removed if the line ends here; 0 if there is none.
    std::size_t removable = 0;
};

class TextCollector {
public:
    explicit TextCollector(std::size_t expectedBytes) { sink_.reserve(expectedBytes); }

    /// Adds a text node's characters.
    void text(std::string_view characters, WhiteSpace mode, Visibility visibility) {
        if (mode == WhiteSpace::preserve) {
            preserved(characters, visibility);
        } else {
            collapsible(characters, mode, visibility);
        }
    }

    /// "Required line break count". Adjacent counts do not add up: the largest one counts. At the start and the end
    /// of the text they have no effect.
    void requireLineBreaks(std::size_t count) {
        if (started_ && count > required_) required_ = count;
    }
    /// Writes a line end or TAB that is not part of a text node.
    void literal(char character);
    /// Writes characters that are not subject to white-space processing.
    void insert(std::string_view characters);

    /// Ends the line: collapsible space at its end and at the start of the next line is removed.
    void endLine();
    /// Adds a box that acts like a letter in the line: it keeps the space before it, but writes no
    /// character of its own.
    void atomicBox();
    /// Marks a place where the line may break, as a zero width space does, but writes nothing.
    void breakOpportunity() {
        if (line_.pending == LineState::Space::none) line_.opportunity = sink_.size();
    }

    /// Writes the pending collapsed space now. It is removed again if the line ends after it.
    void writePending();

    /// Begins content with lines of its own inside of a line, such as an inline block. Returns the state of the
    /// outer line for `leaveContent`.
    [[nodiscard]] LineState enterContent();
    /// The same for content that is out of the flow, such as a float: first does `writePending`.
    [[nodiscard]] LineState enterOutOfFlow();
    void leaveContent(const LineState& outer) {
        line_ = outer;
        boxEnd_ = sink_.size();
    }

    /// Holds a list item's marker back until the next visible characters are written. If there are none,
    /// `dropMarker` discards it.
    void holdMarker(std::string_view marker) { heldMarkers_ += marker; }
    [[nodiscard]] std::size_t heldMarkerBytes() const { return heldMarkers_.size(); }
    void dropMarker(std::size_t bytesBefore) {
        if (heldMarkers_.size() > bytesBefore) heldMarkers_.resize(bytesBefore);
    }

    /// Grows whenever characters are written.
    [[nodiscard]] std::size_t written() const { return sink_.size(); }

    [[nodiscard]] std::string finish() &&;

private:
    void beforeWriting() {
        line_.removable = 0;
        if (required_ > 0 || !started_ || !heldMarkers_.empty()) writeWhatIsHeld();
    }
    void writeWhatIsHeld();
    void write(std::string_view characters);
    void collapsible(std::string_view characters, WhiteSpace mode, Visibility visibility);
    void preserved(std::string_view characters, Visibility visibility);
    void collapse(std::string_view whiteSpace, WhiteSpace mode, Visibility visibility);
    void flushPending(std::string_view following);
    [[nodiscard]] bool breakVanishes(std::string_view following) const;

    text::TextSink sink_;
    LineState line_;
    std::size_t boxEnd_ = static_cast<std::size_t>(-1); ///< size of the text at the end of the last box in a line
    std::size_t required_ = 0;
    bool started_ = false;
    std::vector<std::size_t> removed_; ///< offsets of the spaces that `finish` removes
    struct Space {
        std::size_t place;
        std::size_t breaksBefore;
        std::size_t breaksAfter;
        [[nodiscard]] std::size_t end() const { return place + 1 + breaksAfter; }
    };
    /// Spaces that `writePending` wrote after required line breaks, or where those after such a space end.
    std::vector<Space> betweenBreaks_;
    std::string heldMarkers_;
};

} // namespace quillow::html
