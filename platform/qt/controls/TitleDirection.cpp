#include "platform/qt/controls/TitleDirection.h"

#include <QGuiApplication>

namespace quillow {
namespace {

constexpr QChar kLeftToRightMark(0x200E);

} // namespace

QString directed(const QString& title) {
    const bool endsWithSign = !title.isEmpty() && !title.back().isLetterOrNumber();
    const bool isAgainstLayout = QGuiApplication::layoutDirection() == Qt::RightToLeft && !title.isRightToLeft();
    return endsWithSign && isAgainstLayout ? title + kLeftToRightMark : title;
}

} // namespace quillow
