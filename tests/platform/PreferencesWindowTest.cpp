// The preferences window with its toolbar, its panes and its bindings.
#include "platform/qt/windows/PreferencesWindow.h"

#include "platform/qt/windows/ChosenItem.h"
#include "platform/qt/windows/GeneralPane.h"
#include "platform/qt/windows/PaneButton.h"
#include "platform/qt/windows/PreferencesBindings.h"
#include "platform/qt/windows/QtToolbar.h"
#include "platform/qt/windows/UpdatePane.h"
#include "prefs/MyPrefToolbarDelegate.h"
#include "tests/fakes/FakeDateFormatting.h"
#include "tests/fakes/FakeDefaults.h"
#include "tests/platform/Waiting.h"
#include "util/ComparisonTransformers.h"
#include "util/NumberTransformers.h"
#include "util/StringTransformers.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include <gtest/gtest.h>

namespace quillow {
namespace {

class PreferencesWindowTest : public testing::Test {
protected:
    void SetUp() override {
        toolbarDelegate_.awakeFromNib();
        preferences_.window().makeKeyAndOrderFront();
        runEvents();
    }
    QToolButton* button(const char16_t* label) const {
        for (auto* button : preferences_.findChildren<QToolButton*>())
            if (button->accessibleName() == QString::fromUtf16(label)) return button;
        return nullptr;
    }
    QAccessibleInterface* accessible(const char16_t* label) const {
        return QAccessible::queryAccessibleInterface(button(label));
    }
    [[nodiscard]] bool waitForHeight(int height) const {
        return waitUntil([this, height] { return preferences_.height() == height; });
    }

