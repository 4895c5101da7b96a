// The message log's text view. The exact text is stored separately, because the widget's own getters change some
// characters. Each unit of the text has one unit in the widget's document, so positions are the same in both.
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

    /// The colour that was set for the character; std::nullopt if none was.
    [[nodiscard]] std::optional<Color> foregroundColorAt(qsizetype position) const;

protected:
    /// The clipboard also gets the exact text.
    QMimeData* createMimeDataFromSelection() const override;
    /// If the end was visible, it stays visible.
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] bool isAtEnd() const;
    [[nodiscard]] TextRange clamped(const TextRange& range) const;
    [[nodiscard]] QTextCursor cursorOver(const TextRange& range) const;

    QString text_;
};

} // namespace quillow
