// Alerts and panels as sheets: their results, how they wait for each other, and which of them appear only once.
#include "base/PathStrings.h"
#include "platform/qt/controls/QtWindow.h"
#include "platform/qt/dialogs/AlertBox.h"
#include "platform/qt/dialogs/FileDialog.h"
#include "platform/qt/dialogs/QtAlerts.h"
#include "platform/qt/dialogs/QtPanels.h"
#include "tests/platform/FileWorlds.h"
#include "tests/platform/FolderPanel.h"
#include "tests/platform/VisibleDialogs.h"
#include "tests/platform/Waiting.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace quillow {
namespace {

class SheetsTest : public testing::Test {
protected:
    void SetUp() override {
        widget_.resize(600, 400);
        widget_.show();
        runEvents();
    }

    void begin(const Alert& alert) {
        alerts_.beginSheetModalForWindow(alert, &window_, [this](int code) { codes_.push_back(code); });
    }
    void begin(const OpenPanel& panel) {
        panels_.beginSheetModalForWindow(panel, &window_,
                                         [this](const std::optional<QUrl>& url) { urls_.push_back(url); });
    }
    /// The visible sheets.
    template <class Dialog>
    QList<Dialog*> visible() const {
        return visibleDialogs<Dialog>(widget_);
    }
    AlertBox* alertBox() const { return visible<AlertBox>().value(0); }
    QAbstractButton* button(const char16_t* title) const {
        for (QAbstractButton* button : alertBox()->buttons())
            if (button->text().remove(u'&') == QString::fromUtf16(title)) return button;
        return nullptr;
    }
    void press(const char16_t* title) {
        ASSERT_NE(button(title), nullptr);
        button(title)->click();
        runEvents();
    }
    void choose(const QString& folder) {
        auto* dialog = visible<FileDialog>().value(0);
        ASSERT_NE(dialog, nullptr);
        dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(folder);
        // For a folder that the user can enter, the button is Open.
        dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
        runEvents();
    }
    static Alert alert(const char16_t* message, const QStringList& buttons = {}) {
        return {QString::fromUtf16(message), QStringLiteral("informative"), AlertStyle::warning, buttons};
    }

    static OpenPanel documentPanel() {
        OpenPanel panel;
        panel.allowedFileTypes = QStringList{QString()};
        panel.prompt = QStringLiteral("Select");
        return panel;
    }
    QString at(const char16_t* name) const { return world_.root() + u'/' + QString::fromUtf16(name); }
    QStringList chosenPaths() const {
        QStringList paths;
        for (const auto& url : urls_)
            paths.append(url ? pathOfURL(*url) : QString());
        return paths;
    }