    PreferencesWindow preferences_{UpdateCheck::wired};
    QtToolbarFactory factory_{PreferencesWindow::kToolbarHeight};
    MyPrefToolbarDelegate toolbarDelegate_{factory_, preferences_.window(), preferences_.tabView()};
};

TEST_F(PreferencesWindowTest, beginsAtTheFirstPaneWithItsHeight) {
    EXPECT_EQ(preferences_.windowTitle(), QStringLiteral("General"));
    EXPECT_EQ(preferences_.height(), 278);
    EXPECT_EQ(preferences_.generalPane().height(), 200);
    EXPECT_TRUE(button(u"General")->isChecked());
}

TEST_F(PreferencesWindowTest, aPressedItemShowsItsPaneUnderAStillTopEdge) {
    const QRect before = preferences_.geometry();
    button(u"Update")->click();
    EXPECT_EQ(preferences_.windowTitle(), QStringLiteral("Update"));
    EXPECT_TRUE(preferences_.updatePane().isVisible());
    ASSERT_TRUE(waitForHeight(238));
    EXPECT_EQ(preferences_.geometry(), QRect(before.topLeft(), QSize(before.width(), 238)));
    EXPECT_EQ(preferences_.updatePane().height(), 160);
    EXPECT_FALSE(button(u"General")->isChecked());
}

TEST_F(PreferencesWindowTest, assistiveToolsSeeOneChoiceOfRadioButtons) {
    for (const char16_t* label : {u"General", u"Update"}) {
        QAccessibleInterface* item = accessible(label);
        EXPECT_EQ(item->role(), QAccessible::RadioButton);
        EXPECT_EQ(item->text(QAccessible::Name), QString::fromUtf16(label));
        EXPECT_EQ(item->text(QAccessible::Accelerator), QStringLiteral("Alt+") + QChar(label[0]));
        EXPECT_TRUE(item->state().checkable);
        EXPECT_TRUE(item->state().focusable);
        EXPECT_TRUE(item->actionInterface()->actionNames().contains(QAccessibleActionInterface::setFocusAction()));
    }
    EXPECT_TRUE(accessible(u"General")->state().checked);
    EXPECT_FALSE(accessible(u"Update")->state().checked);
}

TEST_F(PreferencesWindowTest, theActionOfAnAssistiveToolShowsThePane) {
    QAccessibleActionInterface* update = accessible(u"Update")->actionInterface();
    update->doAction(update->actionNames().constFirst());
    EXPECT_EQ(preferences_.windowTitle(), QStringLiteral("Update"));
    EXPECT_TRUE(preferences_.updatePane().isVisible());
    EXPECT_TRUE(accessible(u"Update")->state().checked);
    EXPECT_FALSE(accessible(u"General")->state().checked);
    ASSERT_TRUE(waitForHeight(238));
    button(u"General")->toggle();
    EXPECT_EQ(preferences_.windowTitle(), QStringLiteral("General")) << "the selection shows the pane";
    ASSERT_TRUE(waitForHeight(278));
}

TEST_F(PreferencesWindowTest, theKeyboardShowsThePane) {
    button(u"Update")->setFocus();
    QTest::keyClick(button(u"Update"), Qt::Key_Space);
    EXPECT_EQ(preferences_.windowTitle(), QStringLiteral("Update"));
    ASSERT_TRUE(waitForHeight(238));
    QTest::keyClick(button(u"Update"), Qt::Key_Left);
    EXPECT_EQ(preferences_.windowTitle(), QStringLiteral("General"));
    ASSERT_TRUE(waitForHeight(278));
}

TEST_F(PreferencesWindowTest, everyRoadToAPaneRunsTheActionOnce) {
    int runs = 0;
    ToolbarItem item;
    item.label = QStringLiteral("Item");
    QWidget bar;
    auto* first = new PaneButton(item, PaneButton::Selectable::yes, [&runs] { ++runs; });
    auto* second = new PaneButton(item, PaneButton::Selectable::yes, [] {});
    auto* plain = new PaneButton(item, PaneButton::Selectable::no, [&runs] { ++runs; });
    for (PaneButton* button : {first, second, plain})
        button->setParent(&bar);
    first->click();
    EXPECT_EQ(runs, 1);
    first->click();
    EXPECT_EQ(runs, 2) << "pressed again";
    second->select();
    EXPECT_FALSE(first->isChecked());
    first->select();
    EXPECT_EQ(runs, 2) << "selected by the program";
    second->select();
    QAccessibleActionInterface* access = QAccessible::queryAccessibleInterface(first)->actionInterface();
    access->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(runs, 3);
    plain->click();
    EXPECT_EQ(runs, 4);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(plain)->role(), QAccessible::PushButton);
}

TEST_F(PreferencesWindowTest, aPaneShownFromCodeSelectsItsItem) {
    toolbarDelegate_.SetPanelTab(1);
    EXPECT_TRUE(button(u"Update")->isChecked());
    ASSERT_TRUE(waitForHeight(238));
    toolbarDelegate_.SetPanelTab(2);
    toolbarDelegate_.SetPanelTab(-1);
    EXPECT_EQ(preferences_.windowTitle(), QStringLiteral("Update"));
}

TEST_F(PreferencesWindowTest, aChangeOfMindMidwayEndsAtTheLastPanesHeight) {
    const int top = preferences_.geometry().top();
    toolbarDelegate_.SetPanelTab(1);
    toolbarDelegate_.SetPanelTab(0);
    EXPECT_EQ(preferences_.window().frame().height, 278);
    ASSERT_TRUE(waitForHeight(278));
    EXPECT_EQ(preferences_.geometry().top(), top);
}

TEST_F(PreferencesWindowTest, theUserCanNeitherCustomiseNorHideTheToolbarNorResizeTheWindow) {
    const auto* bar = preferences_.findChild<QToolBar*>(QStringLiteral("prefToolBar"));
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->contextMenuPolicy(), Qt::PreventContextMenu);
    EXPECT_FALSE(bar->toggleViewAction()->isVisible());
    EXPECT_FALSE(bar->isMovable());
    EXPECT_EQ(preferences_.minimumSize(), preferences_.maximumSize());
}

TEST_F(PreferencesWindowTest, escapeClosesIt) {
    QTest::keyClick(&preferences_, Qt::Key_Escape);
    EXPECT_FALSE(preferences_.isVisible());
}

