// quillow-fetch URL: writes the file at an HTTP or HTTPS URL to standard output. The exit code is 1 if it cannot be
// downloaded. The desktop program starts it for the release-information list.
#include "base/Release.h"
#include "frame/MWAppSupportUtility.h"
#include "platform/qt/network/HttpDownload.h"

#include <QCoreApplication>
#include <QUrl>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    using namespace quillow;
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QString::fromUtf16(kApplicationName));
    QCoreApplication::setApplicationVersion(MWAppSupportUtility::calcReleaseString(kCurrentRelease));
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) return EXIT_FAILURE;
    const auto bytes = httpDownload(QUrl(arguments[1], QUrl::StrictMode));
    if (bytes) std::fwrite(bytes->constData(), 1, static_cast<std::size_t>(bytes->size()), stdout);
    const bool isWritten = std::fflush(stdout) == 0;
    // A lookup of a name may still run on a thread, for as long as the resolver waits.
    std::_Exit(bytes && isWritten ? EXIT_SUCCESS : EXIT_FAILURE);
}
