#include "program/Adapters.h"

#include "util/StandardTransformers.h"

namespace quillow {
namespace {

SupportAddresses supportAddresses() {
    return {QString::fromUtf16(configuration::kSupportMail), QString::fromUtf16(configuration::kAppUrl),
            QString::fromUtf16(configuration::kSiteUrl), QString::fromUtf16(configuration::kStoreUrl)};
}

QByteArray updateKey() {
    QByteArray key;
    if constexpr (configuration::kTakesMirrorsFromTests) key = qgetenv("QUILLOW_TEST_UPDATE_KEY");
    return QByteArray::fromHex(key.isEmpty() ? QByteArray(configuration::kUpdateKey) : key);
}

} // namespace

Adapters::Adapters(QtMainQueue& mainQueueOfProgram, const Termination& terminationOfProgram)
    : mainQueue(mainQueueOfProgram)
    , termination(terminationOfProgram)
    , extractor([this](std::string_view line) { conversionReport.tell(line); },
                [this](std::span<const std::byte> bytes, DocumentKind kind) { return engine.extract(bytes, kind); })
    , supportUtility(workspace, alerts, systemInfo, supportAddresses())
    , propertyListLoader(std::ref(fetch), updateKey()) {
    backgroundWork.setEnding(termination, [this] { window.showEnding(); });
    backgroundWork.setLog([this](std::string_view line) { conversionReport.tell(line); });
    registerStandardTransformers(valueTransformers, bookmarkStore, clock, imageCodec, textUnarchiver);
}

Platform Adapters::platform() {
    return {alerts,
            archive,
            bookmarkStore,
            bundle,
            clock,
            conversionReport,
            dateFormatting,
            defaults,
            documents,
            fileSystemOfConversions,
            backgroundHtmlReader,
            mainQueue,
            menus,
            panels,
            backgroundPdfReader,
            backgroundRtfReader,
            systemInfo,
            termination,
            timers,
            workspace,
            kUpdateCheck};
}

} // namespace quillow
