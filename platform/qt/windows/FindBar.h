// The bar below the message log that finds a text in it. A found text becomes the log's selection, so that no attribute
// of a log line changes.
#pragma once

#include <QWidget>

class QBoxLayout;
class QLabel;
class QLineEdit;

namespace quillow {

class QtLogView;

/// From where a search goes: from the selection itself, from behind it, or from its start backwards.
enum class FindStep { here, next, previous };

class FindBar final : public QWidget {
public:
    explicit FindBar(QtLogView& logView);

    /// Shows the bar with the keyboard focus in its field. While the log is hidden, the focus waits for it.
    void open();
    /// The Tab key goes from the log to the bar. To be called when the bar is in the log's window.
    void takePlaceInTabOrder();
    /// Selects a place of the field's text in the log, after the last the first and before the first the last. If there
    /// is none, the bar appears and says so. An empty field is offered for input instead.
    void find(FindStep step);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void addButton(const QString& title, const QString& description, void (FindBar::*action)());
    void findNext() { find(FindStep::next); }
    void findPrevious() { find(FindStep::previous); }
    void findTyped();
    void closeBar();
    void takeFocus();
    void say(const QString& note);
    /// Puts the note beside the field, or below it if that leaves too little of the field.
    void placeNote();
    /// Ignores case. Whether the log has the text.
    [[nodiscard]] bool select(const QString& text, FindStep step);

    QtLogView& logView_;
    QBoxLayout* line_;
    QBoxLayout* rows_;
    QLineEdit* field_;
    QLabel* note_;
    bool isFocusDue_ = false;
};

} // namespace quillow
