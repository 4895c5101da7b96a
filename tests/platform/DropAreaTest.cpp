// The drop area: which drags it takes, what it answers, and its life as a button. Drags over a real window system are in
// tests/gui.
#include "platform/qt/DropArea.h"

#include "platform/qt/PathBytes.h"

#include <QDragEnterEvent>
#include <QImage>
#include <QMimeData>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>

namespace quillow {
namespace {

TEST(DropRule, answersLinkWhereverLinkIsOffered) {
    EXPECT_EQ(answerFor(Qt::LinkAction, LinkAction::expressible), Qt::LinkAction);
    EXPECT_EQ(answerFor(Qt::CopyAction | Qt::MoveAction | Qt::LinkAction, LinkAction::expressible), Qt::LinkAction);
}

TEST(DropRule, refusesCopyAndMoveAlone) {
    EXPECT_EQ(answerFor(Qt::CopyAction, LinkAction::expressible), Qt::IgnoreAction);
    EXPECT_EQ(answerFor(Qt::MoveAction, LinkAction::expressible), Qt::IgnoreAction);
    EXPECT_EQ(answerFor(Qt::CopyAction | Qt::MoveAction, LinkAction::expressible), Qt::IgnoreAction);
    EXPECT_EQ(answerFor(Qt::IgnoreAction, LinkAction::expressible), Qt::IgnoreAction);
}

TEST(DropRule, answersCopyOnlyWhereLinkCannotBeSaid) {
    EXPECT_EQ(answerFor(Qt::CopyAction | Qt::MoveAction, LinkAction::missing), Qt::CopyAction);
    EXPECT_EQ(answerFor(Qt::MoveAction, LinkAction::missing), Qt::IgnoreAction);
}

std::optional<QStringList> filesOf(const char* uriList) {
    QMimeData data;
    QList<QUrl> urls;
    for (const QByteArray& line : QByteArray(uriList).split('\n'))
        urls.append(QUrl::fromEncoded(line));
    data.setUrls(urls);
    return localFilesOf(data);
}

TEST(DropRule, takesPathsInOrderWithoutTrailingSlashes) {
    const QStringList expected{QStringLiteral("/b.rtf"), QStringLiteral("/a b'\"\u00FC.html"),
                               QStringLiteral("/L.rtfd"), QStringLiteral("/b.rtf")};
    EXPECT_EQ(filesOf("file:///b.rtf\nfile:///a%20b'%22%C3%BC.html\nfile:///L.rtfd/\nfile:///b.rtf"), expected);
}

TEST(DropRule, takesNamesThatAreNotUtf8) {
    EXPECT_EQ(filesOf("file:///caf%E9.rtf"), QStringList{pathFromBytes("/caf\xE9.rtf")});
}

TEST(DropRule, takesLocalhostAndComments) {
    EXPECT_EQ(filesOf("#files\nfile://localhost/a.rtf"), QStringList{QStringLiteral("/a.rtf")});
}

TEST(DropRule, refusesWhatIsNoListOfLocalFiles) {
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
        area_.setDropHandler([this](const QStringList& paths) { dropped_.append(paths); });
        files_.setUrls({QUrl(QStringLiteral("file:///a.rtf")), QUrl(QStringLiteral("file:///b.rtfd/"))});
    }
    bool enter(const QMimeData& data, Qt::DropActions actions) {
        QDragEnterEvent event({10, 10}, actions, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&area_, &event);
        return event.isAccepted();
    }
    Qt::DropAction drop(const QMimeData& data, Qt::DropActions actions) {
        QDropEvent event({10, 10}, actions, &data, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(&area_, &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }
    void leave() {
        QDragLeaveEvent event;
        QCoreApplication::sendEvent(&area_, &event);
    }
    /// How much of the outline's upper side is drawn.
    int ink() {
        QImage image(area_.size(), QImage::Format_RGB32);
        area_.render(&image);
        int changed = 0;
        for (int x = 100; x < 200; ++x)
            for (int y = 1; y < 6; ++y)
                if (image.pixelColor(x, y) != area_.palette().color(QPalette::Base)) ++changed;
        return changed;
    }

    DropArea area_{LinkAction::expressible};
    QMimeData files_;
    QStringList dropped_;
};

TEST_F(DropAreaTest, lightsUpOnlyWhileAnAcceptableDragHovers) {
    EXPECT_FALSE(enter(files_, Qt::CopyAction));
    EXPECT_FALSE(area_.isHilited());
    EXPECT_TRUE(enter(files_, Qt::CopyAction | Qt::LinkAction));
    EXPECT_TRUE(area_.isHilited());
    leave();
    EXPECT_FALSE(area_.isHilited());
}

TEST_F(DropAreaTest, theOutlineIsHeavierWhileLit) {
    const int before = ink();
    ASSERT_TRUE(enter(files_, Qt::LinkAction));
    const int lit = ink();
    leave();
    EXPECT_GT(lit, before);
    EXPECT_EQ(ink(), before);
}

TEST_F(DropAreaTest, aDropReportsItsPathsAndAnswersLink) {
    ASSERT_TRUE(enter(files_, Qt::CopyAction | Qt::LinkAction));
    EXPECT_EQ(drop(files_, Qt::CopyAction | Qt::LinkAction), Qt::LinkAction);
    EXPECT_EQ(dropped_, (QStringList{QStringLiteral("/a.rtf"), QStringLiteral("/b.rtfd")}));
    EXPECT_FALSE(area_.isHilited());
}

TEST_F(DropAreaTest, theSameDropIsReportedAgain) {
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(enter(files_, Qt::LinkAction));
        drop(files_, Qt::LinkAction);
    }
    EXPECT_EQ(dropped_.size(), 4);
}

TEST_F(DropAreaTest, aDropThatNoLongerOffersLinkIsRefused) {
    ASSERT_TRUE(enter(files_, Qt::LinkAction));
    EXPECT_EQ(drop(files_, Qt::MoveAction), Qt::IgnoreAction);
    EXPECT_TRUE(dropped_.isEmpty());
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

} // namespace
} // namespace quillow