TEST_F(PreferencesWindowTest, mnemonicsAreUniqueAndEveryControlHasOne) {
    for (QWidget* pane :
         {static_cast<QWidget*>(&preferences_.generalPane()), static_cast<QWidget*>(&preferences_.updatePane())}) {
        QSet<QChar> seen;
        auto controls = pane->findChildren<QAbstractButton*>();
        controls += preferences_.findChild<QToolBar*>(QStringLiteral("prefToolBar"))->findChildren<QAbstractButton*>();
        for (const QAbstractButton* control : controls) {
            if (control->objectName().startsWith(QStringLiteral("qt_"))) continue;
            const qsizetype mark = control->text().indexOf(u'&');
            ASSERT_GE(mark, 0) << control->text().toStdString();
            EXPECT_FALSE(seen.contains(control->text()[mark + 1].toLower())) << control->text().toStdString();
            seen.insert(control->text()[mark + 1].toLower());
            // The keyboard enters a group of radio buttons at the checked one.
            if (qobject_cast<const QRadioButton*>(control) && !control->isChecked()) continue;
            EXPECT_NE(control->focusPolicy() & Qt::TabFocus, 0) << control->text().toStdString();
        }
        EXPECT_FALSE(seen.contains(u't') && pane == &preferences_.generalPane()); // the start-up action's label has it
    }
}

TEST(PreferencesPanes, fitTheirHeightsInALargeFont) {
    const QFont former = QApplication::font();
    QFont large = former;
    large.setPointSize(14);
    QApplication::setFont(large);
    {
        PreferencesWindow preferences(UpdateCheck::wired);
        EXPECT_LE(preferences.generalPane().minimumSizeHint().height(), 200);
        EXPECT_LE(preferences.updatePane().minimumSizeHint().height(), 160);
        QtToolbarFactory factory(PreferencesWindow::kToolbarHeight);
        MyPrefToolbarDelegate delegate(factory, preferences.window(), preferences.tabView());
        delegate.awakeFromNib();
        for (const auto* button : preferences.findChildren<QToolButton*>())
            EXPECT_LE(button->minimumSizeHint().height(), PreferencesWindow::kToolbarHeight);
        preferences.show();
        runEvents();
        EXPECT_EQ(preferences.height(), 278);
        EXPECT_GE(preferences.width(), preferences.tabView().minimumSizeHint().width());
    }
    QApplication::setFont(former);
}

TEST(PreferencesPanes, aBuildWithoutTheUpdateCheckHasNoSwitchForIt) {
    PreferencesWindow preferences(UpdateCheck::leftOut);
    EXPECT_EQ(preferences.updatePane().findChild<QCheckBox*>(), nullptr);
    EXPECT_EQ(preferences.updatePane().findChild<QPushButton*>(), nullptr);
    preferences.updatePane().setNotifies(true);
    preferences.updatePane().setLastCheck(QStringLiteral("today"));
}

/// The properties of the delegate that the window shows.
class FakeDelegate final : public KVObject {
public:
    KVProperty<std::optional<QString>> destMessageString{*this, u"destMessageString", QStringLiteral("Valid Bookmark")};
    KVProperty<Boxed> destMessageStringSpecified{*this, u"destMessageStringSpecified", true};
    KVProperty<std::optional<QString>> startupMessage{*this, u"StartupDocPathMessageString", QString()};
    KVProperty<Boxed> startupSpecified{*this, u"StartupDocSpecified", true};
};