    QWidget widget_;
    QtWindow window_{widget_};
    Sheets sheets_;
    QtMainQueue mainQueue_;
    QtAlerts alerts_{sheets_, mainQueue_};
    DiskFileWorld world_;
    QtPanels panels_{sheets_, world_.workspace};
    std::vector<int> codes_;
    std::vector<std::optional<QUrl>> urls_;
    const QStringList openOrCancel_{QStringLiteral("Open Preferences"), QStringLiteral("Cancel")};
};

TEST_F(SheetsTest, anAlertReturnsAtOnceAndIsASheetOfItsWindow) {
    begin(alert(u"message"));
    ASSERT_NE(alertBox(), nullptr);
    EXPECT_TRUE(codes_.empty());
    EXPECT_EQ(alertBox()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(alertBox()->text(), QStringLiteral("message"));
    EXPECT_EQ(alertBox()->informativeText(), QStringLiteral("informative"));
}

TEST_F(SheetsTest, withoutButtonsThereIsOneNamedOk) {
    begin(alert(u"message"));
    press(u"OK");
    EXPECT_EQ(codes_, std::vector<int>{kAlertFirstButtonReturn});
    EXPECT_EQ(alertBox(), nullptr);
}

TEST_F(SheetsTest, codesFollowTheOrderInWhichButtonsWereAdded) {
    const QStringList titles{QStringLiteral("Cancel"), QStringLiteral("B"), QStringLiteral("A")};
    for (const char16_t* title : {u"Cancel", u"B", u"A"}) {
        begin(alert(title, titles));
        press(title);
    }
    EXPECT_EQ(codes_, (std::vector<int>{1000, 1001, 1002}));
}

TEST_F(SheetsTest, returnPressesTheFirstButton) {
    begin(alert(u"message", openOrCancel_));
    QTest::keyClick(alertBox(), Qt::Key_Return);
    runEvents();
    EXPECT_EQ(codes_, std::vector<int>{kAlertFirstButtonReturn});
}

TEST_F(SheetsTest, escapePressesCancel) {
    begin(alert(u"message", openOrCancel_));
    QTest::keyClick(alertBox(), Qt::Key_Escape);
    runEvents();
    EXPECT_EQ(codes_, std::vector<int>{kAlertSecondButtonReturn});
}

TEST_F(SheetsTest, escapeDoesNotPressASoleButton) {
    begin(alert(u"Are you sure?"));
    QTest::keyClick(alertBox(), Qt::Key_Escape);
    runEvents();
    EXPECT_EQ(codes_, std::vector<int>{kAlertDismissed});
}

TEST_F(SheetsTest, closingTheSheetDoesNotPressASoleButton) {
    begin(alert(u"Are you sure?"));
    alertBox()->close();
    runEvents();
    EXPECT_EQ(codes_, std::vector<int>{kAlertDismissed});
}

TEST_F(SheetsTest, textsAreNotMarkup) {
    begin({QStringLiteral("<b>message</b>"), QStringLiteral("<i>x</i>"), AlertStyle::warning, {}});
    for (const QLabel* label : alertBox()->findChildren<QLabel*>())
        EXPECT_TRUE(label->text().isEmpty() || label->textFormat() == Qt::PlainText) << label->text().toStdString();
}

TEST_F(SheetsTest, oneSheetShowsAtATimeInOrder) {
    begin(alert(u"first"));
    begin(alert(u"second"));
    ASSERT_EQ(visible<AlertBox>().size(), 1);
    EXPECT_EQ(alertBox()->text(), QStringLiteral("first"));
    press(u"OK");
    ASSERT_EQ(visible<AlertBox>().size(), 1);
    EXPECT_EQ(alertBox()->text(), QStringLiteral("second"));
    EXPECT_EQ(codes_.size(), 1U);
}

TEST_F(SheetsTest, equalAlertsAskOnceAndTheOthersEndWithCancel) {
    for (int i = 0; i < 500; ++i)
        begin(alert(u"same", openOrCancel_));
    EXPECT_EQ(widget_.findChildren<AlertBox*>().size(), 1);
    press(u"Open Preferences");
    std::vector<int> expected(500, kAlertSecondButtonReturn);
    expected[0] = kAlertFirstButtonReturn;
    EXPECT_EQ(codes_, expected);
    EXPECT_EQ(alertBox(), nullptr);
}

TEST_F(SheetsTest, equalAlertsOfOneButtonEndWithoutIt) {
    for (int i = 0; i < 3; ++i)
        begin(alert(u"same"));
    press(u"OK");
    EXPECT_EQ(codes_, (std::vector<int>{kAlertFirstButtonReturn, kAlertDismissed, kAlertDismissed}));
    begin(alert(u"same", {QStringLiteral("Cancel")}));
    begin(alert(u"same", {QStringLiteral("Cancel")}));
    press(u"Cancel");
    EXPECT_EQ(codes_.back(), kAlertDismissed) << "a sole button is not pressed, whatever it is named";
}

TEST_F(SheetsTest, equalAlertsWithoutACancelEndAsByEscape) {
    for (int i = 0; i < 2; ++i) {
        begin(alert(u"same", {QStringLiteral("Download"), QStringLiteral("Later")}));
        begin(alert(u"other", {QStringLiteral("A"), QStringLiteral("B")}));
    }
    press(u"Download");
    press(u"A");
    EXPECT_EQ(codes_, (std::vector<int>{1000, 1001, 1000, kAlertDismissed}));
}

TEST_F(SheetsTest, equalPanelsAskOnceAndTheOthersAreCancelled) {
    QTemporaryDir folder;
    for (int i = 0; i < 500; ++i)
        begin(folderPanel());
    EXPECT_EQ(widget_.findChildren<FileDialog*>().size(), 1);
    choose(folder.path());
    ASSERT_EQ(urls_.size(), 500U);
    EXPECT_EQ(urls_[0], QUrl::fromLocalFile(folder.path()));
    EXPECT_EQ(std::count(urls_.begin(), urls_.end(), std::nullopt), 499);
    EXPECT_TRUE(visible<FileDialog>().isEmpty());
}

TEST_F(SheetsTest, equalSheetsOfTwoWindowsAskTwice) {
    QWidget otherWidget;
    QtWindow other(otherWidget);
    otherWidget.show();
    begin(alert(u"same"));
    alerts_.beginSheetModalForWindow(alert(u"same"), &other, [this](int code) { codes_.push_back(code); });
    press(u"OK");
    EXPECT_EQ(codes_.size(), 1U);
    auto* box = otherWidget.findChild<AlertBox*>();
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->isVisible());
    box->buttons().constFirst()->click();
    runEvents();
    EXPECT_EQ(codes_, (std::vector<int>{kAlertFirstButtonReturn, kAlertFirstButtonReturn}));
}

TEST_F(SheetsTest, equalSheetsThatWaitBehindAnotherAskOnceInTheirTurn) {
    begin(alert(u"first"));
    for (int i = 0; i < 3; ++i)
        begin(alert(u"same", openOrCancel_));
    press(u"OK");
    ASSERT_NE(alertBox(), nullptr);
    EXPECT_EQ(alertBox()->text(), QStringLiteral("same"));
    press(u"Open Preferences");
    EXPECT_EQ(codes_, (std::vector<int>{1000, 1000, 1001, 1001}));
    EXPECT_EQ(alertBox(), nullptr);
}

TEST_F(SheetsTest, nothingIsDeliveredBetweenTheAnswerAndTheNeutralOnes) {
    int delivered = 0;
    std::vector<int> deliveredBefore;
    for (int i = 0; i < 3; ++i) {
        alerts_.beginSheetModalForWindow(alert(u"same"), &window_, [&](int) {
            deliveredBefore.push_back(delivered);
            QMetaObject::invokeMethod(
                &widget_, [&delivered] { ++delivered; }, Qt::QueuedConnection);
        });
    }
    press(u"OK");
    EXPECT_EQ(deliveredBefore, (std::vector<int>{0, 0, 0}));
    EXPECT_EQ(delivered, 3);
}

TEST_F(SheetsTest, aSheetBegunByAnAnswerIsShownAfterwards) {
    alerts_.beginSheetModalForWindow(alert(u"same"), &window_, [this](int) {
        begin(alert(u"same"));
        EXPECT_EQ(alertBox(), nullptr) << "the equal one that waits has not been answered yet";
    });
    begin(alert(u"same"));
    press(u"OK");
    EXPECT_EQ(codes_, std::vector<int>{kAlertDismissed});
    ASSERT_NE(alertBox(), nullptr);
    press(u"OK");
    EXPECT_EQ(codes_, (std::vector<int>{kAlertDismissed, kAlertFirstButtonReturn}));
}

TEST_F(SheetsTest, anAlertWithoutAWindowStandsAlone) {
    alerts_.beginSheetModalForWindow(alert(u"alone"), nullptr, [this](int code) { codes_.push_back(code); });
    AlertBox* alone = nullptr;
    for (QWidget* top : QApplication::topLevelWidgets())
        if (auto* box = dynamic_cast<AlertBox*>(top); box && box->isVisible()) alone = box;
    ASSERT_NE(alone, nullptr);
    alone->buttons().constFirst()->click();
    runEvents();
    EXPECT_EQ(codes_, std::vector<int>{kAlertFirstButtonReturn});
}

TEST_F(SheetsTest, aSheetBringsAClosedWindowBack) {
    widget_.hide();
    begin(alert(u"message"));
    EXPECT_TRUE(widget_.isVisible());
}

TEST_F(SheetsTest, aFolderPanelShowsItsTextsAndChoosesAFolder) {
    QTemporaryDir folder;
    begin(folderPanel());
    auto* dialog = visible<FileDialog>().value(0);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->labelText(QFileDialog::Accept), QStringLiteral("Select"));
    bool showsMessage = false;
    for (const QLabel* label : dialog->findChildren<QLabel*>())
        showsMessage = showsMessage || (label->isVisible() && label->text() == folderPanel().message);
    EXPECT_TRUE(showsMessage);

