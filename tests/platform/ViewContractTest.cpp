// The contract of view areas and of drags, for the real ones and the fakes.
#include "platform/View.h"
#include "platform/qt/dragdrop/DropArea.h"
#include "platform/qt/dragdrop/QtDraggingInfo.h"
#include "tests/fakes/FakeDraggingInfo.h"
#include "tests/fakes/FakeViewArea.h"

#include <QImage>
#include <QMimeData>
#include <QUrl>

#include <gtest/gtest.h>

#include <vector>

namespace quillow {
namespace {

constexpr DragOperationMask kEvery = 1 | 2 | 16;

/// Records its name when it is drawn.
class NotingView final : public View {
public:
    NotingView(ViewArea& area, char name, std::string& drawn)
        : View(area)
        , name_(name)
        , drawn_(drawn) {}
    void drawRect(const Rect&, Drawing&) override { drawn_ += name_; }

private:
    char name_;
    std::string& drawn_;
};

struct FakeViewWorld {
    FakeViewArea area;
    void draw() { static_cast<void>(area.draw(area.bounds())); }
    bool takesDrags() const { return !area.draggedTypes().isEmpty(); }
};

struct QtViewWorld {
    QWidget window;
    DropArea* child = new DropArea([] { return DragWay::direct; }, FileTransferPortal(), &window);
    ViewArea& area = *child;
    QtViewWorld() { window.resize(800, 600); }
    void draw() {
        QImage image(child->size(), QImage::Format_RGB32);
        child->render(&image);
    }
    bool takesDrags() const { return child->acceptDrops(); }
};

template <class World>
class ViewAreaContract : public testing::Test {
protected:
    World world_;
    std::string drawn_;
};
using ViewWorlds = testing::Types<FakeViewWorld, QtViewWorld>;
TYPED_TEST_SUITE(ViewAreaContract, ViewWorlds);

TYPED_TEST(ViewAreaContract, boundsHaveTheFramesSizeAndTheirOwnOrigin) {
    this->world_.area.setFrame({20, 30, 300, 100});
    EXPECT_EQ(this->world_.area.bounds(), (Rect{0, 0, 300, 100}));
}

TYPED_TEST(ViewAreaContract, viewsAreDrawnInTheOrderAddedWhileTheyLive) {
    const NotingView back(this->world_.area, 'b', this->drawn_);
    {
        const NotingView middle(this->world_.area, 'm', this->drawn_);
        const NotingView front(this->world_.area, 'f', this->drawn_);
        this->world_.draw();
    }
    EXPECT_EQ(this->drawn_, "bmf");
    this->drawn_.clear();
    this->world_.draw();
    EXPECT_EQ(this->drawn_, "b");
}

TYPED_TEST(ViewAreaContract, needingDisplayDrawsNothingWithinTheCall) {
    const NotingView view(this->world_.area, 'v', this->drawn_);
    this->world_.area.setNeedsDisplay();
    EXPECT_TRUE(this->drawn_.empty());
}

TYPED_TEST(ViewAreaContract, dragsAreTakenFromRegistrationOn) {
    EXPECT_FALSE(this->world_.takesDrags());
    this->world_.area.registerForDraggedTypes({QString::fromUtf16(kFilenamesPboardType)});
    EXPECT_TRUE(this->world_.takesDrags());
    this->world_.area.unregisterDraggedTypes();
    EXPECT_FALSE(this->world_.takesDrags());
}

TEST(QtViewArea, framesCountFromTheLowerLeftCornerOfTheWindow) {
    QtViewWorld world;
    world.area.setFrame({20, 30, 300, 100});
    EXPECT_EQ(world.child->geometry(), QRect(20, 600 - 30 - 100, 300, 100));
}

/// One drag with all types, with files, or with text.
struct FakeDragWorld {
    FakeDraggingInfo files(const QStringList& paths) { return FakeDraggingInfo::files(kEvery, paths); }
    FakeDraggingInfo text() { return {kEvery, {{QStringLiteral("NSStringPboardType"), {QStringLiteral("/a")}}}}; }
};

struct QtDragWorld {
    QMimeData data;
    FileTransferPortal portal;
    std::vector<std::unique_ptr<QDropEvent>> events;

    QtDraggingInfo info() {
        const Qt::DropActions every = Qt::CopyAction | Qt::LinkAction | Qt::MoveAction;
        events.push_back(std::make_unique<QDropEvent>(QPointF(1, 1), every, &data, Qt::LeftButton, Qt::NoModifier));
        return {*events.back(), DragWay::direct, portal};
    }
    QtDraggingInfo files(const QStringList& paths) {
        QList<QUrl> urls;
        for (const QString& path : paths)
            urls.append(QUrl::fromLocalFile(path));
        data.setUrls(urls);
        return info();
    }
    QtDraggingInfo text() {
        data.setText(QStringLiteral("/a"));
        return info();
    }
};

template <class World>
class DraggingInfoContract : public testing::Test {
protected:
    World world_;
    const QString type_ = QString::fromUtf16(kFilenamesPboardType);
};
using DragWorlds = testing::Types<FakeDragWorld, QtDragWorld>;
TYPED_TEST_SUITE(DraggingInfoContract, DragWorlds);

TYPED_TEST(DraggingInfoContract, filesAreOneTypeAndTheirPathsInOrder) {
    const QStringList paths{QStringLiteral("/b c"), QStringLiteral("/a"), QStringLiteral("/a")};
    const auto info = this->world_.files(paths);
    EXPECT_EQ(info.draggingSourceOperationMask(), kEvery);
    EXPECT_EQ(info.types(), QStringList{this->type_});
    EXPECT_EQ(info.propertyListForType(this->type_), paths);
    EXPECT_FALSE(info.propertyListForType(QStringLiteral("NSStringPboardType")).has_value());
}

TYPED_TEST(DraggingInfoContract, textIsNoFiles) {
    const auto info = this->world_.text();
    EXPECT_EQ(info.draggingSourceOperationMask(), kEvery);
    EXPECT_FALSE(info.types().contains(this->type_));
    EXPECT_FALSE(info.propertyListForType(this->type_).has_value());
}

} // namespace
} // namespace quillow