class PreferencesBindingsTest : public testing::Test {
protected:
    void SetUp() override {
        store_.setObject(0, QStringLiteral("destinationType"));
        store_.setObject(true, QStringLiteral("notifyUpdate"));
    }
    PreferencesBindings::Transforms transforms() const {
        PreferencesBindings::Transforms transforms;
        transforms.valueIs1 = [this](const Boxed& value) { return valueIs1_.transformedValue(value); };
        transforms.valueIs1Reversed = [this](const Boxed& value) { return valueIs1_.reverseTransformedValue(value); };
        transforms.valueIsNot1 = [this](const Boxed& value) { return valueIsNot1_.transformedValue(value); };
        transforms.valueNot0 = [this](const Boxed& value) { return valueNot0_.transformedValue(value); };
        transforms.b2p = [](const Boxed& value) {
            return value.data() && !value.data()->isEmpty() ? Boxed(QStringLiteral("/moved/here")) : Boxed();
        };
        transforms.MWNumberBoolToNumberNum = [](const Boxed& value) {
            return MWNumberBoolToNumberNum().transformedValue(value);
        };
        transforms.MWNumberBoolToNumberNumReversed = [](const Boxed& value) {
            return MWNumberBoolToNumberNum().reverseTransformedValue(value);
        };
        transforms.MWFilledTrimmedString = [](const Boxed& value) {
            return MWFilledTrimmedString().transformedValue(value);
        };
        return transforms;
    }
    PreferencesBindings::Actions actions() {
        PreferencesBindings::Actions actions;
        const auto note = [this](const char* name) { return [this, name] { called_.append(QLatin1String(name)); }; };
        actions.adjustDestinationPath = note("adjust");
        actions.selectFolder = note("selectFolder");
        actions.showFolder = note("showFolder");
        actions.clearFolder = note("clearFolder");
        actions.selectDocument = note("selectDocument");
        actions.showDocument = note("showDocument");
        actions.testDocument = note("testDocument");
        actions.clearDocument = note("clearDocument");
        actions.checkNow = note("checkNow");
        return actions;
    }
    template <class Control>
    Control* control(const char16_t* title) const {
        for (auto* control : preferences_.findChildren<Control*>())
            if (control->text().remove(u'&') == QString::fromUtf16(title)) return control;
        return nullptr;
    }
    Boxed stored(const char16_t* key) const { return store_.objectForKey(QString::fromUtf16(key)); }
    void store(const Boxed& value, const char16_t* key) { defaults_.setObject(value, QString::fromUtf16(key)); }

    MWValueIsEqualToRef valueIs1_{1};
    MWValueNotEqualToRef valueIsNot1_{1};
    MWValueNotEqualToRef valueNot0_{0};
    QStringList called_;
    FakeDefaults store_;
    ObservedDefaults defaults_{store_};
    FakeDateFormatting dates_;
    FakeDelegate delegate_;
    PreferencesWindow preferences_{UpdateCheck::wired};
};

TEST_F(PreferencesBindingsTest, theDestinationTypeIsShownAndStored) {
    const PreferencesBindings bindings(preferences_, delegate_, defaults_, dates_, transforms(), actions());
    EXPECT_TRUE(control<QRadioButton>(u"Ask when saving")->isChecked());
    EXPECT_FALSE(control<QPushButton>(u"Select\u2026")->isEnabled());

    control<QRadioButton>(u"Fixed folder")->setChecked(true);
    EXPECT_EQ(stored(u"destinationType").intValue(), 1);
    EXPECT_EQ(called_, QStringList{QStringLiteral("adjust")});
    EXPECT_TRUE(control<QPushButton>(u"Select\u2026")->isEnabled());

    store(0, u"destinationType");
    EXPECT_TRUE(control<QRadioButton>(u"Ask when saving")->isChecked());
    EXPECT_EQ(called_.size(), 1); // showing a value calls no action
    control<QRadioButton>(u"Fixed folder")->setChecked(true);
    control<QRadioButton>(u"Ask when saving")->setChecked(true);
    EXPECT_EQ(stored(u"destinationType"), Boxed(0));
    EXPECT_EQ(called_.size(), 3);
}

TEST_F(PreferencesBindingsTest, theFolderIsShownWhereItStandsNowElseWhereItStood) {
    const PreferencesBindings bindings(preferences_, delegate_, defaults_, dates_, transforms(), actions());
    EXPECT_EQ(preferences_.generalPane().folder().path(), QString());
    store(QStringLiteral("/once/here"), u"destPath");
    EXPECT_EQ(preferences_.generalPane().folder().path(), QStringLiteral("/once/here"));
    store(QByteArray("bookmark"), u"destBookmark");
    EXPECT_EQ(preferences_.generalPane().folder().path(), QStringLiteral("/moved/here"));
    store(QByteArray(""), u"destBookmark");
    store(QStringLiteral(""), u"destPath");
    EXPECT_EQ(preferences_.generalPane().folder().path(), QString());
}

