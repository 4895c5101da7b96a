#include "platform/qt/windows/DisclosedContent.h"

namespace quillow {

DisclosedContent::DisclosedContent(QWidget* upper, QWidget* lower, int smallHeight, int bigHeight)
    : upper_(upper)
    , lower_(lower)
    , smallHeight_(smallHeight)
    , bigHeight_(bigHeight) {
    upper_->setParent(this);
    lower_->setParent(this);
    lower_->hide();
}

QSize DisclosedContent::minimumSizeHint() const {
    return {qMax(upper_->minimumSizeHint().width(), lower_->minimumSizeHint().width()),
            upper_->minimumSizeHint().height()};
}

void DisclosedContent::setDisclosed(bool isDisclosed) {
    isDisclosed_ = isDisclosed;
    if (isVisible()) layOut();
}

void DisclosedContent::resizeEvent(QResizeEvent*) {
    layOut();
}

void DisclosedContent::layOut() {
    const int menuHeight = window()->height() - height();
    const bool fillsScreen = window()->isMaximized() || window()->isFullScreen();
    const int upperHeight = fillsScreen && !isDisclosed_ ? height() : smallHeight_ - menuHeight;
    const int disclosed = height() - upperHeight;
    upper_->setGeometry(0, 0, width(), upperHeight);
    lower_->setGeometry(0, upperHeight, width(), qMax(disclosed, bigHeight_ - smallHeight_));
    // A hidden part must not take the keyboard focus.
    lower_->setVisible(disclosed > 0);
}

} // namespace quillow
