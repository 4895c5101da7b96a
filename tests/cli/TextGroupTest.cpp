// The order in which texts reach the disk, get their names, and are told: a crash of the system at any moment leaves whole
// texts only, and no result without its text.
#include "cli/TextGroup.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace quillow::cli {
namespace {

using Log = std::vector<std::string>;

/// Records what happens to it.
class RecordedText final : public UnnamedText {
public:
    RecordedText(std::string name, Log& log, bool reachesDisk = true)
        : name_(std::move(name))
        , log_(log)
        , reachesDisk_(reachesDisk) {}
    ~RecordedText() override {
        if (!isPlaced_) log_.push_back("drop " + name_);
    }
    std::optional<OutputFailure> sync(Together together) override {
        log_.push_back((together == Together::yes ? "look at " : "sync ") + name_);
        return reachesDisk_ ? std::nullopt : std::optional(OutputFailure{"Input/output error"});
    }
    std::optional<OutputFailure> place() override {
        log_.push_back("name " + name_);
        isPlaced_ = true;
        return std::nullopt;
    }

private:
    std::string name_;
    Log& log_;
    bool reachesDisk_;
    bool isPlaced_ = false;
};

struct TextGroupTest : testing::Test {
    Log log;
    bool canSyncTogether = true;
    std::size_t stopAfter = 1000;
    TextGroup group{[this] {
                        log.emplace_back("sync all");
                        return canSyncTogether;
                    },
                    [this](std::size_t index, const Result& result, const std::optional<OutputFailure>& failure) {
                        EXPECT_FALSE(result.unnamed);
                        log.push_back("tell " + std::to_string(index) + (failure ? ": " + failure->detail : ""));
                        return index < stopAfter ? Next::goOn : Next::stop;
                    }};

    Result text(const std::string& name, bool reachesDisk = true) {
        Result result;
        result.unnamed = std::make_shared<RecordedText>(name, log, reachesDisk);
        return result;
    }
};

TEST_F(TextGroupTest, noTextHasItsNameBeforeTheSyncThatCoversItNorItsResultBeforeItsName) {
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(group.add(i, text(std::string(1, static_cast<char>('a' + i))), Following::arrived), Next::goOn);
    EXPECT_EQ(log, Log{});
    EXPECT_EQ(group.add(3, text("d"), Following::none), Next::goOn);
    EXPECT_EQ(log, (Log{"sync all", "look at a", "name a", "tell 0", "look at b", "name b", "tell 1", "look at c",
                        "name c", "tell 2", "look at d", "name d", "tell 3"}));
}

TEST_F(TextGroupTest, aTextWrittenAfterASyncWaitsForTheNextOne) {
    for (std::size_t i = 0; i < 4; ++i)
        static_cast<void>(group.add(i, text("x"), i < 3 ? Following::arrived : Following::none));
    log.clear();
    static_cast<void>(group.add(4, text("a"), Following::none));
    EXPECT_EQ(log, (Log{"sync a", "name a", "tell 4"}));
}

TEST_F(TextGroupTest, aFewTextsAreSyncedOneByOne) {
    static_cast<void>(group.add(0, text("a"), Following::arrived));
    static_cast<void>(group.add(1, text("b"), Following::none));
    EXPECT_EQ(log, (Log{"sync a", "name a", "tell 0", "sync b", "name b", "tell 1"}));
}

TEST_F(TextGroupTest, ifTheyCannotBeSyncedTogetherEachIsSyncedAlone) {
    canSyncTogether = false;
    for (std::size_t i = 0; i < 4; ++i)
        static_cast<void>(group.add(i, text("x"), i < 3 ? Following::arrived : Following::none));
    EXPECT_EQ(log, (Log{"sync all", "sync x", "name x", "tell 0", "sync x", "name x", "tell 1", "sync x", "name x",
                        "tell 2", "sync x", "name x", "tell 3"}));
}

TEST_F(TextGroupTest, aTextThatDoesNotReachTheDiskGetsNoName) {
    static_cast<void>(group.add(0, text("a", false), Following::arrived));
    static_cast<void>(group.add(1, text("b"), Following::none));
    EXPECT_EQ(log, (Log{"sync a", "drop a", "tell 0: Input/output error", "sync b", "name b", "tell 1"}));
}

TEST_F(TextGroupTest, resultsWithoutATextKeepTheirPlace) {
    static_cast<void>(group.add(0, Result(), Following::arrived));
    static_cast<void>(group.add(1, text("b"), Following::arrived));
    static_cast<void>(group.add(2, Result(), Following::none));
    EXPECT_EQ(log, (Log{"tell 0", "sync b", "name b", "tell 1", "tell 2"}));
}

TEST_F(TextGroupTest, afterAStopTheRestIsDropped) {
    stopAfter = 0;
    static_cast<void>(group.add(0, text("a"), Following::arrived));
    EXPECT_EQ(group.add(1, text("b"), Following::none), Next::stop);
    EXPECT_EQ(log, (Log{"sync a", "name a", "tell 0", "drop b"}));
}

TEST_F(TextGroupTest, aGroupIsBounded) {
    for (std::size_t i = 0; i + 1 < kMaximumGroup; ++i)
        static_cast<void>(group.add(i, Result(), Following::arrived));
    EXPECT_EQ(log, Log{});
    static_cast<void>(group.add(kMaximumGroup - 1, Result(), Following::arrived));
    EXPECT_EQ(log.size(), kMaximumGroup);
}

} // namespace
} // namespace quillow::cli