TEST_F(PreferencesBindingsTest, stateLinesFollowTheDelegate) {
    const PreferencesBindings bindings(preferences_, delegate_, defaults_, dates_, transforms(), actions());
    EXPECT_EQ(preferences_.generalPane().folder().state(), QStringLiteral("Valid Bookmark"));
    delegate_.destMessageString.set(QStringLiteral("Stale Bookmark. Please re-select"));
    EXPECT_EQ(preferences_.generalPane().folder().state(), QStringLiteral("Stale Bookmark. Please re-select"));
    delegate_.startupMessage.set(QStringLiteral("Not valid bookmark. Please re-select"));
    EXPECT_EQ(preferences_.generalPane().document().state(), QStringLiteral("Not valid bookmark. Please re-select"));
}

TEST_F(PreferencesBindingsTest, aFolderIsShownAndClearedOnlyIfThereIsOne) {
    store_.setObject(1, QStringLiteral("destinationType"));
    const PreferencesBindings bindings(preferences_, delegate_, defaults_, dates_, transforms(), actions());
    const auto areEnabled = [this] {
        EXPECT_EQ(control<QPushButton>(u"Show")->isEnabled(), control<QPushButton>(u"Clear")->isEnabled());
        return control<QPushButton>(u"Show")->isEnabled();
    };
    EXPECT_FALSE(areEnabled());
    EXPECT_TRUE(control<QPushButton>(u"Select\u2026")->isEnabled());
    store(QByteArray("bookmark"), u"destBookmark");
    EXPECT_TRUE(areEnabled());
    store(QByteArray(""), u"destBookmark");
    EXPECT_FALSE(areEnabled());
}

TEST_F(PreferencesBindingsTest, thePromptIsHiddenOnceThereIsAFolder) {
    delegate_.destMessageString.set(QStringLiteral("Please select a file or change startup option"));
    const PreferencesBindings bindings(preferences_, delegate_, defaults_, dates_, transforms(), actions());
    const ChosenItem& folder = preferences_.generalPane().folder();
    EXPECT_EQ(folder.state(), QStringLiteral("Please select a file or change startup option"));
    store(QByteArray("bookmark"), u"destBookmark");
    EXPECT_EQ(folder.state(), QString());
    delegate_.destMessageString.set(QStringLiteral("Stale Bookmark. Please re-select"));
    EXPECT_EQ(folder.state(), QStringLiteral("Stale Bookmark. Please re-select")) << "that is no prompt";
}

TEST_F(PreferencesBindingsTest, theStateLineIsDimWhileTheFolderIsAskedFor) {
    const PreferencesBindings bindings(preferences_, delegate_, defaults_, dates_, transforms(), actions());
    const auto isDim = [this] {
        for (const auto* label : preferences_.generalPane().folder().findChildren<QLabel*>())
            if (label->accessibleName().contains(QStringLiteral(" state: "))) return !label->isEnabled();
        ADD_FAILURE() << "no state line";
        return false;
    };
    EXPECT_TRUE(isDim());
    store(1, u"destinationType");
    EXPECT_FALSE(isDim());
}

TEST_F(PreferencesBindingsTest, theFirstFocusIsOnTheChosenDestination) {
    store_.setObject(1, QStringLiteral("destinationType"));
    const PreferencesBindings bindings(preferences_, delegate_, defaults_, dates_, transforms(), actions());
    preferences_.show();
    EXPECT_EQ(preferences_.focusWidget(), control<QRadioButton>(u"Fixed folder"));
    preferences_.close();
    store(0, u"destinationType");
    preferences_.show();
    EXPECT_EQ(preferences_.focusWidget(), control<QRadioButton>(u"Ask when saving"));
}

