// How the windows look with ordinary and with large fonts, in light, dark and high contrast themes, and in both reading
// directions: nothing is cut and nothing overlaps. ctest runs this program at several scales of the screen.
//
// With QUILLOW_PICTURES=FOLDER it also saves a picture of each window.
#include "frame/MWOutlinedDragDropView.h"
#include "frame/MWWhiteView.h"
#include "platform/qt/controls/DiscloseButton.h"
#include "platform/qt/dragdrop/DropArea.h"
#include "platform/qt/windows/ChosenItem.h"
#include "platform/qt/windows/GeneralPane.h"
#include "platform/qt/windows/MainWindow.h"
#include "platform/qt/windows/PreferencesWindow.h"
#include "platform/qt/windows/QtLogView.h"
#include "platform/qt/windows/QtToolbar.h"
#include "platform/qt/windows/UpdatePane.h"
#include "prefs/MyPrefToolbarDelegate.h"
#include "tests/fakes/FakeAlerts.h"
#include "tests/platform/FileWorlds.h"
#include "tests/platform/Waiting.h"
#include "tests/platform/WidgetFaults.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPixmap>
#include <QStyle>
#include <QTest>

#include <gtest/gtest.h>

#include <ostream>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

enum class Theme { light, dark, contrast };

struct Look {
    const char* name;
    int points;
    Theme theme;
    Qt::LayoutDirection direction;
    friend void PrintTo(const Look& look, std::ostream* out) { *out << look.name; }
};

QPalette paletteOf(Theme theme) {
    if (theme == Theme::light) return QApplication::style()->standardPalette();
    const bool isDark = theme == Theme::dark;
    const QColor paper = isDark ? QColor(0x2D, 0x2D, 0x2D) : QColor(Qt::black);
    const QColor text = isDark ? QColor(0xEE, 0xEE, 0xEE) : QColor(Qt::white);
    QPalette palette(isDark ? QColor(0x3A, 0x3A, 0x3A) : QColor(Qt::black), paper);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    palette.setColor(QPalette::Base, isDark ? QColor(0x1E, 0x1E, 0x1E) : QColor(Qt::black));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x8A, 0x8A, 0x8A));
    palette.setColor(QPalette::Highlight, isDark ? QColor(0x3D, 0xAE, 0xE9) : QColor(Qt::yellow));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    return palette;
}

class Looks : public testing::TestWithParam<Look> {
protected:
    void SetUp() override {
        QFont font = formerFont_;
        font.setPointSize(GetParam().points);
        QApplication::setFont(font);
        QApplication::setPalette(paletteOf(GetParam().theme));
        QApplication::setLayoutDirection(GetParam().direction);
    }
    void TearDown() override {
        QApplication::setFont(formerFont_);
        QApplication::setPalette(formerPalette_);
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }
    void expectNoFaults(QWidget& window, const char* state) {
        runEvents();
        const QString folder = qEnvironmentVariable("QUILLOW_PICTURES");
        const QString file = u"%1/%2-%3-%4.png"_s.arg(folder, QLatin1String(GetParam().name), QLatin1String(state),
                                                      QString::number(window.devicePixelRatioF()));
        if (!folder.isEmpty()) window.grab().save(file);
        EXPECT_EQ(faultsOf(window).join(u'\n').toStdString(), "") << state;
    }

private:
    const QFont formerFont_ = QApplication::font();
    const QPalette formerPalette_ = QApplication::palette();
};

/// The main window as it is after a few documents.
struct UsedMainWindow {
    UsedMainWindow() {
        view.awakeFromNib();
        window.setDestination(u"/home/user/Documents/Texts"_s);
        window.setHasFolder(true);
        window.setHasInput(true);
        window.setHasOutput(true);
        window.setConvertedCount(12);
        window.logView().replaceCharactersInRange(
            {0, 0}, u"\nNov 21, 2026, 9:41:12 AM} Converted /home/user/Papers/thesis.pdf  >>  "
                    "/home/user/Documents/Texts/thesis.txt"
                    "\nNov 21, 2026, 9:41:13 AM} Not able to extract any text from /home/user/Papers/scan.pdf"
                    "\nNov 21, 2026, 9:41:14 AM} Converted /home/user/Web/index.html  >>  "
                    "/home/user/Documents/Texts/index.txt"_s);
        window.show();
    }
    void disclose() {
        window.setBig(true);
        window.setMinimumHeight(MainWindow::kBigHeight);
        window.resize(MainWindow::kMinimumWidth, MainWindow::kBigHeight);
    }
    void enter() {
        files.setUrls({QUrl(u"file:///a.rtf"_s)});
        QDragEnterEvent entry({10, 10}, Qt::LinkAction, &files, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window.dropArea(), &entry);
    }

