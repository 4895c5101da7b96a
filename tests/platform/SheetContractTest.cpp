// The contract of the alert and panel ports, for the real ones and the fakes.
#include "platform/qt/controls/QtWindow.h"
#include "platform/qt/dialogs/AlertBox.h"
#include "platform/qt/dialogs/FileDialog.h"
#include "platform/qt/dialogs/QtAlerts.h"
#include "platform/qt/dialogs/QtPanels.h"
#include "tests/fakes/FakeAlerts.h"
#include "tests/fakes/FakePanels.h"
#include "tests/fakes/FakeWindow.h"
#include "tests/platform/FileWorlds.h"
#include "tests/platform/Waiting.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <vector>

namespace quillow {
namespace {

struct FakeSheetWorld {
    FakeAlerts alerts;
    FakePanels panels;
    FakeWindow window;

    void answer(int place) { alerts.answer(kAlertFirstButtonReturn + place); }
    void choose(const QString& folder) { panels.choose(folder); }
    void cancel() { panels.cancel(); }
};

struct QtSheetWorld {
    QWidget widget;
    QtWindow window{widget};
    Sheets sheets;
    QtMainQueue mainQueue;
    QtAlerts alerts{sheets, mainQueue};
    DiskFileWorld world;
    QtPanels panels{sheets, world.workspace};

    template <class Dialog>
    Dialog* shown() const {
        for (auto* dialog : widget.findChildren<Dialog*>())
            if (dialog->isVisible()) return dialog;
        return nullptr;
    }
    /// Presses the button at this index, in the order of adding.
    void answer(int place) {
        auto* box = shown<AlertBox>();
        ASSERT_NE(box, nullptr);
        QList<QAbstractButton*> buttons; // in the order of adding, whatever order the style shows
        for (auto* button : box->findChildren<QAbstractButton*>())
            if (box->buttons().contains(button)) buttons.append(button);
        ASSERT_LT(place, buttons.size());
        buttons[place]->click();
        runEvents();
    }
    void choose(const QString& folder) {
        auto* dialog = shown<FileDialog>();
        ASSERT_NE(dialog, nullptr);
        dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(folder);
        for (auto* candidate : dialog->findChildren<QPushButton*>())
            if (candidate->text().remove(u'&') == QStringLiteral("Select")) candidate->click();
        runEvents();
    }
    void cancel() {
        auto* dialog = shown<FileDialog>();
        ASSERT_NE(dialog, nullptr);
        dialog->reject();
        runEvents();
    }
};

template <class World>
class SheetContract : public testing::Test {
protected:
    void begin(const char16_t* message, const QStringList& buttons = {}) {
        world_.alerts.beginSheetModalForWindow({QString::fromUtf16(message), {}, AlertStyle::warning, buttons},
                                               &world_.window, [this](int code) { codes_.push_back(code); });
    }
    void beginPanel(const char16_t* message = u"Please select") {
        OpenPanel panel;
        panel.canChooseDirectories = true;
        panel.canChooseFiles = false;
        panel.prompt = QStringLiteral("Select");
        panel.message = QString::fromUtf16(message);
        world_.panels.beginSheetModalForWindow(panel, &world_.window,
                                               [this](const std::optional<QUrl>& url) { urls_.push_back(url); });
    }
    World world_;
    std::vector<int> codes_;
    std::vector<std::optional<QUrl>> urls_;
};
using Worlds = testing::Types<FakeSheetWorld, QtSheetWorld>;
TYPED_TEST_SUITE(SheetContract, Worlds);

TYPED_TEST(SheetContract, nothingIsAnsweredBeforeBeginReturns) {
    this->begin(u"message");
    this->beginPanel();
    EXPECT_TRUE(this->codes_.empty());
    EXPECT_TRUE(this->urls_.empty());
}

TYPED_TEST(SheetContract, anAlertAnswersOnceByTheButtonsPlace) {
    const QStringList buttons{QStringLiteral("Open Preferences"), QStringLiteral("Cancel")};
    this->begin(u"one", buttons);
    this->world_.answer(0);
    EXPECT_EQ(this->codes_, std::vector<int>{kAlertFirstButtonReturn});
    this->begin(u"two", buttons);
    this->world_.answer(1);
    EXPECT_EQ(this->codes_, (std::vector<int>{kAlertFirstButtonReturn, kAlertSecondButtonReturn}));
}

TYPED_TEST(SheetContract, alertsAreAnsweredInTheOrderInWhichTheyWereBegun) {
    this->begin(u"one", {QStringLiteral("A"), QStringLiteral("B")});
    this->begin(u"two");
    this->world_.answer(1);
    EXPECT_EQ(this->codes_, std::vector<int>{kAlertSecondButtonReturn});
    this->world_.answer(0);
    EXPECT_EQ(this->codes_, (std::vector<int>{kAlertSecondButtonReturn, kAlertFirstButtonReturn}));
}

TYPED_TEST(SheetContract, anAlertMayGoWithoutAHandler) {
    this->world_.alerts.beginSheetModalForWindow({QStringLiteral("message"), {}, AlertStyle::warning, {}},
                                                 &this->world_.window, {});
    this->world_.answer(0);
    this->begin(u"next");
    this->world_.answer(0);
    EXPECT_EQ(this->codes_, std::vector<int>{kAlertFirstButtonReturn});
}

TYPED_TEST(SheetContract, anAnswerMayBeginTheSameAlertAgain) {
    this->world_.alerts.beginSheetModalForWindow({QStringLiteral("message"), {}, AlertStyle::warning, {}},
                                                 &this->world_.window, [this](int) { this->begin(u"message"); });
    this->world_.answer(0);
    EXPECT_TRUE(this->codes_.empty());
    this->world_.answer(0);
    EXPECT_EQ(this->codes_, std::vector<int>{kAlertFirstButtonReturn});
}

TYPED_TEST(SheetContract, aPanelAnswersOnceByTheChosenFoldersUrl) {
    const QTemporaryDir folder;
    this->beginPanel();
    this->world_.choose(folder.path());
    EXPECT_EQ(this->urls_, std::vector<std::optional<QUrl>>{QUrl::fromLocalFile(folder.path())});
}

TYPED_TEST(SheetContract, aCancelledPanelAnswersNothing) {
    this->beginPanel();
    this->world_.cancel();
    EXPECT_EQ(this->urls_, std::vector<std::optional<QUrl>>{std::nullopt});
}

TYPED_TEST(SheetContract, panelsAreAnsweredInTheOrderInWhichTheyWereBegun) {
    const QTemporaryDir folder;
    this->beginPanel(u"one");
    this->beginPanel(u"two");
    this->world_.cancel();
    EXPECT_EQ(this->urls_.size(), 1U);
    this->world_.choose(folder.path());
    EXPECT_EQ(this->urls_, (std::vector<std::optional<QUrl>>{std::nullopt, QUrl::fromLocalFile(folder.path())}));
}

} // namespace
} // namespace quillow
