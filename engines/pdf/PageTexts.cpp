#include "engines/pdf/PageTexts.h"

#include "engines/pdf/OutcomeRows.h"

namespace quillow::pdf {

PageOutcome PageTexts::read(const PageNode& node) {
    PageOutcome outcome;
    outcome.loss.partsSkipped = reader_.read(node, page_).partsSkipped;
    outcome.loss.charactersDecoded = page_.text.size();
    outcome.loss.charactersWithoutUnicode = page_.charactersWithoutUnicode;
    if (dropsArtifacts_) dropRunningArtifacts(page_);
    tableCells_.find(node, page_);
    layOut(page_, layout_);
    if (reflow_ == Reflow::joinLines) {
        describeRows(layout_, outcome);
        return outcome;
    }
    text_.truncate(0);
    text_.append(layout_.text);
    outcome.text = text_.view();
    return outcome;
}

} // namespace quillow::pdf
