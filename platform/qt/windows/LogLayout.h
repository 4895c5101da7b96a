// The layout of the message log: space between its entries, the further lines of an entry indented, and breaks at
// blanks. Qt alone would break a path after a slash although the line has a blank before it.
#pragma once

#include <QPlainTextDocumentLayout>

namespace quillow {

class LogLayout final : public QPlainTextDocumentLayout {
public:
    static constexpr qreal kBetweenEntries = 4;

    /// Lines are as wide as the viewport of the view that shows the document.
    LogLayout(QTextDocument* document, const QWidget& viewport);

    [[nodiscard]] QRectF blockBoundingRect(const QTextBlock& block) const override;

protected:
    void documentChanged(int from, int charsRemoved, int charsAdded) override;

private:
    void layOut(QTextBlock block) const;
    void tellSize() const;

    const QWidget& viewport_;
    mutable bool isTelling_ = false;
};

} // namespace quillow
