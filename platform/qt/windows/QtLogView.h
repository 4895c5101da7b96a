// The message log's text view. The exact text is stored separately, because the widget's own getters change some
// characters. Each unit of the text has one unit in the widget's document, so positions are the same in both.
//
// A path in an entry can be pressed, dragged and copied. No attribute says so: the text under the pointer is looked at.
#pragma once

#include "platform/LogView.h"
#include "platform/qt/windows/LogPaths.h"

#include <QPlainTextEdit>

#include <functional>
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

    struct PathActions {
        std::function<void(const QString& path)> open;
        std::function<void(const QString& path)> show; ///< in the file manager
    };
    void setPathActions(const PathActions& actions) { pathActions_ = actions; }

    /// The colour that was set for the character; std::nullopt if none was.
    [[nodiscard]] std::optional<Color> foregroundColorAt(qsizetype position) const;

protected:
    /// The clipboard also gets the exact text.
    QMimeData* createMimeDataFromSelection() const override;
    /// If the end was visible, it stays visible.
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] std::optional<LogPath> pathAt(const QPoint& place) const;
    void hover(const std::optional<LogPath>& path);
    void drag(const LogPath& path);
    void open(const LogPath& path) const;
    /// Moves the text down so far that the last line is at the bottom edge, if the log is longer than the view.
    void alignEnd();
    /// Below the last entry, when the end is shown.
    [[nodiscard]] int spaceBelowEnd() const;
    /// Shows the end below so much space.
    void showEndBelow(int space);
    [[nodiscard]] bool isAtEnd() const;
    [[nodiscard]] TextRange clamped(const TextRange& range) const;
    [[nodiscard]] QTextCursor cursorOver(const TextRange& range) const;

    QString text_;
    PathActions pathActions_;
    std::optional<LogPath> hovered_;
    std::optional<LogPath> pressed_;
    QPoint pressPlace_;
    bool isAligning_ = false;
};

} // namespace quillow
