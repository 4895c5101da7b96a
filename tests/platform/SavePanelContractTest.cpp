// The contract of the save panel and sheet panel ports, for all implementations.
#include "platform/qt/exporter/QtAccessoryView.h"
#include "platform/qt/exporter/QtSavePanels.h"
#include "platform/qt/exporter/QtSheetPanel.h"
#include "platform/qt/exporter/SaveDialog.h"
#include "tests/fakes/FakeExporterInterface.h"
#include "tests/fakes/FakeSavePanels.h"
#include "tests/platform/FakeFilePortal.h"
#include "tests/platform/Waiting.h"

#include <QApplication>
#include <QLineEdit>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <vector>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

/// The visible top-level dialog, or null.
template <class Dialog>
Dialog* shown() {
    for (QWidget* top : QApplication::topLevelWidgets())
        if (auto* dialog = dynamic_cast<Dialog*>(top); dialog && dialog->isVisible()) return dialog;
    return nullptr;
}

struct FakeSavePanelWorld {
    FakeSavePanels panels;
    QString folder = u"/home"_s;
    [[nodiscard]] bool isUp() const { return panels.last().isUp; }
    void type(const QString& name) { panels.type(name); }
    void confirm() { panels.confirm(folder + u'/' + panels.last().name); }
    void cancel() { panels.cancel(); }
};

struct QtSavePanelWorld {
    Sheets sheets;
    QtSavePanels panels{sheets};
    QTemporaryDir temporary;
    QString folder = temporary.path();
    [[nodiscard]] bool isUp() const { return shown<SaveDialog>() != nullptr; }
    void type(const QString& name) { shown<SaveDialog>()->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(name); }
    void confirm() {
        shown<SaveDialog>()->setDirectory(folder);
        QMetaObject::invokeMethod(shown<SaveDialog>(), "accept");
        runEvents();
    }
    void cancel() {
        shown<SaveDialog>()->close();
        runEvents();
    }
};

template <class World>
class SavePanelContract : public testing::Test {
protected:
    void begin() {
        panel_->beginSheetModalForWindow(nullptr, [this](int result) { results_.push_back(result); });
    }
    World world_;
    std::unique_ptr<SavePanel> panel_ = world_.panels.makeSavePanel();
    std::vector<int> results_;
};
using SaveWorlds = testing::Types<FakeSavePanelWorld, QtSavePanelWorld>;
TYPED_TEST_SUITE(SavePanelContract, SaveWorlds);

TYPED_TEST(SavePanelContract, confirmingAnswersTheTypedFile) {
    this->panel_->setNameFieldStringValue(u"Export.tsv"_s);
    this->begin();
    EXPECT_TRUE(this->results_.empty());
    EXPECT_TRUE(this->world_.isUp());
    EXPECT_EQ(this->panel_->nameFieldStringValue(), u"Export.tsv"_s);
    EXPECT_FALSE(this->panel_->URL());

    this->world_.type(u"100% of \u00fc.tsv"_s);
    EXPECT_EQ(this->panel_->nameFieldStringValue(), u"100% of \u00fc.tsv"_s);
    this->world_.confirm();
    EXPECT_EQ(this->results_, std::vector<int>{kSavePanelConfirmed});
    EXPECT_EQ(this->panel_->URL(), QUrl::fromLocalFile(this->world_.folder + u"/100% of \u00fc.tsv"_s));
}

TYPED_TEST(SavePanelContract, theNameCanBeSetWhileThePanelIsUp) {
    this->panel_->setNameFieldStringValue(u"Export.tsv"_s);
    this->begin();
    this->panel_->setNameFieldStringValue(u"Export.csv"_s);
    this->world_.confirm();
    EXPECT_EQ(this->panel_->URL(), QUrl::fromLocalFile(this->world_.folder + u"/Export.csv"_s));
}

TYPED_TEST(SavePanelContract, cancellingAnswersSoAndNamesNoFile) {
    this->panel_->setNameFieldStringValue(u"Export.tsv"_s);
    this->begin();
    this->world_.cancel();
    EXPECT_EQ(this->results_, std::vector<int>{kSavePanelCancelled});
    EXPECT_FALSE(this->panel_->URL());
}

TYPED_TEST(SavePanelContract, aPanelThatGoesAnswersNothing) {
    this->begin();
    this->panel_.reset();
    runEvents();
    EXPECT_FALSE(this->world_.isUp());
    EXPECT_TRUE(this->results_.empty());
}

/// Save panels on a bus with a portal.
class SavePanelOfPortalTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(bus_.isConnected());
        portal_.start();
    }
    void begin() {
        panel_->setNameFieldStringValue(u"Export.tsv"_s);
        panel_->beginSheetModalForWindow(nullptr, [this](int result) { results_.push_back(result); });
    }

    PrivateBus bus_;
    FakeFilePortal portal_{bus_.service()};
    Sheets sheets_;
    QtSavePanels panels_{sheets_, FilePortal([this] { return bus_.client(); })};
    std::unique_ptr<SavePanel> panel_ = panels_.makeSavePanel();
    std::vector<int> results_;
};

