// The message log's text view. The exact text is kept beside the widget, whose own getters change some characters; each unit of
// it has its place in the widget's document, so that positions are the same in both.
#pragma once

#include "platform/LogView.h"

#include <QPlainTextEdit>

#include <optional>

namespace quillow {

class QtLogView final : public QPlainTextEdit, public LogView {
public:
    explicit QtLogView(QWidget* parent = nullptr);

    [[nodiscard]] QString string() const override { return text_; }
    [[nodiscard]] qsizetype length() const override { return text_.size(); }
    void replaceCharactersInRange(const TextRange& range, const QString& text) override;
    void addForegroundColor(const Color& color, const TextRange& range) override;
    void setNeedsDisplay() override;
    void scrollRangeToVisible(const TextRange& range) override;

    /// The colour that was given to the character; nothing for one without.
    [[nodiscard]] std::optional<Color> foregroundColorAt(qsizetype position) const;

protected:
    /// What is copied is the exact text, too.
    QMimeData* createMimeDataFromSelection() const override;
    /// The end stays in sight when it was.
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] bool isAtEnd() const;
    [[nodiscard]] TextRange clamped(const TextRange& range) const;
    [[nodiscard]] QTextCursor cursorOver(const TextRange& range) const;

    QString text_;
};

} // namespace quillow
