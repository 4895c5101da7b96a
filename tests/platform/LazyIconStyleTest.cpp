// The style with an icon that is read late.
#include "platform/qt/controls/LazyIconStyle.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace quillow {
namespace {

constexpr auto kOverflow = QStyle::SP_ToolBarHorizontalExtensionButton;
constexpr QSize kSize{16, 16};

QImage painted(const QIcon& icon) {
    QImage image(kSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    icon.paint(&painter, image.rect());
    return image;
}

TEST(LazyIconStyle, theIconIsTheOneOfTheStyleBelow) {
    const LazyIconStyle style;
    const QIcon late = style.standardIcon(kOverflow);
    const QIcon early = style.baseStyle()->standardIcon(kOverflow);
    ASSERT_FALSE(early.pixmap(kSize).isNull());
    EXPECT_EQ(late.pixmap(kSize).toImage(), early.pixmap(kSize).toImage());
    EXPECT_EQ(painted(late), painted(early));
}

TEST(LazyIconStyle, theIconOutlivesItsStyle) {
    QIcon icon;
    {
        const LazyIconStyle style;
        icon = style.standardIcon(kOverflow);
    }
    EXPECT_FALSE(icon.pixmap(kSize).isNull());
}

TEST(LazyIconStyle, otherIconsAreThoseOfTheStyleBelow) {
    const LazyIconStyle style;
    EXPECT_EQ(style.standardIcon(QStyle::SP_DialogCloseButton).pixmap(kSize).toImage(),
              style.baseStyle()->standardIcon(QStyle::SP_DialogCloseButton).pixmap(kSize).toImage());
}

} // namespace
} // namespace quillow