TEST_F(SavePanelOfPortalTest, thePortalNamesTheFile) {
    begin();
    ASSERT_TRUE(waitUntil([this] { return !portal_.asked.isEmpty(); }));
    EXPECT_EQ(portal_.asked.constFirst().member(), u"SaveFile"_s);
    EXPECT_EQ(portal_.title(), u"Save As"_s);
    EXPECT_EQ(portal_.option("accept_label").toString(), u"_Save"_s);
    EXPECT_EQ(portal_.option("current_name").toString(), u"Export.tsv"_s);
    EXPECT_EQ(panel_->nameFieldStringValue(), u"Export.tsv"_s);
    portal_.respond(0, {u"file:///home/100%25%20of%20%C3%BC.tsv"_s});
    ASSERT_TRUE(waitUntil([this] { return !results_.empty(); }));
    EXPECT_EQ(results_, std::vector<int>{kSavePanelConfirmed});
    EXPECT_EQ(panel_->URL(), QUrl::fromLocalFile(u"/home/100% of \u00fc.tsv"_s));
    EXPECT_EQ(panel_->nameFieldStringValue(), u"100% of \u00fc.tsv"_s);
}

TEST_F(SavePanelOfPortalTest, cancellingThePortalsDialogNamesNoFile) {
    begin();
    ASSERT_TRUE(waitUntil([this] { return !portal_.asked.isEmpty(); }));
    portal_.respond(1);
    ASSERT_TRUE(waitUntil([this] { return !results_.empty(); }));
    EXPECT_EQ(results_, std::vector<int>{kSavePanelCancelled});
    EXPECT_FALSE(panel_->URL());
}

TEST_F(SavePanelOfPortalTest, ourDialogWithTheNameReplacesARefusedOne) {
    portal_.reply = FakeFilePortal::Reply::error;
    begin();
    ASSERT_TRUE(waitUntil([] { return shown<SaveDialog>() != nullptr; }));
    EXPECT_EQ(panel_->nameFieldStringValue(), u"Export.tsv"_s);
    panel_->setNameFieldStringValue(u"Export.csv"_s);
    EXPECT_EQ(shown<SaveDialog>()->name(), u"Export.csv"_s);
    panel_.reset();
    EXPECT_EQ(shown<SaveDialog>(), nullptr);
    EXPECT_TRUE(results_.empty());
}

TEST_F(SavePanelOfPortalTest, aPanelThatGoesClosesThePortalsDialog) {
    begin();
    ASSERT_TRUE(waitUntil([this] { return !portal_.asked.isEmpty(); }));
    panel_.reset();
    EXPECT_TRUE(waitUntil([this] { return portal_.closedRequests == QStringList{portal_.requestPath()}; }));
    EXPECT_TRUE(results_.empty());
}

TEST_F(SavePanelOfPortalTest, aPanelWithAControlOfOursIsOurs) {
    struct Control final : QtAccessoryView {
        [[nodiscard]] QString title() const override { return u"&Format:"_s; }
        [[nodiscard]] QWidget* makeControl(QWidget* parent) override { return new QLineEdit(parent); }
    } control;
    panel_->setAccessoryView(&control);
    begin();
    EXPECT_NE(shown<SaveDialog>(), nullptr);
    EXPECT_TRUE(portal_.asked.isEmpty());
    panel_.reset();
}

struct FakeSheetPanelWorld {
    Journal journal;
    std::unique_ptr<SheetPanel> panel = std::make_unique<FakeSheetPanel>(journal);
};

struct QtSheetPanelWorld {
    Sheets sheets;
    std::unique_ptr<SheetPanel> panel =
        std::make_unique<QtSheetPanel>(sheets, [](QWidget* window) { return new QDialog(window); });
};

template <class World>
class SheetPanelContract : public testing::Test {
protected:
    void begin() {
        world_.panel->beginSheetModalForWindow(nullptr, [this](int code) { codes_.push_back(code); });
    }
    World world_;
    std::vector<int> codes_;
};
using SheetWorlds = testing::Types<FakeSheetPanelWorld, QtSheetPanelWorld>;
TYPED_TEST_SUITE(SheetPanelContract, SheetWorlds);

TYPED_TEST(SheetPanelContract, endingTellsTheCodeOnce) {
    this->begin();
    EXPECT_TRUE(this->codes_.empty());
    this->world_.panel->endSheet(7);
    this->world_.panel->endSheet(8);
    this->world_.panel->orderOut();
    runEvents();
    EXPECT_EQ(this->codes_, std::vector<int>{7});
}

TYPED_TEST(SheetPanelContract, isShownAgainAfterItsEnd) {
    this->begin();
    this->world_.panel->endSheet(1);
    runEvents();
    this->begin();
    this->world_.panel->endSheet(2);
    runEvents();
    EXPECT_EQ(this->codes_, (std::vector<int>{1, 2}));
}

TYPED_TEST(SheetPanelContract, beginningTwiceIsBeginningOnce) {
    this->begin();
    this->begin();
    this->world_.panel->endSheet(1);
    this->world_.panel->endSheet(2);
    runEvents();
    EXPECT_EQ(this->codes_, std::vector<int>{1});
}

TYPED_TEST(SheetPanelContract, aPanelThatGoesTellsNothing) {
    this->begin();
    this->world_.panel.reset();
    runEvents();
    EXPECT_TRUE(this->codes_.empty());
}

} // namespace
} // namespace quillow
