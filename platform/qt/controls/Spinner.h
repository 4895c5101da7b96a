// The progress indicator: a turning arc. It occupies its place in the window even while it is invisible.
#pragma once

#include "platform/ProgressIndicator.h"

#include <QBasicTimer>
#include <QWidget>

namespace quillow {

class Spinner final : public QWidget, public ProgressIndicator {
public:
    /// The names are for assistive tools: while it rests and while it turns.
    explicit Spinner(QString idleName = QStringLiteral("Not converting"),
                     QString busyName = QStringLiteral("Converting"), QWidget* parent = nullptr);

    void startAnimation() override;
    void stopAnimation() override;
    [[nodiscard]] bool isAnimated() const { return timer_.isActive(); }
    /// Advances one step and repaints at once, for callers that wait without an event loop.
    void turnNow();

    [[nodiscard]] QSize sizeHint() const override { return {18, 18}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    const QString idleName_;
    const QString busyName_;
    QBasicTimer timer_;
    int step_ = 0;
};

} // namespace quillow
