// Binds the preferences window to the stored defaults and to the delegate's properties, both ways: their changes are
// shown, and the user's changes are stored.
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
    /// Transformers. Each member has the name of the registered transformer.
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

    /// The user's actions other than setting a value.
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
    /// StartupDocSpecified. All arguments passed by reference must outlive the bindings.
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
