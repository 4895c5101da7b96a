// Source: the documentation of XDG Desktop Portal, interfaces FileChooser (version 3) and Request.
#include "platform/qt/dialogs/FilePortal.h"

#include "base/PathBytes.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QUrl>
#include <QUuid>

#include <utility>

namespace quillow {

namespace {

// The D-Bus type of a list of filters is a(sa(us)).
struct PortalPattern {
    uint kind = 0; ///< 0: a glob pattern
    QString text;
};
struct PortalFilter {
    QString name;
    QList<PortalPattern> patterns;
};

QDBusArgument& operator<<(QDBusArgument& argument, const PortalPattern& pattern) {
    argument.beginStructure();
    argument << pattern.kind << pattern.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalPattern& pattern) {
    argument.beginStructure();
    argument >> pattern.kind >> pattern.text;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const PortalFilter& filter) {
    argument.beginStructure();
    argument << filter.name << filter.patterns;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalFilter& filter) {
    argument.beginStructure();
    argument >> filter.name >> filter.patterns;
    argument.endStructure();
    return argument;
}

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kObject = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.FileChooser");
const QString kRequest = QStringLiteral("org.freedesktop.portal.Request");
/// The bus replies from memory.
constexpr int kBusLimitMilliseconds = 1000;
/// The first version that can choose folders.
constexpr uint kVersionWithFolders = 3;
/// The value of Response for a user who confirmed. Others mean that the user cancelled, or that the dialog was closed:
/// the GTK portal responds so when the user closes its window.
constexpr uint kConfirmed = 0;

template <class Answer>
Answer askBus(const QDBusConnection& bus, const char* method, const QVariantList& arguments = {}) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QLatin1String(method));
    call.setArguments(arguments);
    const QDBusReply<Answer> reply = bus.call(call, QDBus::Block, kBusLimitMilliseconds);
    return reply.isValid() ? reply.value() : Answer();
}

/// A portal's patterns tell capitals and small letters apart.
QString patternInAnyCase(const QString& extension) {
    QString pattern = QStringLiteral("*.");
    for (const QChar c : extension)
        pattern += c.isLetter() ? u'[' + QString(c.toLower()) + c.toUpper() + u']' : QString(c);
    return pattern;
}

QList<PortalFilter> filtersOf(const FileQuestion& question) {
    PortalFilter documents{QStringLiteral("Documents"), {}};
    for (const QString& extension : question.extensions)
        documents.patterns.append({0, patternInAnyCase(extension)});
    QList<PortalFilter> filters{documents};
    if (question.alsoAnyFile) filters.append({QStringLiteral("All files"), {{0, QStringLiteral("*")}}});
    return filters;
}

QVariantMap optionsOf(const FileQuestion& question, const QString& token) {
    using Answer = FileQuestion::Answer;
    QVariantMap options{{QStringLiteral("handle_token"), token}, {QStringLiteral("modal"), true}};
    // A portal marks the mnemonic with a low line.
    if (!question.prompt.isEmpty())
        options[QStringLiteral("accept_label")] = QString(question.prompt).replace(u'&', u'_');
    if (question.answer == Answer::files) options[QStringLiteral("multiple")] = true;
    if (question.answer == Answer::folder) options[QStringLiteral("directory")] = true;
    if (question.answer == Answer::newFile) options[QStringLiteral("current_name")] = question.name;
    // A path is its bytes and a zero byte.
    if (!question.folder.isEmpty())
        options[QStringLiteral("current_folder")] = pathToBytes(question.folder).append('\0');
    if (question.answer != Answer::folder && !question.isForAnyFile())
        options[QStringLiteral("filters")] = QVariant::fromValue(filtersOf(question));
    return options;
}

/// The paths of the local items among the URLs.
QStringList pathsOf(const QStringList& urls) {
    QStringList paths;
    for (const QString& text : urls) {
        const QUrl url(text);
        if (url.isLocalFile() && url.host().isEmpty()) paths.append(pathFromFileUrl(url));
    }
    return paths;
}

} // namespace

bool FilePortal::isOffered() const {
    const QDBusConnection bus = bus_();
    return bus.isConnected() && (askBus<bool>(bus, "NameHasOwner", {kService}) ||
                                 askBus<QStringList>(bus, "ListActivatableNames").contains(kService));
}

