#include "platform/qt/controls/LazyIconStyle.h"

#include <QApplication>
#include <QIconEngine>

namespace quillow {
namespace {

class LazyIcon final : public QIconEngine {
public:
    explicit LazyIcon(QStyle::StandardPixmap icon)
        : icon_(icon) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override {
        read().paint(painter, place, Qt::AlignCenter, mode, state);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return read().pixmap(size, 1, mode, state);
    }
    [[nodiscard]] QIconEngine* clone() const override { return new LazyIcon(*this); }

private:
    /// Of the application's style now: the style that made this icon may be gone.
    [[nodiscard]] QIcon read() const {
        const QStyle* style = QApplication::style();
        const auto* lazy = dynamic_cast<const LazyIconStyle*>(style);
        return (lazy ? lazy->baseStyle() : style)->standardIcon(icon_);
    }

    QStyle::StandardPixmap icon_;
};

} // namespace

QIcon LazyIconStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    if (icon == SP_ToolBarHorizontalExtensionButton) return QIcon(new LazyIcon(icon));
    return QProxyStyle::standardIcon(icon, option, widget);
}

} // namespace quillow
