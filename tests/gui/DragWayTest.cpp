// How the program detects the way of a drag on an X server, from the owner of the drag selection. The test runs on a
// private server and acts as its window manager.
#include "platform/qt/dragdrop/DragWay.h"

#include <QGuiApplication>

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace quillow {
namespace {

/// A client of the X server with its own connection.
class Client {
public:
    Client() {
        xcb_window_t root = screen().root;
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                          XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, checkWindow_, root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    ~Client() { xcb_disconnect(connection_); }

    void manageWindows() {
        setWindowProperty(screen().root);
        setWindowProperty(checkWindow_);
        sync();
    }
    void drag() {
        xcb_set_selection_owner(connection_, window_, atom("XdndSelection"), XCB_CURRENT_TIME);
        sync();
    }
    void forgetManager() {
        xcb_delete_property(connection_, screen().root, atom("_NET_SUPPORTING_WM_CHECK"));
        sync();
    }
    void destroyCheckWindow() {
        xcb_destroy_window(connection_, checkWindow_);
        sync();
    }

private:
    [[nodiscard]] const xcb_screen_t& screen() const {
        return *xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    }
    [[nodiscard]] xcb_atom_t atom(const char* name) const {
        const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(connection_, cookie, nullptr), &std::free);
        return reply->atom;
    }
    void setWindowProperty(xcb_window_t window) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom("_NET_SUPPORTING_WM_CHECK"),
                            XCB_ATOM_WINDOW, 32, 1, &checkWindow_);
    }
    /// Waits for the server. It processes requests in order, so all earlier ones are then done.
    void sync() { static_cast<void>(atom("ATOM")); }

    xcb_connection_t* connection_ = xcb_connect(nullptr, nullptr);
    xcb_window_t window_ = xcb_generate_id(connection_);
    xcb_window_t checkWindow_ = xcb_generate_id(connection_);
};

class DragWayTest : public testing::Test {
protected:
    void TearDown() override { manager_.forgetManager(); }

    Client manager_;
    Client program_;
};

TEST_F(DragWayTest, isDirectWithoutADrag) {
    manager_.manageWindows();
    EXPECT_EQ(wayOfCurrentDrag(), DragWay::direct);
}

TEST_F(DragWayTest, isDirectFromAnotherProgramThanTheWindowManager) {
    manager_.manageWindows();
    program_.drag();
    EXPECT_EQ(wayOfCurrentDrag(), DragWay::direct);
}

TEST_F(DragWayTest, isBridgedWhenTheWindowManagerOwnsTheDrag) {
    manager_.manageWindows();
    manager_.drag();
    EXPECT_EQ(wayOfCurrentDrag(), DragWay::bridged);
}

TEST_F(DragWayTest, isFoundAnewForEachDrag) {
    manager_.manageWindows();
    manager_.drag();
    ASSERT_EQ(wayOfCurrentDrag(), DragWay::bridged);
    program_.drag();
    EXPECT_EQ(wayOfCurrentDrag(), DragWay::direct);
}

TEST_F(DragWayTest, isDirectWithoutAWindowManager) {
    program_.drag();
    EXPECT_EQ(wayOfCurrentDrag(), DragWay::direct);
}

TEST_F(DragWayTest, aWindowManagerThatHasEndedCountsNoMore) {
    manager_.manageWindows();
    manager_.drag();
    manager_.destroyCheckWindow();
    EXPECT_EQ(wayOfCurrentDrag(), DragWay::direct);
}

} // namespace
} // namespace quillow

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
