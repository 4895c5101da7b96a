#include "platform/qt/windows/PreferencesBindings.h"

#include "base/SettingKeys.h"
#include "platform/qt/windows/GeneralPane.h"
#include "platform/qt/windows/PreferencesWindow.h"
#include "platform/qt/windows/UpdatePane.h"

#include <utility>

namespace quillow {

PreferencesBindings::PreferencesBindings(PreferencesWindow& window, KVObject& delegate, ObservedDefaults& defaults,
                                         const DateFormatting& dateFormatting, Transforms transforms, Actions actions)
    : window_(window)
    , delegate_(delegate)
    , defaults_(defaults)
    , dateFormatting_(dateFormatting)
    , transforms_(std::move(transforms))
    , actions_(std::move(actions)) {
    setCommands();
    observe(u"destMessageString", &PreferencesBindings::showFolderState);
    observe(u"destMessageStringSpecified", &PreferencesBindings::showFolderState);
    observe(u"StartupDocPathMessageString", &PreferencesBindings::showDocumentState);
    observe(u"StartupDocSpecified", &PreferencesBindings::showDocumentState);
    defaults_.setChangeHandler([this](const QString& key) { showStored(key); });
    showDestinationType();
    showFolder();
    showStartupAction();
    showDocument();
    showUpdate();
}

PreferencesBindings::~PreferencesBindings() {
    defaults_.setChangeHandler({});
    window_.generalPane().setCommands({});
    window_.updatePane().setCommands({});
}

void PreferencesBindings::setCommands() {
    GeneralPaneCommands general;
    general.setDestinationIsFixed = [this](bool isFixed) {
        store(isFixed ? transforms_.valueIs1Reversed(true) : Boxed(settings::kDestinationAsked),
              settings::kDestinationType.name);
        actions_.adjustDestinationPath();
    };
    general.selectFolder = actions_.selectFolder;
    general.showFolder = actions_.showFolder;
    general.clearFolder = actions_.clearFolder;
    general.setStartupAction = [this](int tag) { store(tag, settings::kStartupActionTag.name); };
    general.selectDocument = actions_.selectDocument;
    general.showDocument = actions_.showDocument;
    general.testDocument = actions_.testDocument;
    general.clearDocument = actions_.clearDocument;
    window_.generalPane().setCommands(general);
    window_.updatePane().setCommands({[this](bool notifies) {
                                          store(transforms_.MWNumberBoolToNumberNumReversed(notifies),
                                                settings::kNotifyUpdate.name);
                                      },
                                      actions_.checkNow});
}

void PreferencesBindings::observe(const char16_t* key, void (PreferencesBindings::*show)()) {
    observations_.push_back(delegate_.addObserver(
        QString::fromUtf16(key), [this, show](const QString&, const KVObject&, const Change&) { (this->*show)(); }));
    (this->*show)();
}

void PreferencesBindings::showStored(const QString& key) {
    if (key == settings::kDestinationType.name) showDestinationType();
    if (key == settings::kDestBookmark.name || key == settings::kDestPath.name) showFolder();
    // The main window shows the folder too.
    if (key == settings::kDestBookmark.name) actions_.adjustDestinationPath();
    if (key == settings::kStartupActionTag.name) showStartupAction();
    if (key == settings::kStartupSelectedDocPath.name) showDocument();
    if (key == settings::kNotifyUpdate.name || key == settings::kLastCheckDateForUpdate.name) showUpdate();
}

void PreferencesBindings::showDestinationType() {
    const Boxed type = stored(settings::kDestinationType.name);
    window_.generalPane().setDestinationAsks(transforms_.valueIsNot1(type).boolValue());
    window_.generalPane().setDestinationIsFixed(transforms_.valueIs1(type).boolValue());
}

void PreferencesBindings::showFolder() {
    // The folder's current path; if the folder no longer exists, its last known path.
    const auto now = transforms_.b2p(stored(settings::kDestBookmark.name)).string();
    window_.generalPane().folder().setPath(now ? *now : stored(settings::kDestPath.name).string().value_or(QString()));
    const auto bookmark = stored(settings::kDestBookmark.name).data();
    window_.generalPane().folder().setHasItem(bookmark && !bookmark->isEmpty());
}

void PreferencesBindings::showFolderState() {
    window_.generalPane().folder().setState(
        delegate_.valueForKey(QStringLiteral("destMessageString")).string().value_or(QString()),
        stateOf(delegate_.valueForKey(QStringLiteral("destMessageStringSpecified"))));
}

void PreferencesBindings::showStartupAction() {
    window_.generalPane().setStartupAction(stored(settings::kStartupActionTag.name).longValue());
}

void PreferencesBindings::showDocument() {
    window_.generalPane().document().setPath(
        stored(settings::kStartupSelectedDocPath.name).string().value_or(QString()));
    showDocumentState();
}

void PreferencesBindings::showDocumentState() {
    const ChosenItem::State state = stateOf(delegate_.valueForKey(QStringLiteral("StartupDocSpecified")));
    window_.generalPane().document().setState(
        delegate_.valueForKey(QStringLiteral("StartupDocPathMessageString")).string().value_or(QString()), state);
    // "Specified" is also true if no document was ever chosen.
    const bool hasPath = transforms_.MWFilledTrimmedString(stored(settings::kStartupSelectedDocPath.name)).boolValue();
    window_.generalPane().setDocumentIsSpecified(state == ChosenItem::State::stated && hasPath);
}

void PreferencesBindings::showUpdate() {
    window_.updatePane().setNotifies(
        transforms_.MWNumberBoolToNumberNum(stored(settings::kNotifyUpdate.name)).boolValue());
    const auto lastCheck = stored(settings::kLastCheckDateForUpdate.name).date();
    window_.updatePane().setLastCheck(lastCheck ? dateFormatting_.localizedStringFromDate(
                                                      lastCheck->toLocalTime(), DateStyle::medium, DateStyle::medium)
                                                : QString());
}

ChosenItem::State PreferencesBindings::stateOf(const Boxed& isSpecified) const {
    return transforms_.valueNot0(isSpecified).boolValue() ? ChosenItem::State::stated : ChosenItem::State::prompt;
}

Boxed PreferencesBindings::stored(const char16_t* key) const {
    return defaults_.objectForKey(QString::fromUtf16(key));
}

void PreferencesBindings::store(const Boxed& value, const char16_t* key) {
    defaults_.setObject(value, QString::fromUtf16(key));
}

} // namespace quillow
