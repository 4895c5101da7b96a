// The contract of the save panel and sheet panel ports, for all implementations.
#include "platform/qt/exporter/QtSavePanels.h"
#include "platform/qt/exporter/QtSheetPanel.h"
#include "platform/qt/exporter/SaveDialog.h"
#include "tests/fakes/FakeExporterInterface.h"
#include "tests/fakes/FakeSavePanels.h"
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
