// A pane of the preferences. Its size is fixed and the font is not, so contents that are too tall are scrolled.
#pragma once

#include <QScrollArea>

namespace quillow {

class ScrolledPane : public QScrollArea {
public:
    explicit ScrolledPane(QWidget* parent = nullptr);

    /// The widget that gets the pane's layout.
    [[nodiscard]] QWidget& contents() const { return *widget(); }
    /// Arranges the contents for a pane that may be as large as this. Afterwards leastWidth() is the width it needs.
    virtual void arrange(const QSize& room);
    [[nodiscard]] int leastWidth() const { return leastWidth_; }
    virtual void focusFirst() = 0;

    [[nodiscard]] QSize minimumSizeHint() const override { return {leastWidth_, 0}; }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void keepHeightForWidth();
    int leastWidth_ = 0;
};

} // namespace quillow
