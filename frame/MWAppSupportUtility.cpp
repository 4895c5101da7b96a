#include "frame/MWAppSupportUtility.h"

#include "base/Format.h"
#include "base/Release.h"
#include "platform/Alerts.h"
#include "platform/SystemInfo.h"
#include "platform/Workspace.h"

#include <QByteArray>
#include <QUrl>

namespace quillow {

namespace {

/// Percent-encodes all characters that are not allowed in the query of a URL (RFC 3986, section 3.4: pchar, "/" and
/// "?" are).
QString encodedForQuery(const QString& text) {
    return QString::fromLatin1(QUrl::toPercentEncoding(text, QByteArrayLiteral("!$&'()*+,;=:@/?")));
}

/// Removes the leading zero from two digits of a release number.
QString withoutLeadingZero(const QString& twoDigits) {
    return twoDigits.startsWith(u'0') ? twoDigits.mid(1) : twoDigits;
}

} // namespace

void MWAppSupportUtility::emailUs(Sender /*sender*/) const {
    const QString release = calcReleaseString(kCurrentRelease);
    const QString system = systemInfo_.operatingSystemVersionString();
    const QString subject = stringWithFormat(QStringLiteral("Support Request for %@ rel. %@ - macOS %@"),
                                             {QString::fromUtf16(kApplicationName), release, system});
    workspace_.openURL(
        QUrl(stringWithFormat(QStringLiteral("%@?subject=%@"), {addresses_.supportMail, encodedForQuery(subject)})));
}

void MWAppSupportUtility::visitAppUrl(Sender /*sender*/) const {
    workspace_.openURL(QUrl(addresses_.appUrl));
}

void MWAppSupportUtility::visitUs(Sender /*sender*/) const {
    workspace_.openURL(QUrl(addresses_.siteUrl));
}

void MWAppSupportUtility::openAppStoreList(Sender /*sender*/) const {
    workspace_.openURL(QUrl(addresses_.appStoreListUrl));
}

void MWAppSupportUtility::openAppStorePage(Sender /*sender*/) const {
    // deliberate: does nothing. Menus of other applications of the frame are wired to it.
}

bool MWAppSupportUtility::sayFilecreatedWithANewerVersion(Sender sender) const {
    return offerDownload(
        QStringLiteral("The document you requested to open was created with a more recent version of this application"),
        QStringLiteral(
            "To open this file you need a release of this application equal or successive to the one used to "
            "create this file.\n\nProbably you are using an outdated release.\nYou can download for free the "
            "last version of this application from our site"),
        sender);
}

bool MWAppSupportUtility::dataIn_ApplicationSupportFolder_CreatedWithANewerVersion(Sender sender) const {
    return offerDownload(
        QStringLiteral(
            "Data file the software tryed to open from the Application Support folder was created with a more "
            "recent version of this application"),
        QStringLiteral(
            "You need a release of this application equal or successive to the one used to create this data "
            "file.\n\nProbably you are using an outdated release.\nYou can download for free the last version "
            "of this application from our site"),
        sender);
}

bool MWAppSupportUtility::offerDownload(const QString& messageText, const QString& informativeText,
                                        Sender sender) const {
    const Alert alert{messageText,
                      informativeText,
                      AlertStyle::warning,
                      {QStringLiteral("Go to Download Last Version"), QStringLiteral("Cancel")}};
    if (alerts_.runModal(alert) != kAlertFirstButtonReturn) return false;
    visitUs(sender);
    return true;
}

QString MWAppSupportUtility::calcReleaseString(std::int64_t releaseNumber) {
    const QString text = QString::number(releaseNumber);
    const qsizetype length = text.size();
    if (length <= 3) return QStringLiteral("");
    QString major = text.left(1);
    QString minor = text.mid(1, 1);
    QString patch = text.mid(2);
    // deliberate: a four-digit number keeps the zero of its patch (1501 reads 1.5.01); longer ones drop it.
    if (length >= 5) {
        major = text.left(length - 4);
        minor = withoutLeadingZero(text.mid(length - 4, 2));
        patch = withoutLeadingZero(text.right(2));
    }
    QString joined = stringWithFormat(QStringLiteral("%@.%@.%@"), {major, minor, patch});
    if (joined.endsWith(QStringLiteral(".0"))) joined.chop(2);
    return joined;
}

} // namespace quillow
