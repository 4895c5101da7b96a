// Several starts meeting in one folder.
#include "platform/qt/life/SingleInstance.h"

#include "platform/qt/life/WindowActivation.h"

#include <QFile>
#include <QTemporaryDir>
#include <QWidget>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

namespace quillow {
namespace {

using Role = SingleInstance::Role;
using namespace std::chrono_literals;

constexpr auto kLong = 60s;
constexpr auto kShort = 300ms;

Handover handoverOf(const QByteArray& name) {
    return {"", "", "/folder", {name}};
}

class SingleInstanceTest : public testing::Test {
protected:
    QByteArray folder() const { return QFile::encodeName(folder_.path()); }
    QByteArray socketPath() const { return folder() + "/org.quillow.Quillow-display.socket"; }

    /// Receives handovers and records them in order.
    SingleInstance::Receiver receiver() {
        return [this](const Handover& handover) {
            const std::lock_guard lock(mutex_);
            received_.push_back(handover);
            return true;
        };
    }

    /// A raw connection, for a sender that breaks the protocol.
    FileDescriptor connectToFirst() const {
        FileDescriptor connection(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        const QByteArray path = socketPath();
        std::copy(path.begin(), path.end(), address.sun_path);
        EXPECT_EQ(::connect(connection.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        return connection;
    }

    QTemporaryDir folder_;
    std::mutex mutex_;
    std::vector<Handover> received_;
};

TEST_F(SingleInstanceTest, laterOnesHandOverInOrder) {
    SingleInstance first(folder(), "display");
    ASSERT_EQ(first.begin(handoverOf("own"), kLong), Role::first);
    first.serve(receiver());
    EXPECT_EQ(SingleInstance(folder(), "display").begin(handoverOf("a"), kLong), Role::handedOver);
    EXPECT_EQ(SingleInstance(folder(), "display").begin(handoverOf("b"), kLong), Role::handedOver);
    EXPECT_EQ(received_, (std::vector<Handover>{handoverOf("a"), handoverOf("b")}));
}

TEST_F(SingleInstanceTest, aLongMessageArrivesWhole) {
    SingleInstance first(folder(), "display");
    ASSERT_EQ(first.begin({}, kLong), Role::first);
    first.serve(receiver());
    const Handover handover = handoverOf(QByteArray(6 * 1024 * 1024, 'n'));
    EXPECT_EQ(SingleInstance(folder(), "display").begin(handover, kLong), Role::handedOver);
    EXPECT_EQ(received_, std::vector<Handover>{handover});
}

TEST_F(SingleInstanceTest, anotherDisplayIsAnotherProgram) {
    SingleInstance first(folder(), "display");
    ASSERT_EQ(first.begin({}, kLong), Role::first);
    SingleInstance other(folder(), "../display:1/x");
    EXPECT_EQ(other.begin({}, kLong), Role::first);
}

TEST_F(SingleInstanceTest, theNextIsFirstAfterTheEnd) {
    {
        SingleInstance first(folder(), "display");
        ASSERT_EQ(first.begin({}, kLong), Role::first);
        first.serve(receiver());
    }
    EXPECT_FALSE(QFile::exists(QFile::decodeName(socketPath())));
    EXPECT_EQ(SingleInstance(folder(), "display").begin({}, kLong), Role::first);
}

TEST_F(SingleInstanceTest, whatAKilledOneLeavesIsInNobodysWay) {
    // A socket without a listener.
    FileDescriptor left(::socket(AF_UNIX, SOCK_STREAM, 0));
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const QByteArray path = socketPath();
    std::copy(path.begin(), path.end(), address.sun_path);
    ASSERT_EQ(::bind(left.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    left.close();
    ASSERT_TRUE(QFile::exists(QFile::decodeName(path)));
    SingleInstance first(folder(), "display");
    ASSERT_EQ(first.begin({}, kLong), Role::first);
    first.serve(receiver());
    EXPECT_EQ(SingleInstance(folder(), "display").begin(handoverOf("a"), kLong), Role::handedOver);
}

TEST_F(SingleInstanceTest, ofManyAtOneInstantExactlyOneIsFirst) {
    constexpr int kStarts = 16;
    std::atomic<int> firsts = 0;
    std::atomic<int> done = 0;
    std::vector<std::future<Role>> starts;
    for (int i = 0; i < kStarts; ++i) {
        starts.push_back(std::async(std::launch::async, [&, i] {
            SingleInstance instance(folder(), "display");
            const Role role = instance.begin(handoverOf(QByteArray::number(i)), kLong);
            if (role == Role::first) {
                ++firsts;
                instance.serve(receiver());
                while (done < kStarts - 1)
                    std::this_thread::sleep_for(1ms);
            } else {
                ++done;
            }
            return role;
        }));
    }
    int handedOver = 0;
    for (auto& start : starts)
        handedOver += start.get() == Role::handedOver;
    EXPECT_EQ(firsts, 1);
    EXPECT_EQ(handedOver, kStarts - 1);
    EXPECT_EQ(received_.size(), std::size_t{kStarts - 1});
}

TEST_F(SingleInstanceTest, oneThatDoesNotAnswerIsGivenUp) {
    SingleInstance first(folder(), "display"); // listens but never serves, like a stopped process
    ASSERT_EQ(first.begin({}, kLong), Role::first);
    EXPECT_EQ(SingleInstance(folder(), "display").begin(handoverOf("a"), kShort), Role::unanswered);
}

TEST_F(SingleInstanceTest, oneThatIsEndingIsFollowedByTheNext) {
    auto first = std::make_unique<SingleInstance>(folder(), "display");
    ASSERT_EQ(first->begin({}, kLong), Role::first);
    std::promise<void> asked;
    std::once_flag once;
    first->serve([&](const Handover&) {
        std::call_once(once, [&] { asked.set_value(); });
        return false;
    });
    auto next = std::async(std::launch::async, [this] {
        SingleInstance second(folder(), "display");
        return second.begin(handoverOf("a"), kLong);
    });
    asked.get_future().wait();
    first.reset();
    EXPECT_EQ(next.get(), Role::first);
}

TEST_F(SingleInstanceTest, hostileMessagesReachNobody) {
    SingleInstance first(folder(), "display");
    ASSERT_EQ(first.begin({}, kLong), Role::first);
    first.serve(receiver());
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("GET / HTTP/1.1\r\n\r\n"), encodedHandover(handoverOf("x")).chopped(1)}) {
        const FileDescriptor connection = connectToFirst();
        ASSERT_EQ(::send(connection.number(), bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL),
                  bytes.size());
        ::shutdown(connection.number(), SHUT_WR);
        char reply = 0;
        EXPECT_LE(::recv(connection.number(), &reply, 1, 0), 0);
    }
    // More bytes than any start sends: the connection is closed in the middle.
    const FileDescriptor flood = connectToFirst();
    const QByteArray block(1024 * 1024, 'x');
    qsizetype sent = 0;
    while (sent < 3 * kMaximumHandoverSize) {
        const ssize_t count =
            ::send(flood.number(), block.constData(), static_cast<std::size_t>(block.size()), MSG_NOSIGNAL);
        if (count <= 0) break;
        sent += count;
    }
    EXPECT_LT(sent, 2 * kMaximumHandoverSize);
    // A silent connection delays the others only for a moment.
    const FileDescriptor silent = connectToFirst();
    EXPECT_EQ(SingleInstance(folder(), "display").begin(handoverOf("a"), kLong), Role::handedOver);
    EXPECT_EQ(received_, std::vector<Handover>{handoverOf("a")});
}

TEST_F(SingleInstanceTest, onlyAFolderOfTheUsersOwnIsUsed) {
    EXPECT_EQ(SingleInstance("", "display").begin({}, kLong), Role::alone);
    EXPECT_EQ(SingleInstance("relative", "display").begin({}, kLong), Role::alone);
    EXPECT_EQ(SingleInstance(folder() + "/missing", "display").begin({}, kLong), Role::alone);
    const QByteArray link = folder() + "/link";
    ASSERT_EQ(::symlink(folder().constData(), link.constData()), 0);
    EXPECT_EQ(SingleInstance(link, "display").begin({}, kLong), Role::alone);
    ASSERT_EQ(::chmod(folder().constData(), 0750), 0);
    EXPECT_EQ(SingleInstance(folder(), "display").begin({}, kLong), Role::alone);
    ASSERT_EQ(::chmod(folder().constData(), 0700), 0);
    EXPECT_EQ(SingleInstance(folder(), "display").begin({}, kLong), Role::first);
}

TEST_F(SingleInstanceTest, theFoldersPathMayBeLong) {
    QByteArray deep = folder();
    for (int i = 0; i < 4; ++i) {
        deep += '/' + QByteArray(60, 'd');
        ASSERT_EQ(::mkdir(deep.constData(), 0700), 0);
    }
    SingleInstance first(deep, "display");
    ASSERT_EQ(first.begin({}, kLong), Role::first);
    first.serve(receiver());
    EXPECT_EQ(SingleInstance(deep, "display").begin(handoverOf("a"), kLong), Role::handedOver);
}

TEST(StartupId, tellsItsTime) {
    EXPECT_EQ(timeOfStartupId("gnome-shell/Files/1234-2-host_TIME98765"), 98765U);
    EXPECT_EQ(timeOfStartupId("a_TIME1_TIME4294967295"), 4294967295U);
    for (const char* id : {"", "plain", "x_TIME", "x_TIMEabc", "x_TIME99999999999", "x_TIME-1"})
        EXPECT_EQ(timeOfStartupId(id), 0U) << id;
}

TEST(WindowActivation, theStartupIdIsTheTokenOfALauncherThatLeavesNoOther) {
    EXPECT_EQ(activationTokenOf("id_TIME0", ""), "id_TIME0");
    EXPECT_EQ(activationTokenOf("id_TIME0", "token"), "token");
    EXPECT_EQ(activationTokenOf("", "token"), "token");
    EXPECT_EQ(activationTokenOf("", ""), "");
}

TEST(WindowActivation, offScreenAsksTheWindowOnly) {
    QWidget window;
    window.show();
    activateForLauncher(window, "launcher_TIME5", "");
    EXPECT_TRUE(window.isVisible());
}

} // namespace
} // namespace quillow
