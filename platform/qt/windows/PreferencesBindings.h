// Ties the preferences window to what is stored and to the delegate's properties, both ways: what changes there is shown, what the
// user sets is stored.
#pragma once

#include "base/KVObject.h"
#include "platform/DateFormatting.h"
#include "platform/qt/storage/ObservedDefaults.h"
#include "platform/qt/windows/ChosenItem.h"

#include <functional>
#include <vector>

namespace quillow {

class PreferencesWindow;

class PreferencesBindings {
public:
    using Transform = std::function<Boxed(const Boxed& value)>;
    /// Transformers, by the names under which they are registered.
    struct Transforms {
        Transform valueIs1;
        Transform valueIs1Reversed;
        Transform valueIsNot1;
        Transform valueNot0;
        Transform b2p;
        Transform MWNumberBoolToNumberNum;
        Transform MWNumberBoolToNumberNumReversed;
        Transform MWFilledTrimmedString;
    };

    /// What the user does besides setting a value.
    struct Actions {
        std::function<void()> adjustDestinationPath;
        std::function<void()> selectFolder;
        std::function<void()> showFolder;
        std::function<void()> clearFolder;
        std::function<void()> selectDocument;
        std::function<void()> showDocument;
        std::function<void()> testDocument;
        std::function<void()> clearDocument;
        std::function<void()> checkNow;
    };

    /// The delegate has the properties destMessageString, destMessageStringSpecified, StartupDocPathMessageString and
    /// StartupDocSpecified. All that is given by reference outlives the bindings.
    PreferencesBindings(PreferencesWindow& window, KVObject& delegate, ObservedDefaults& defaults,
                        const DateFormatting& dateFormatting, Transforms transforms, Actions actions);
    PreferencesBindings(const PreferencesBindings&) = delete;
    PreferencesBindings& operator=(const PreferencesBindings&) = delete;
    ~PreferencesBindings();

private:
    void setCommands();
    void observe(const char16_t* key, void (PreferencesBindings::*show)());
    void showStored(const QString& key);
    void showDestinationType();
    void showFolder();
    void showFolderState();
    void showStartupAction();
    void showDocument();
    void showDocumentState();
    void showUpdate();
    [[nodiscard]] ChosenItem::State stateOf(const Boxed& isSpecified) const;
    [[nodiscard]] Boxed stored(const char16_t* key) const;
    void store(const Boxed& value, const char16_t* key);

    PreferencesWindow& window_;
    KVObject& delegate_;
    ObservedDefaults& defaults_;
    const DateFormatting& dateFormatting_;
    Transforms transforms_;
    Actions actions_;
    std::vector<Observation> observations_;
};

} // namespace quillow
