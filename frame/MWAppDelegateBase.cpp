#include "frame/MWAppDelegateBase.h"

#include "base/Release.h"

namespace quillow {

QString MWAppDelegateBase::appName() const {
    return QString::fromUtf16(kApplicationName);
}

QString MWAppDelegateBase::releaseString() const {
    return QString::fromUtf16(kCurrentReleaseString);
}

} // namespace quillow
