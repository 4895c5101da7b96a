// The drop area with its views: which drags it accepts, with which action, its painting at each scale, and its use as
// a button. tests/gui tests drags with a real window system.
#include "platform/qt/dragdrop/DropArea.h"

#include "base/PathBytes.h"
#include "frame/MWOutlinedDragDropView.h"
#include "frame/MWWhiteView.h"
#include "platform/qt/dragdrop/DropRule.h"
#include "tests/platform/Waiting.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QImage>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>
#include <string>

namespace quillow {
namespace {

constexpr DragOperationMask kCopy = 1;
constexpr DragOperationMask kLink = 2;
constexpr DragOperationMask kMove = 16;
constexpr Qt::DropActions kEvery = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;

struct DropCase {
    const char* name;
    DragWay way;
    Qt::DropActions offered;
    DragOperationMask mask;
    Qt::DropAction answer; ///< if the view returns link
    friend void PrintTo(const DropCase& dropCase, std::ostream* out) { *out << dropCase.name; }
};

class DropRule : public testing::TestWithParam<DropCase> {};

TEST_P(DropRule, answersLinkOrCopyWhereLinkCannotBeNamed) {
    const DropCase& drag = GetParam();
    EXPECT_EQ(operationMaskOf(drag.offered, drag.way), drag.mask);
    EXPECT_EQ(dropActionFor(DragOperation::link, drag.offered, drag.way), drag.answer);
    for (const DragOperation other : {DragOperation::none, DragOperation::copy, DragOperation::move})
        EXPECT_EQ(dropActionFor(other, drag.offered, drag.way), Qt::IgnoreAction);
}

INSTANTIATE_TEST_SUITE_P(
    Drags, DropRule,
    testing::Values(DropCase{"directLink", DragWay::direct, Qt::LinkAction, kLink, Qt::LinkAction},
                    DropCase{"directAll", DragWay::direct, kEvery, kCopy | kMove | kLink, Qt::LinkAction},
                    DropCase{"directCopy", DragWay::direct, Qt::CopyAction, kCopy, Qt::IgnoreAction},
                    DropCase{"directCopyAndMove", DragWay::direct, Qt::CopyAction | Qt::MoveAction, kCopy | kMove,
                             Qt::IgnoreAction},
                    DropCase{"directMove", DragWay::direct, Qt::MoveAction, kMove, Qt::IgnoreAction},
                    DropCase{"directNothing", DragWay::direct, Qt::IgnoreAction, 0, Qt::IgnoreAction},
                    DropCase{"bridgedCopy", DragWay::bridged, Qt::CopyAction, kCopy | kLink, Qt::CopyAction},
                    DropCase{"bridgedAll", DragWay::bridged, kEvery, kCopy | kMove | kLink, Qt::LinkAction},
                    DropCase{"bridgedMoveWithShift", DragWay::bridged, Qt::MoveAction, kMove, Qt::IgnoreAction},
                    DropCase{"bridgedNothing", DragWay::bridged, Qt::IgnoreAction, 0, Qt::IgnoreAction},
                    DropCase{"waylandCopy", DragWay::wayland, Qt::CopyAction, kCopy | kLink, Qt::CopyAction},
                    DropCase{"waylandCopyAndMove", DragWay::wayland, Qt::CopyAction | Qt::MoveAction,
                             kCopy | kMove | kLink, Qt::CopyAction},
                    DropCase{"waylandAll", DragWay::wayland, kEvery, kCopy | kMove | kLink, Qt::LinkAction},
                    DropCase{"waylandMove", DragWay::wayland, Qt::MoveAction, kMove, Qt::IgnoreAction},
                    DropCase{"waylandNothingNamed", DragWay::wayland, Qt::IgnoreAction, kLink, Qt::CopyAction}),
    [](const auto& drag) { return std::string(drag.param.name); });

std::optional<QStringList> filesOf(const char* uriList) {
    QMimeData data;
    QList<QUrl> urls;
    for (const QByteArray& line : QByteArray(uriList).split('\n'))
        urls.append(QUrl::fromEncoded(line));
    data.setUrls(urls);
    return localFilesOf(data);
}

TEST(DropFiles, takesPathsInOrderWithoutTrailingSlashes) {
    const QStringList expected{QStringLiteral("/b.rtf"), QStringLiteral("/a b'\"\u00FC.html"),
                               QStringLiteral("/L.rtfd"), QStringLiteral("/b.rtf")};
    EXPECT_EQ(filesOf("file:///b.rtf\nfile:///a%20b'%22%C3%BC.html\nfile:///L.rtfd/\nfile:///b.rtf"), expected);
}

TEST(DropFiles, takesNamesThatAreNotUtf8) {
    EXPECT_EQ(filesOf("file:///caf%E9.rtf"), QStringList{pathFromBytes("/caf\xE9.rtf")});
}

TEST(DropFiles, takesLocalhostAndComments) {
    EXPECT_EQ(filesOf("#files\nfile://localhost/a.rtf"), QStringList{QStringLiteral("/a.rtf")});
}

TEST(DropFiles, refusesWhatIsNoListOfLocalFiles) {
    EXPECT_FALSE(filesOf("https://example.org/a.rtf").has_value());
    EXPECT_FALSE(filesOf("file:///a.rtf\nhttps://example.org/a.rtf").has_value());
    EXPECT_FALSE(filesOf("file://other.example.org/a.rtf").has_value());
    EXPECT_FALSE(filesOf("file:relative.rtf").has_value());
    EXPECT_FALSE(filesOf("file:///a%00.rtf").has_value());
    QMimeData text;
    text.setText(QStringLiteral("/a.rtf"));
    EXPECT_FALSE(localFilesOf(text).has_value());
}

class DropAreaTest : public testing::Test {
protected:
    void SetUp() override {
        area_.resize(587, 114);
        view_.awakeFromNib();
        files_.setUrls({QUrl(QStringLiteral("file:///a.rtf")), QUrl(QStringLiteral("file:///b.rtfd/"))});
    }
    static Qt::DropAction send(DropArea& area, QDropEvent& event) {
        event.ignore();
        QCoreApplication::sendEvent(&area, &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }
    Qt::DropAction enter(const QMimeData& data, Qt::DropActions actions) {
        QDragEnterEvent event({10, 10}, actions, &data, Qt::LeftButton, Qt::NoModifier);
        return send(area_, event);
    }
    Qt::DropAction move(const QMimeData& data, Qt::DropActions actions) {
        QDragMoveEvent event({11, 10}, actions, &data, Qt::LeftButton, Qt::NoModifier);
        return send(area_, event);
    }
    Qt::DropAction drop(const QMimeData& data, Qt::DropActions actions) {
        QDropEvent event({10, 10}, actions, &data, Qt::LeftButton, Qt::NoModifier);
        return send(area_, event);
    }
    void leave() {
        QDragLeaveEvent event;
        QCoreApplication::sendEvent(&area_, &event);
    }

    DragWay way_ = DragWay::direct;
    DropArea area_{[this] { return way_; }};
    MWWhiteView panel_{area_};
    MWOutlinedDragDropView view_{area_};
    QMimeData files_;
    QStringList dropped_;
    Observation observation_ =
        view_.addObserver(QStringLiteral("myFilePathDropped"), [this](const QString&, const KVObject&, const Change&) {
            dropped_.append(*view_.myFilePathDropped());
        });
    const Qt::DropActions every_ = kEvery;
};

TEST_F(DropAreaTest, lightsUpOnlyWhileAnAcceptableDragHovers) {
    EXPECT_EQ(enter(files_, Qt::CopyAction), Qt::IgnoreAction);
    EXPECT_FALSE(view_.hilited());
    EXPECT_EQ(enter(files_, every_), Qt::LinkAction);
    EXPECT_TRUE(view_.hilited());
    leave();
    EXPECT_FALSE(view_.hilited());
}

TEST_F(DropAreaTest, movingKeepsTheAnswerOfTheEntry) {
    EXPECT_EQ(enter(files_, every_), Qt::LinkAction);
    EXPECT_EQ(move(files_, every_), Qt::LinkAction);
    leave();
    EXPECT_EQ(enter(files_, Qt::CopyAction), Qt::IgnoreAction);
    EXPECT_EQ(move(files_, Qt::CopyAction), Qt::IgnoreAction);
}

TEST_F(DropAreaTest, aSourceThatStopsOfferingLinkWhileItHoversGetsNoOtherAnswer) {
    ASSERT_EQ(enter(files_, every_), Qt::LinkAction);
    EXPECT_EQ(move(files_, Qt::MoveAction), Qt::IgnoreAction);
    EXPECT_EQ(move(files_, every_), Qt::LinkAction);
}

TEST_F(DropAreaTest, aDropReportsItsPathsAndAnswersLink) {
    ASSERT_EQ(enter(files_, every_), Qt::LinkAction);
    EXPECT_EQ(drop(files_, every_), Qt::LinkAction);
    EXPECT_EQ(dropped_, (QStringList{QStringLiteral("/a.rtf"), QStringLiteral("/b.rtfd")}));
    EXPECT_FALSE(view_.hilited());
}

TEST_F(DropAreaTest, theSameDropIsReportedAgain) {
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(enter(files_, Qt::LinkAction), Qt::LinkAction);
        drop(files_, Qt::LinkAction);
    }
    EXPECT_EQ(dropped_.size(), 4);
}

TEST_F(DropAreaTest, aDropThatNoLongerOffersLinkIsRefusedAndDarkensTheArea) {
    ASSERT_EQ(enter(files_, Qt::LinkAction), Qt::LinkAction);
    EXPECT_EQ(drop(files_, Qt::MoveAction), Qt::IgnoreAction);
    EXPECT_TRUE(dropped_.isEmpty());
    EXPECT_FALSE(view_.hilited());
}

TEST_F(DropAreaTest, aDropWhoseSourceHasEndedWithItsDataDarkensTheArea) {
    ASSERT_EQ(enter(files_, Qt::LinkAction), Qt::LinkAction);
    EXPECT_EQ(drop(QMimeData(), Qt::LinkAction), Qt::IgnoreAction);
    EXPECT_TRUE(dropped_.isEmpty());
    EXPECT_FALSE(view_.hilited());
}

TEST_F(DropAreaTest, aRefusedEntryIsNoDrop) {
    QMimeData text;
    text.setText(QStringLiteral("/a.rtf"));
    EXPECT_EQ(enter(text, every_), Qt::IgnoreAction);
    EXPECT_EQ(drop(text, every_), Qt::IgnoreAction);
    EXPECT_TRUE(dropped_.isEmpty());
}

TEST_F(DropAreaTest, onlyRegisteredTypesReachTheView) {
    area_.registerForDraggedTypes({QStringLiteral("NSStringPboardType")});
    EXPECT_EQ(enter(files_, every_), Qt::IgnoreAction);
    area_.unregisterDraggedTypes();
    EXPECT_FALSE(area_.acceptDrops());
}

TEST(DropAreaWithoutViews, takesNothing) {
    DropArea area([] { return DragWay::direct; });
    EXPECT_FALSE(area.acceptDrops());
    { const MWDragDropView view(area, Rect{0, 0, 300, 100}); }
    EXPECT_FALSE(area.acceptDrops());
    QMimeData files;
    files.setUrls({QUrl(QStringLiteral("file:///a.rtf"))});
    QDragEnterEvent event({10, 10}, Qt::LinkAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&area, &event);
    EXPECT_FALSE(event.isAccepted());
}

TEST_F(DropAreaTest, takesACopyForALinkOnlyWhereLinkCannotBeNamed) {
    for (const DragWay way : {DragWay::bridged, DragWay::wayland}) {
        way_ = way;
        dropped_.clear();
        EXPECT_EQ(enter(files_, Qt::CopyAction), Qt::CopyAction);
        EXPECT_EQ(move(files_, Qt::MoveAction), Qt::IgnoreAction); // Shift is pressed
        EXPECT_EQ(move(files_, Qt::CopyAction), Qt::CopyAction);
        EXPECT_EQ(drop(files_, Qt::CopyAction), Qt::CopyAction);
        EXPECT_EQ(dropped_.size(), 2);
    }
}

TEST_F(DropAreaTest, theWayOfADragIsFoundWhenItEnters) {
    ASSERT_EQ(enter(files_, Qt::CopyAction), Qt::IgnoreAction);
    leave();
    way_ = DragWay::bridged;
    EXPECT_EQ(enter(files_, Qt::CopyAction), Qt::CopyAction);
    way_ = DragWay::direct; // the source has exited meanwhile
    EXPECT_EQ(drop(files_, Qt::CopyAction), Qt::CopyAction);
}

TEST_F(DropAreaTest, aWaylandDragThatNamesNoActionIsTakenWhenItBringsFiles) {
    way_ = DragWay::wayland;
    QMimeData text;
    text.setText(QStringLiteral("/a.rtf"));
    QDragEnterEvent refused({10, 10}, Qt::IgnoreAction, &text, Qt::LeftButton, Qt::NoModifier);
    send(area_, refused);
    EXPECT_FALSE(refused.isAccepted());
    // A Qt event without an action has no drop action either, so only isAccepted() shows the result.
    QDragEnterEvent entry({10, 10}, Qt::IgnoreAction, &files_, Qt::LeftButton, Qt::NoModifier);
    send(area_, entry);
    EXPECT_TRUE(entry.isAccepted());
    drop(files_, Qt::IgnoreAction);
    EXPECT_EQ(dropped_.size(), 2);
}

TEST_F(DropAreaTest, returnAndSpacePressIt) {
    int presses = 0;
    QObject::connect(&area_, &QAbstractButton::clicked, &area_, [&presses] { ++presses; });
    area_.show();
    QTest::keyClick(&area_, Qt::Key_Return);
    QTest::keyClick(&area_, Qt::Key_Enter, Qt::KeypadModifier);
    QTest::keyClick(&area_, Qt::Key_Space);
    EXPECT_EQ(presses, 3);
    EXPECT_EQ(area_.focusPolicy(), Qt::StrongFocus);
}

// Painting. The tests take a picture at each scale; lengths are in points.

class DropAreaPainting : public DropAreaTest, public testing::WithParamInterface<double> {
protected:
    void SetUp() override {
        DropAreaTest::SetUp();
        // A size that is a whole number of pixels at every scale.
        area_.resize(600, 120);
    }
    QImage picture() {
        QImage image((QSizeF(area_.size()) * GetParam()).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(GetParam());
        image.fill(Qt::red);
        area_.render(&image);
        return image;
    }
    /// Converts points to pixels.
    int pixel(double point) const { return static_cast<int>(point * GetParam()); }
    /// The width of a line on the screen, a whole number of pixels, in points.
    static double shown(double width) { return std::round(width * GetParam()) / GetParam(); }
    /// The darkness of the outline's upper side, summed over its area in square points.
    double ink() {
        const QImage image = picture();
        double darkness = 0;
        for (int x = pixel(100); x < pixel(500); ++x)
            for (int y = pixel(1); y < pixel(6); ++y)
                darkness += 1.0 - qGray(image.pixel(x, y)) / 255.0;
        return darkness / GetParam() / GetParam();
    }
};

TEST_P(DropAreaPainting, thePanelIsWhiteAndItsFrameGrey) {
    const QImage image = picture();
    EXPECT_EQ(image.pixelColor(pixel(300), pixel(10)), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(pixel(1.9), pixel(60)), QColor(Qt::white));
    const QColor gray(0x80, 0x80, 0x80);
    for (const QPoint& edge : {QPoint(0, image.height() / 2), QPoint(image.width() - 1, image.height() / 2),
                               QPoint(image.width() / 2, 0), QPoint(image.width() / 2, image.height() - 1)})
        EXPECT_EQ(image.pixelColor(edge), gray) << edge.x() << ' ' << edge.y();
}

TEST_P(DropAreaPainting, theOutlineIsBlackDashesOfTwoPointsAndGapsOfTwo) {
    const QImage image = picture();
    const int y = pixel(3);
    int black = 0;
    int white = 0;
    int changes = 0;
    bool isDark = false;
    for (int x = pixel(100); x < pixel(500); ++x) {
        const int gray = qGray(image.pixel(x, y));
        black += gray < 8 ? 1 : 0;
        white += gray > 247 ? 1 : 0;
        const bool isDarkNow = gray < 128;
        changes += isDarkNow && !isDark ? 1 : 0;
        isDark = isDarkNow;
    }
    EXPECT_NEAR(changes, 100, 1) << "a dash every four points";
    EXPECT_GT(black, 90);
    EXPECT_GT(white, 90);
    EXPECT_NEAR(ink(), 200 * shown(1), 3) << "half of 400 points, one point wide";
}

TEST_P(DropAreaPainting, theOutlineIsTwiceAsHeavyWhileLit) {
    ASSERT_EQ(enter(files_, Qt::LinkAction), Qt::LinkAction);
    EXPECT_NEAR(ink(), 200 * shown(2), 5);
    leave();
    EXPECT_NEAR(ink(), 200 * shown(1), 3);
}

TEST_P(DropAreaPainting, theOutlinesEdgesAreOnWholePixels) {
    const QImage image = picture();
    for (int y = pixel(1); y < pixel(6); ++y)
        for (int x = pixel(100); x < pixel(500); ++x) {
            const int gray = qGray(image.pixel(x, y));
            EXPECT_TRUE(gray < 8 || gray > 247) << x << ' ' << y << ": " << gray;
        }
}

TEST_P(DropAreaPainting, anOutlineOfTheInnerAreaIsAwayFromTheFrame) {
    QImage before = picture();
    const MWOutlinedDragDropView inner(area_.innerArea());
    EXPECT_EQ(area_.innerArea().bounds().width, 580);
    EXPECT_EQ(area_.innerArea().bounds().height, 100);
    const QImage image = picture();
    int added = 0;
    for (int x = pixel(100); x < pixel(500); ++x) {
        for (int y = pixel(6); y < pixel(12); ++y)
            EXPECT_EQ(image.pixel(x, y), before.pixel(x, y));
        added += qGray(image.pixel(x, pixel(13))) < 8 ? 1 : 0;
    }
    EXPECT_GT(added, 90) << "dashes at 10 and 3 points";
}

TEST_P(DropAreaPainting, aDarkThemeChangesNothingOfIt) {
    const QImage before = picture();
    QPalette dark(QColor(40, 40, 40), QColor(20, 20, 20));
    dark.setColor(QPalette::Highlight, Qt::yellow);
    area_.setPalette(dark);
    EXPECT_EQ(picture(), before);
}

TEST_P(DropAreaPainting, itsTextsAreReadableOnWhite) {
    const QImage image = picture();
    int ink = 0;
    for (int x = pixel(20); x < pixel(580); ++x)
        for (int y = pixel(30); y < pixel(90); ++y)
            ink += qGray(image.pixel(x, y)) < 0x70 ? 1 : 0;
    EXPECT_GT(ink, 300);
}

INSTANTIATE_TEST_SUITE_P(AtScale, DropAreaPainting, testing::Values(1.0, 1.5, 2.0));

TEST(DropAreaFocus, thatOfTheKeyboardIsToBeSeen) {
    QWidget window;
    auto* other = new QPushButton(&window);
    auto* area = new DropArea([] { return DragWay::direct; }, FileTransferPortal(), &window);
    const MWWhiteView panel(*area, Rect{0, 0, 587, 114});
    window.show();
    window.activateWindow();
    ASSERT_TRUE(waitUntil([&] { return window.isActiveWindow(); }));
    other->setFocus();
    const auto picture = [area] {
        QImage image(area->size(), QImage::Format_RGB32);
        area->render(&image);
        return image;
    };
    const QImage without = picture();
    QTest::keyClick(other, Qt::Key_Tab);
    ASSERT_TRUE(area->hasFocus());
    EXPECT_NE(picture(), without);
}

} // namespace
} // namespace quillow
