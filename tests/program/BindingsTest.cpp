// Every value in the windows is bound to the right property or setting, in both directions.
#include "platform/qt/controls/DiscloseButton.h"
#include "platform/qt/controls/ElidedLabel.h"
#include "platform/qt/windows/UpdatePane.h"
#include "tests/program/WiringFixture.h"
#include "util/StringTransformers.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QSet>

namespace quillow {
namespace {

class BindingsTest : public WiringFixture {
protected:
    BindingsTest() {
        for (const char16_t* folder : {u"/fixed", u"/other"})
            fakes.files.addFolder(QString::fromUtf16(folder));
        fakes.files.addFile(u"/documents/start.rtf"_s);
    }
    /// The accessible name of the label that starts with `beginning`, without that beginning.
    static QString labelOf(const QWidget& widget, const QString& beginning) {
        for (const auto* label : widget.findChildren<QLabel*>())
            if (label->accessibleName().startsWith(beginning)) return label->accessibleName().mid(beginning.size());
        return u"no such label"_s;
    }
    [[nodiscard]] bool canChoose(const QString& item) const {
        const QAction* action = menuItems().value(item);
        EXPECT_NE(action, nullptr) << item.toStdString();
        return action && action->isEnabled();
    }
    /// The items and buttons of the main window that the change enables or disables.
    template <class Change>
    QSet<QString> toggledBy(const Change& change) {
        const auto before = enabled();
        change();
        const auto after = enabled();
        return (before - after) + (after - before);
    }
    template <class Control>
    Control* control(const QString& title) const {
        for (auto* control : preferences.findChildren<Control*>())
            if (plain(control->text()) == title) return control;
        return nullptr;
    }
    [[nodiscard]] GeneralPane& general() { return preferences.generalPane(); }
    [[nodiscard]] QRadioButton& asks() const { return *control<QRadioButton>(u"Ask when saving"_s); }
    [[nodiscard]] QRadioButton& fixed() const { return *control<QRadioButton>(u"Fixed folder"_s); }
    static bool canPress(const ChosenItem& item, const QString& title) { return buttonsOf(item)[title]->isEnabled(); }

private:
    QSet<QString> enabled() const {
        QSet<QString> names;
        const auto items = menuItems();
        for (auto item = items.begin(); item != items.end(); ++item)
            if (item.value()->isEnabled()) names.insert(item.key());
        const auto buttons = buttonsOf(window);
        for (auto button = buttons.begin(); button != buttons.end(); ++button)
            if (button.value()->isEnabled()) names.insert(button.key());
        return names;
    }
};

// The main window.

TEST_F(BindingsTest, theMainWindowShowsTheDestination) {
    EXPECT_NE(labelOf(window, u"Destination: "_s), u"not chosen yet"_s) << "before the launch nothing is known";
    delegate.setDisplayDestinationPath(u"/somewhere"_s);
    EXPECT_EQ(labelOf(window, u"Destination: "_s), u"/somewhere"_s);
    delegate.setDisplayDestinationPath(std::nullopt);
    EXPECT_EQ(labelOf(window, u"Destination: "_s), u"not chosen yet"_s);
}

TEST_F(BindingsTest, atTheFirstLaunchTheWindowsSayThatTheyWillAsk) {
    delegate.applicationWillFinishLaunching({});
    delegate.applicationDidFinishLaunching({});
    EXPECT_EQ(labelOf(window, u"Destination: "_s), u"<ASK WHEN SAVING>"_s);
    EXPECT_TRUE(asks().isChecked());
    EXPECT_EQ(general().folder().path(), QString());
    EXPECT_EQ(general().folder().state(), u"Please select a file or change startup option"_s);
}

TEST_F(BindingsTest, theMainWindowShowsTheCount) {
    delegate.setNumberProcessed(4711);
    EXPECT_EQ(labelOf(window, u"Converted: "_s), u"4711"_s);
    delegate.resetCounter();
    EXPECT_EQ(labelOf(window, u"Converted: "_s), u"0"_s);
}

TEST_F(BindingsTest, theFixedFolderCanBeShownWhileOneIsChosen) {
    const QSet<QString> showFolder{u"Log/Show Folder"_s, u"Show Folder"_s};
    EXPECT_EQ(toggledBy([&] { store(bookmarkOf(u"/fixed"_s), u"destBookmark"); }), showFolder);
    EXPECT_EQ(toggledBy([&] { delegate.clearDestPath(); }), showFolder);
}

TEST_F(BindingsTest, theLatestDocumentAndTextCanBeShownAndOpenedOnceThereAreSome) {
    EXPECT_EQ(toggledBy([&] { delegate.setFileToProcessPath(u"/in/a.rtf"_s); }),
              (QSet<QString>{u"Log/Show Document"_s, u"Log/Open Document"_s}));
    EXPECT_EQ(toggledBy([&] { delegate.setFinalFullPathName(u"/texts/a.txt"_s); }),
              (QSet<QString>{u"Log/Show Output"_s, u"Log/Open Output"_s, u"Show Output"_s, u"Open Output"_s}));
}

TEST_F(BindingsTest, theModeIsShownByTheDisclosureButtonAndTheMenu) {
    delegate.setBigWin(true);
    EXPECT_EQ(window.discloseButton().state(), ButtonState::on);
    EXPECT_TRUE(menuItems().contains(u"Window/Hide Message Log"_s));
    delegate.setBigWin({});
    EXPECT_EQ(window.discloseButton().state(), ButtonState::off) << "an unset mode is the small one";
    EXPECT_TRUE(menuItems().contains(u"Window/Show Message Log"_s));
}

TEST_F(BindingsTest, theMenuNamesWhatCanBeUndoneAndRedone) {
    const auto undone = [this] {
        fakes.undoManager.registerUndo([] {});
        fakes.undoManager.setActionName(u"Redoable"_s);
    };
    fakes.undoManager.registerUndo([] {});
    fakes.undoManager.setActionName(u"Undoable"_s);
    EXPECT_TRUE(canChoose(u"Edit/Undo Undoable"_s));
    EXPECT_FALSE(canChoose(u"Edit/Redo"_s));
    fakes.undoManager.registerUndo(undone);
    fakes.undoManager.undo();
    EXPECT_TRUE(canChoose(u"Edit/Undo Undoable"_s));
    EXPECT_TRUE(canChoose(u"Edit/Redo Redoable"_s));
    fakes.undoManager.undo();
    EXPECT_FALSE(canChoose(u"Edit/Undo"_s));
}

// The preferences: settings.

TEST_F(BindingsTest, theDestinationTypeGoesBothWaysAndToTheMainWindow) {
    store(bookmarkOf(u"/fixed"_s), u"destBookmark");
    fixed().setChecked(true);
    EXPECT_EQ(stored(u"destinationType"), Boxed(1));
    EXPECT_EQ(labelOf(window, u"Destination: "_s), u"/fixed"_s);
    EXPECT_TRUE(canPress(general().folder(), u"Select…"_s));
    asks().setChecked(true);
    EXPECT_EQ(stored(u"destinationType"), Boxed(0));
    EXPECT_EQ(labelOf(window, u"Destination: "_s), u"<ASK WHEN SAVING>"_s);
    EXPECT_FALSE(canPress(general().folder(), u"Select…"_s));
    store(1, u"destinationType");
    EXPECT_TRUE(fixed().isChecked());
    store(2, u"destinationType");
    EXPECT_TRUE(asks().isChecked()) << "every other type asks";
}

TEST_F(BindingsTest, theFolderIsShownByItsBookmarkAndTheMainWindowFollows) {
    store(1, u"destinationType");
    store(u"/once"_s, u"destPath");
    EXPECT_EQ(general().folder().path(), u"/once"_s);
    store(bookmarkOf(u"/fixed"_s), u"destBookmark");
    EXPECT_EQ(general().folder().path(), u"/fixed"_s);
    EXPECT_EQ(labelOf(window, u"Destination: "_s), u"/fixed"_s);
    delegate.selectFolderToSaveOutput();
    fakes.panels.choose(u"/other"_s);
    EXPECT_EQ(general().folder().path(), u"/other"_s);
    EXPECT_EQ(labelOf(window, u"Destination: "_s), u"/other"_s);
    delegate.clearDestPath();
    EXPECT_EQ(general().folder().path(), QString());
}

TEST_F(BindingsTest, theStartupActionGoesBothWays) {
    auto* action = general().findChild<QComboBox*>();
    for (const int tag : {3, 1, 2, 0}) {
        action->setCurrentIndex(tag);
        EXPECT_EQ(stored(u"StartupActionTag"), Boxed(tag));
        store((tag + 1) % 4, u"StartupActionTag");
        EXPECT_EQ(action->currentIndex(), (tag + 1) % 4);
    }
}

TEST_F(BindingsTest, theUpdateSwitchGoesBothWaysAsABoolean) {
    auto* notifies = preferences.updatePane().findChild<QCheckBox*>();
    EXPECT_TRUE(notifies->isChecked()) << "registered so";
    notifies->setChecked(false);
    EXPECT_EQ(stored(u"notifyUpdate"), Boxed(false));
    notifies->setChecked(true);
    EXPECT_EQ(stored(u"notifyUpdate"), Boxed(true));
    store(false, u"notifyUpdate");
    EXPECT_FALSE(notifies->isChecked());
}

TEST_F(BindingsTest, theLastCheckIsShown) {
    EXPECT_EQ(labelOf(preferences, u"Last check: "_s), u"never"_s);
    const QDateTime check(QDate(2026, 11, 21), QTime(9, 41));
    store(check, u"lastCheckDateForUpdate");
    EXPECT_EQ(labelOf(preferences, u"Last check: "_s), u"21.11.2026 09:41:00"_s);
}

// The preferences: properties of the delegate.

TEST_F(BindingsTest, theStateLinesAreTheDelegates) {
    delegate.setDestMessageString(u"of the folder"_s);
    delegate.setStartupDocPathMessageString(u"of the document"_s);
    EXPECT_EQ(general().folder().state(), u"of the folder"_s);
    EXPECT_EQ(general().document().state(), u"of the document"_s);
}

TEST_F(BindingsTest, aPromptIsShownMoreQuietlyThanAStatement) {
    const auto isQuiet = [](const ChosenItem& item, const QString& subject) {
        for (const auto* label : item.findChildren<QLabel*>())
            if (label->accessibleName().startsWith(subject + u" state: "_s))
                return static_cast<const ElidedLabel*>(label)->isQuiet();
        ADD_FAILURE() << "no state line";
        return false;
    };
    const auto folder = [&] { return isQuiet(general().folder(), u"Destination folder"_s); };
    const auto document = [&] { return isQuiet(general().document(), u"Start-up document"_s); };
    delegate.setDestMessageStringSpecified(true);
    delegate.setStartupDocSpecified(true);
    EXPECT_FALSE(folder());
    EXPECT_FALSE(document());
    delegate.setDestMessageStringSpecified(false);
    EXPECT_TRUE(folder());
    EXPECT_FALSE(document());
    delegate.setDestMessageStringSpecified(true);
    EXPECT_FALSE(folder());
    delegate.setDestMessageStringSpecified({});
    EXPECT_TRUE(folder()) << "unset is false";
    delegate.setStartupDocSpecified(false);
    EXPECT_TRUE(document());
}

TEST_F(BindingsTest, theStartupDocumentsButtonsNeedOne) {
    store(3, u"StartupActionTag");
    EXPECT_TRUE(canPress(general().document(), u"Select…"_s));
    EXPECT_FALSE(canPress(general().document(), u"Test"_s)) << "none was ever chosen";
    delegate.selectStartupDoc();
    fakes.panels.choose(u"/documents/start.rtf"_s);
    EXPECT_EQ(general().document().path(), u"/documents/start.rtf"_s);
    EXPECT_TRUE(canPress(general().document(), u"Test"_s));
    delegate.setStartupDocSpecified(false);
    EXPECT_FALSE(canPress(general().document(), u"Test"_s));
    delegate.setStartupDocSpecified(true);
    EXPECT_TRUE(canPress(general().document(), u"Test"_s));
    store(u""_s, u"StartupSelectedDocPath");
    EXPECT_FALSE(canPress(general().document(), u"Test"_s)) << "an empty path is none";
}

TEST_F(BindingsTest, theWindowsLookUpTheirTransformersByName) {
    // The transformer that is registered under the name is used.
    const auto always = std::make_shared<MWReturnInitStr>(u"asked"_s);
    for (const char16_t* name :
         {u"valueIs1", u"valueIsNot1", u"valueNot0", u"b2p", u"MWNumberBoolToNumberNum", u"MWFilledTrimmedString"})
        fakes.valueTransformers.setValueTransformer(always, QString::fromUtf16(name));
    const PreferencesBindings::Transforms transforms = transformsOf(fakes.valueTransformers);
    for (const auto& transform : {transforms.valueIs1, transforms.valueIsNot1, transforms.valueNot0, transforms.b2p,
                                  transforms.MWNumberBoolToNumberNum, transforms.MWFilledTrimmedString})
        EXPECT_EQ(transform(1), Boxed(u"asked"_s));
}

TEST(TransformsOf, aTransformerThatIsNotRegisteredGivesNil) {
    const PreferencesBindings::Transforms transforms = transformsOf(ValueTransformerRegistry());
    EXPECT_TRUE(transforms.valueNot0(1).isNil());
    EXPECT_TRUE(transforms.valueIs1Reversed(1).isNil());
}

} // namespace
} // namespace quillow