TEST_F(PreferencesBindingsTest, theStartupActionIsShownAndStored) {
    const PreferencesBindings bindings(preferences_, delegate_, defaults_, dates_, transforms(), actions());
    auto* action = preferences_.findChild<QComboBox*>();
    EXPECT_EQ(action->currentIndex(), 0); // an absent value counts as 0
    EXPECT_TRUE(stored(u"StartupActionTag").isNil());
    for (const int tag : {3, 1, 2, 0}) {
        action->setCurrentIndex(tag);
        EXPECT_EQ(stored(u"StartupActionTag"), Boxed(tag));
    }
    store(2, u"StartupActionTag");
    EXPECT_EQ(action->currentIndex(), 2);
    store(7, u"StartupActionTag");
    EXPECT_EQ(action->currentIndex(), -1);
    EXPECT_EQ(stored(u"StartupActionTag"), Boxed(7));
    store(2, u"StartupActionTag");
    store((std::int64_t{1} << 32) + 2, u"StartupActionTag");
    EXPECT_EQ(action->currentIndex(), -1);
}

TEST_F(PreferencesBindingsTest, documentButtonsNeedTheirActionAndADocument) {
    const PreferencesBindings bindings(preferences_, delegate_, defaults_, dates_, transforms(), actions());
    store(3, u"StartupActionTag");
    EXPECT_FALSE(control<QPushButton>(u"Test")->isEnabled()); // no document has been chosen
    store(QStringLiteral("/a/document.rtf"), u"StartupSelectedDocPath");
    EXPECT_EQ(preferences_.generalPane().document().path(), QStringLiteral("/a/document.rtf"));
    EXPECT_TRUE(control<QPushButton>(u"Test")->isEnabled());
    delegate_.startupSpecified.set(false);
    EXPECT_FALSE(control<QPushButton>(u"Test")->isEnabled());
    delegate_.startupSpecified.set(true);
    store(0, u"StartupActionTag");
    EXPECT_FALSE(control<QPushButton>(u"Test")->isEnabled());
}

TEST_F(PreferencesBindingsTest, buttonsRunTheirActions) {
    store_.setObject(1, QStringLiteral("destinationType"));
    store_.setObject(QByteArray("bookmark"), QStringLiteral("destBookmark"));
    store_.setObject(3, QStringLiteral("StartupActionTag"));
    store_.setObject(QStringLiteral("/a/document.rtf"), QStringLiteral("StartupSelectedDocPath"));
    const PreferencesBindings bindings(preferences_, delegate_, defaults_, dates_, transforms(), actions());
    for (auto* button : preferences_.findChildren<QPushButton*>())
        button->click();
    called_.sort();
    EXPECT_EQ(called_.join(u' '), QStringLiteral("checkNow clearDocument clearFolder selectDocument selectFolder "
                                                 "showDocument showFolder testDocument"));
}

TEST_F(PreferencesBindingsTest, theUpdateSwitchIsShownAndStoredAndTheLastCheckShown) {
    const PreferencesBindings bindings(preferences_, delegate_, defaults_, dates_, transforms(), actions());
    auto* notifies = preferences_.findChild<QCheckBox*>();
    EXPECT_TRUE(notifies->isChecked());
    notifies->setChecked(false);
    EXPECT_EQ(stored(u"notifyUpdate"), Boxed(false));
    store(true, u"notifyUpdate");
    EXPECT_TRUE(notifies->isChecked());

    EXPECT_NE(control<QLabel>(u"Last check: never"), nullptr);
    store(QDateTime(QDate(2026, 11, 21), QTime(9, 41), Qt::UTC), u"lastCheckDateForUpdate");
    EXPECT_EQ(control<QLabel>(u"Last check: never"), nullptr);
}

TEST_F(PreferencesBindingsTest, aNewFolderIsToldToTheMainWindow) {
    const PreferencesBindings bindings(preferences_, delegate_, defaults_, dates_, transforms(), actions());
    store(QByteArray("bookmark"), u"destBookmark");
    EXPECT_EQ(called_, QStringList{QStringLiteral("adjust")});
}

} // namespace
} // namespace quillow