std::unique_ptr<PortalRequest> FilePortal::ask(const FileQuestion& question, const QString& parentWindow,
                                               PortalRequest::Handler handler) const {
    return std::make_unique<PortalRequest>(bus_(), question, parentWindow, limitMilliseconds_, std::move(handler));
}

PortalRequest::PortalRequest(const QDBusConnection& bus, const FileQuestion& question, const QString& parentWindow,
                             int limitMilliseconds, Handler handler)
    : bus_(bus)
    , question_(question)
    , parentWindow_(parentWindow)
    , limitMilliseconds_(limitMilliseconds)
    , handler_(std::move(handler)) {
    // A portal without a program behind this interface does not have the property.
    QDBusMessage version = QDBusMessage::createMethodCall(
        kService, kObject, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    version << kInterface << QStringLiteral("version");
    call(version, [this](QDBusPendingCallWatcher& finished) {
        const QDBusPendingReply<QDBusVariant> reply = finished;
        const bool choosesFolders = !reply.isError() && reply.value().variant().toUInt() >= kVersionWithFolders;
        if (reply.isError() || (question_.answer == FileQuestion::Answer::folder && !choosesFolders))
            end({FileAnswer::End::unavailable, {}});
        else
            ask();
    });
}

PortalRequest::~PortalRequest() {
    if (handler_) close();
}

void PortalRequest::call(const QDBusMessage& message, const std::function<void(QDBusPendingCallWatcher&)>& replied) {
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message, limitMilliseconds_), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, replied](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        if (handler_) replied(*finished);
    });
}

void PortalRequest::ask() {
    auto* watcher = new QDBusServiceWatcher(kService, bus_, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        end({FileAnswer::End::unavailable, {}});
    });

    // The response may come before the reply, so its path is made from the token.
    const QString token = QStringLiteral("quillow_") + QUuid::createUuid().toString(QUuid::Id128);
    const QString sender = bus_.baseService().mid(1).replace(u'.', u'_');
    listenAt(kObject + QStringLiteral("/request/") + sender + u'/' + token);

    qDBusRegisterMetaType<PortalPattern>();
    qDBusRegisterMetaType<QList<PortalPattern>>();
    qDBusRegisterMetaType<PortalFilter>();
    qDBusRegisterMetaType<QList<PortalFilter>>();
    QDBusMessage message = QDBusMessage::createMethodCall(
        kService, kObject, kInterface,
        question_.answer == FileQuestion::Answer::newFile ? QStringLiteral("SaveFile") : QStringLiteral("OpenFile"));
    message << parentWindow_ << (question_.message.isEmpty() ? question_.title() : question_.message)
            << optionsOf(question_, token);
    call(message, [this](QDBusPendingCallWatcher& finished) {
        const QDBusPendingReply<QDBusObjectPath> reply = finished;
        if (reply.isError())
            end({FileAnswer::End::unavailable, {}});
        else if (reply.value().path() != path_) // portals before version 0.9 do not know the token
            listenAt(reply.value().path());
    });
}

void PortalRequest::listenAt(const QString& path) {
    path_ = path;
    bus_.connect(kService, path, kRequest, QStringLiteral("Response"), this, SLOT(respond(uint, QVariantMap)));
}

void PortalRequest::close() {
    if (path_.isEmpty()) return;
    QDBusMessage message = QDBusMessage::createMethodCall(kService, path_, kRequest, QStringLiteral("Close"));
    message.setAutoStartService(false);
    bus_.send(message);
}

void PortalRequest::respond(uint response, const QVariantMap& results) {
    const QStringList paths = pathsOf(results.value(QStringLiteral("uris")).toStringList());
    if (response == kConfirmed && !paths.isEmpty())
        end({FileAnswer::End::chosen, paths});
    else
        end({FileAnswer::End::cancelled, {}});
}

void PortalRequest::end(const FileAnswer& answer) {
    // A portal that was too slow must not show its dialog later.
    if (answer.end == FileAnswer::End::unavailable) close();
    if (const Handler handler = std::exchange(handler_, nullptr)) handler(answer);
}

} // namespace quillow
