// One worker from the parent's side, with a thread in its place that says what the test wants.
#include "worker/Worker.h"

#include "worker/Wire.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <algorithm>
#include <optional>
#include <string>
#include <thread>

namespace quillow::worker {
namespace {

/// The worker's end of a channel.
struct WorkerTest : testing::Test {
    WorkerTest() {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
        other = FileDescriptor(ends[1]);
        worker.emplace(StartedProcess{Process(-1), FileDescriptor(ends[0])});
        say(encodeGreeting({}), {});
    }

    void say(const std::string& body, const std::string& bytes) const {
        const EncodedSizes sizes = encode({body.size(), bytes.size()});
        EXPECT_TRUE(writeAll(other.number(), std::string(sizes.data(), sizes.size()) + body + bytes));
    }
    /// Answers what the parent has asked, so often.
    void answer(int times, const std::string& text) const {
        std::string asked(4096, '\0');
        const ssize_t got = ::read(other.number(), asked.data(), asked.size());
        ASSERT_GT(got, 0);
        EncodedSizes sizes{};
        std::copy_n(asked.begin(), sizes.size(), sizes.begin());
        const auto request = decodeRequest(std::string_view(asked).substr(sizes.size(), decodeSizes(sizes).body));
        ASSERT_TRUE(request);
        Extraction extraction;
        extraction.reason = Reason::ok;
        extraction.text = text;
        for (int i = 0; i < times; ++i)
            say(encodeAnswer(request->token, extraction), text);
    }
    Worker::Outcome read(const std::string& document) {
        Limits limits;
        limits.time = std::chrono::seconds(20);
        return worker->read({std::as_bytes(std::span(document))}, {}, limits);
    }

    FileDescriptor other;
    std::optional<Worker> worker;
};

TEST_F(WorkerTest, anAnswerIsTakenOnce) {
    std::thread answering([this] { answer(1, "text\n"); });
    const Worker::Outcome outcome = read("document");
    answering.join();
    EXPECT_EQ(outcome.fate, Worker::Fate::usable);
    EXPECT_EQ(outcome.extraction.text, "text\n");
    EXPECT_TRUE(worker->isReady());
}

TEST_F(WorkerTest, aWorkerThatSpeaksUnaskedIsNotReady) {
    std::thread answering([this] { answer(2, "text\n"); });
    EXPECT_EQ(read("document").extraction.text, "text\n");
    answering.join();
    EXPECT_FALSE(worker->isReady());
}

TEST_F(WorkerTest, anAnswerThatWasPreparedForTheNextDocumentIsNotTaken) {
    std::thread answering([this] { answer(2, "prepared\n"); });
    static_cast<void>(read("document"));
    answering.join();
    // As if it had come just after the question whether the worker is ready.
    EXPECT_EQ(read("next").fate, Worker::Fate::unbegun);
}

TEST_F(WorkerTest, oneThatEndsBeforeItHasReadTheDocumentHasNotBegun) {
    other.close();
    EXPECT_EQ(read("document").fate, Worker::Fate::unbegun);
}

TEST_F(WorkerTest, oneThatEndsAfterItHasReadTheDocumentHasCrashed) {
    std::thread reading([this] {
        std::string asked(4096, '\0');
        EXPECT_GT(::read(other.number(), asked.data(), asked.size()), 0);
        other.close();
    });
    const Worker::Outcome outcome = read("document");
    reading.join();
    EXPECT_EQ(outcome.fate, Worker::Fate::ended);
    EXPECT_EQ(outcome.extraction.reason, Reason::crashed);
}

} // namespace
} // namespace quillow::worker
