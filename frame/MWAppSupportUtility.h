// Small services that all applications share: support mail, the maker's web pages, alerts about files of a newer
// release, and release numbers as text.
#pragma once

#include "base/ActionSender.h"

#include <QString>

#include <cstdint>

namespace quillow {

class Alerts;
class SystemInfo;
class Workspace;

/// The maker's addresses, set by the configuration of the build.
struct SupportAddresses {
    QString supportMail; ///< "mailto:" and the address
    QString appUrl;      ///< the application's own page
    QString siteUrl;     ///< the maker's home page
    QString appStoreListUrl;
};

class MWAppSupportUtility {
public:
    MWAppSupportUtility(Workspace& workspace, Alerts& alerts, const SystemInfo& systemInfo,
                        const SupportAddresses& addresses) // selector: none
        : workspace_(workspace)
        , alerts_(alerts)
        , systemInfo_(systemInfo)
        , addresses_(addresses) {}

    // Each opens an address. A failure to open it is not detected.
    void emailUs(Sender sender = {}) const;
    void visitAppUrl(Sender sender = {}) const;
    void visitUs(Sender sender = {}) const;
    void openAppStoreList(Sender sender = {}) const;
    void openAppStorePage(Sender sender = {}) const;

    // Application-modal alerts about data written by a newer release. They return true if the user chose to download;
    // the maker's site has then been opened.
    bool sayFilecreatedWithANewerVersion(Sender sender = {}) const;
    bool dataIn_ApplicationSupportFolder_CreatedWithANewerVersion(Sender sender = {}) const;

    /// Formats a release number (major * 10000 + minor * 100 + patch): 10501 gives "1.5.1", 10500 "1.5", 10000 "1.0".
    /// A number of fewer than four digits gives the empty string.
    [[nodiscard]] static QString calcReleaseString(std::int64_t releaseNumber);

private:
    bool offerDownload(const QString& messageText, const QString& informativeText, Sender sender) const;

    Workspace& workspace_;
    Alerts& alerts_;
    const SystemInfo& systemInfo_;
    SupportAddresses addresses_;
};

} // namespace quillow