    choose(folder.path());
    EXPECT_EQ(urls_, std::vector<std::optional<QUrl>>{QUrl::fromLocalFile(folder.path())});
}

TEST_F(SheetsTest, aDocumentPanelChoosesABundleAndStepsIntoAFolder) {
    world_.addFile(at(u"Folder/Letter.rtfd/TXT.rtf"), "x");
    begin(documentPanel());
    choose(at(u"Folder"));
    EXPECT_TRUE(urls_.empty()) << "a folder is no document";
    choose(at(u"Folder/Letter.rtfd"));
    EXPECT_EQ(chosenPaths(), QStringList{at(u"Folder/Letter.rtfd")});
}

TEST_F(SheetsTest, steppingIntoABundleChoosesItInADocumentPanelOnly) {
    world_.addFile(at(u"Letter.rtfd/TXT.rtf"), "x");
    begin(folderPanel());
    Q_EMIT visible<FileDialog>().value(0)->directoryEntered(at(u"Letter.rtfd"));
    runEvents();
    EXPECT_TRUE(urls_.empty());
    QTest::keyClick(visible<FileDialog>().value(0), Qt::Key_Escape);
    runEvents();
    begin(documentPanel());
    Q_EMIT visible<FileDialog>().value(0)->directoryEntered(at(u"Letter.rtfd"));
    runEvents();
    EXPECT_EQ(chosenPaths(), QStringList({QString(), at(u"Letter.rtfd")}));
}

