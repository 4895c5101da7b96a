// The colour of texts that are fainter than the others: captions and remarks.
#pragma once

#include <QColor>
#include <QLabel>
#include <QPalette>

namespace quillow {

/// The text colour mixed with its background, in any theme. In a theme of high contrast it is the text colour itself.
[[nodiscard]] QColor quietColor(const QPalette& palette);

/// Puts a label's text at the side where reading begins. Qt would align an English text to the left in every layout.
void alignToLayout(QLabel& label);

/// A quiet text that is broken into lines. It follows changes of the theme.
class NoteLabel final : public QLabel {
public:
    explicit NoteLabel(const QString& text, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void applyColor();
    bool isApplying_ = false;
};

} // namespace quillow