    DiskFileWorld world;
    FakeAlerts alerts;
    MainWindow window{alerts, world.workspace};
    MWWhiteView panel{window.dropArea()};
    MWOutlinedDragDropView view{window.dropArea().innerArea()};
    QMimeData files;
};

TEST_P(Looks, ofTheMainWindow) {
    UsedMainWindow used;
    expectNoFaults(used.window, "small");
    EXPECT_EQ(used.window.size(), QSize(MainWindow::kMinimumWidth, MainWindow::kSmallHeight));
    used.window.showOutcome({3, 1, 0});
    expectNoFaults(used.window, "outcome");
    used.enter();
    expectNoFaults(used.window, "hover");
    used.disclose();
    expectNoFaults(used.window, "big");
    EXPECT_EQ(used.window.size(), QSize(MainWindow::kMinimumWidth, MainWindow::kBigHeight));
}

TEST_P(Looks, ofTheFindBar) {
    UsedMainWindow used;
    used.disclose();
    used.window.openFindBar();
    expectNoFaults(used.window, "find");
    auto* field = used.window.findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, u"thesis"_s);
    expectNoFaults(used.window, "found");
    QTest::keyClicks(field, u" of nobody"_s);
    expectNoFaults(used.window, "notFound");
    EXPECT_EQ(used.window.size(), QSize(MainWindow::kMinimumWidth, MainWindow::kBigHeight));
}

TEST_P(Looks, ofTheMainWindowAtItsFirstStart) {
    DiskFileWorld world;
    FakeAlerts alerts;
    MainWindow window(alerts, world.workspace);
    const MWWhiteView panel(window.dropArea());
    const MWOutlinedDragDropView view(window.dropArea().innerArea());
    window.setDestination(u"<ASK WHEN SAVING>"_s);
    window.show();
    expectNoFaults(window, "first");
}

TEST_P(Looks, ofThePreferences) {
    PreferencesWindow preferences{UpdateCheck::wired};
    QtToolbarFactory factory{PreferencesWindow::kToolbarHeight};
    MyPrefToolbarDelegate delegate{factory, preferences.window(), preferences.tabView()};
    delegate.awakeFromNib();
    preferences.generalPane().setDestinationIsFixed(true);
    preferences.generalPane().folder().setPath(u"/home/user/Documents/Texts"_s);
    preferences.generalPane().folder().setState(u"Please select a folder or change startup option"_s,
                                                ChosenItem::State::stated);
    preferences.generalPane().document().setState(u"Please select a file or change startup option"_s,
                                                  ChosenItem::State::prompt);
    preferences.updatePane().setLastCheck(u"Nov 22, 2026, 12:24:10 AM"_s);
    preferences.show();
    expectNoFaults(preferences, "general");
    EXPECT_EQ(preferences.height(), 278);
    EXPECT_LE(preferences.width(), preferences.screen()->availableGeometry().width());
    delegate.SetPanelTab(1);
    ASSERT_TRUE(waitUntil([&] { return preferences.height() == 238; }));
    expectNoFaults(preferences, "update");
}

constexpr auto kLeft = Qt::LeftToRight;
constexpr auto kRight = Qt::RightToLeft;

INSTANTIATE_TEST_SUITE_P(
    With, Looks,
    testing::Values(Look{"light10", 10, Theme::light, kLeft}, Look{"light14", 14, Theme::light, kLeft},
                    Look{"light20", 20, Theme::light, kLeft}, Look{"dark10", 10, Theme::dark, kLeft},
                    Look{"dark14", 14, Theme::dark, kLeft}, Look{"contrast10", 10, Theme::contrast, kLeft},
                    Look{"contrast20", 20, Theme::contrast, kLeft}, Look{"reverse10", 10, Theme::light, kRight},
                    Look{"reverse14", 14, Theme::dark, kRight}, Look{"reverse20", 20, Theme::light, kRight}),
    [](const auto& look) { return std::string(look.param.name); });

} // namespace
} // namespace quillow