TEST_F(SheetsTest, aNameThatIsNotUtf8IsReachedByItsUrl) {
    const QString folder = world_.root() + pathFromBytes("/d\xE9p\xF4t");
    const QString document = folder + pathFromBytes("/caf\xE9.rtf");
    world_.addFile(document, "x");
    for (const QString& missing : {folder + pathFromBytes("\xFF"), document}) {
        begin(folderPanel());
        choose(fileUrlFromPath(missing).toString(QUrl::FullyEncoded));
        EXPECT_EQ(visible<FileDialog>().size(), 1) << "no folder";
        visible<FileDialog>().value(0)->reject();
        runEvents();
    }
    urls_.clear();
    begin(folderPanel());
    choose(fileUrlFromPath(folder).toString(QUrl::FullyEncoded));
    begin(documentPanel());
    choose(fileUrlFromPath(document).toString(QUrl::FullyEncoded));
    EXPECT_EQ(chosenPaths(), QStringList({folder, document}));
}

TEST_F(SheetsTest, aCancelledPanelAnswersNothing) {
    begin(folderPanel());
    QTest::keyClick(visible<FileDialog>().value(0), Qt::Key_Escape);
    runEvents();
    EXPECT_EQ(urls_, std::vector<std::optional<QUrl>>{std::nullopt});
}

TEST_F(SheetsTest, aPanelStartsInItsFolder) {
    QTemporaryDir folder;
    OpenPanel panel = folderPanel();
    panel.directoryURL = QUrl(folder.path()); // a URL without a scheme, made from a path
    begin(panel);
    EXPECT_EQ(visible<FileDialog>().value(0)->directory().path(), folder.path());
}

TEST_F(SheetsTest, panelsAndAlertsWaitForOneAnother) {
    begin(folderPanel());
    begin(alert(u"message"));
    EXPECT_EQ(alertBox(), nullptr);
    QTest::keyClick(visible<FileDialog>().value(0), Qt::Key_Escape);
    runEvents();
    EXPECT_NE(alertBox(), nullptr);
}

} // namespace
} // namespace quillow
