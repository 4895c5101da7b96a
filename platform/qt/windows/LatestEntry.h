// The log's last message, shown while the log is hidden: after a drop also with what the message leaves out, such as
// "1 not converted", and a mark if anything failed. A click opens the log.
#pragma once

#include "platform/qt/controls/ElidedLabel.h"

#include <functional>

namespace quillow {

class LatestEntry final : public ElidedLabel {
public:
    explicit LatestEntry(QWidget* parent = nullptr);

    /// `message` is empty if there is no entry.
    void setEntry(const QString& message);
    /// The remark is not elided while there is room for it. `isFailure` shows the mark.
    void setRemark(const QString& remark, bool isFailure);
    [[nodiscard]] const QString& remark() const { return remark_; }
    [[nodiscard]] bool hasMark() const { return isFailure_; }
    void setAction(std::function<void()> action) { action_ = std::move(action); }

    [[nodiscard]] QString shownText() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void tell();
    [[nodiscard]] int markWidth() const;
    [[nodiscard]] QString tail() const; ///< the remark after a dot
    [[nodiscard]] int tailWidth() const;

    QString remark_;
    bool isFailure_ = false;
    std::function<void()> action_;
};

} // namespace quillow
