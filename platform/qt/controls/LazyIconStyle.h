// The desktop's style, but with an icon that is read when it is first painted.
#pragma once

#include <QProxyStyle>

namespace quillow {

/// Each menu bar asks the style for the icon of the button that it shows when it is too narrow. The icon is a file, so
/// Qt would load all its libraries for images at each start, for a button that is hardly ever seen.
class LazyIconStyle final : public QProxyStyle {
public:
    [[nodiscard]] QIcon standardIcon(StandardPixmap icon, const QStyleOption* option = nullptr,
                                     const QWidget* widget = nullptr) const override;
};

} // namespace quillow
