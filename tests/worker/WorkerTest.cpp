// One worker from the parent's side; the test says in its place what the worker would say.
#include "worker/Worker.h"

#include "worker/Wire.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

namespace quillow::worker {
namespace {

/// The worker's ends of its channels.
struct WorkerTest : testing::Test {
    WorkerTest() {
        StartedProcess started{Process(-1), {}};
        for (std::size_t i = 0; i < kChannels; ++i) {
            int ends[2] = {-1, -1};
            EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
            started.channels[i] = FileDescriptor(ends[0]);
            others[i] = FileDescriptor(ends[1]);
        }
        worker.emplace(std::move(started));
        say(0, encodeGreeting({}), {});
    }

    void say(std::size_t channel, const std::string& body, const std::string& bytes) const {
        const EncodedSizes sizes = encode({body.size(), bytes.size()});
        EXPECT_TRUE(writeAll(others[channel].number(), std::string(sizes.data(), sizes.size()) + body + bytes));
    }
    /// The token of what the parent has asked on the channel.
    [[nodiscard]] Token asked(std::size_t channel) const {
        std::string asked(4096, '\0');
        EXPECT_GT(::read(others[channel].number(), asked.data(), asked.size()), 0);
        EncodedSizes sizes{};
        std::copy_n(asked.begin(), sizes.size(), sizes.begin());
        const auto request = decodeRequest(std::string_view(asked).substr(sizes.size(), decodeSizes(sizes).body));
        EXPECT_TRUE(request);
        return request ? request->token : 0;
    }
    void answer(std::size_t channel, Token token, const std::string& text) const {
        Extraction extraction;
        extraction.reason = Reason::ok;
        extraction.text = text;
        say(channel, encodeAnswer(token, extraction), text);
    }
    void end() {
        for (FileDescriptor& other : others)
            other.close();
    }
    static Limits patient() {
        Limits limits;
        limits.time = std::chrono::seconds(20);
        return limits;
    }
    void send(const std::string& document) { worker->send({std::as_bytes(std::span(document))}, {}, patient()); }
    Worker::Outcome receive() { return worker->receive(patient()); }

    std::array<FileDescriptor, kChannels> others;
    std::optional<Worker> worker;
};

TEST_F(WorkerTest, anAnswerIsTakenOnce) {
    send("document");
    answer(0, asked(0), "text\n");
    const Worker::Outcome outcome = receive();
    EXPECT_EQ(outcome.fate, Worker::Fate::usable);
    EXPECT_EQ(outcome.extraction.text, "text\n");
    EXPECT_TRUE(worker->isReady());
}

TEST_F(WorkerTest, aWorkerThatSpeaksUnaskedIsNotReady) {
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        send("document");
        const Token token = asked(channel);
        answer(channel, token, "text\n");
        EXPECT_EQ(receive().extraction.text, "text\n");
        EXPECT_TRUE(worker->isReady());
    }
    answer(1, 0, "unasked\n");
    EXPECT_FALSE(worker->isReady());
}

TEST_F(WorkerTest, anAnswerThatWasPreparedForTheNextDocumentIsNotTaken) {
    send("document");
    const Token token = asked(0);
    answer(0, token, "text\n");
    answer(1, token, "prepared\n");
    static_cast<void>(receive());
    // As if it had come just after the question whether the worker is ready.
    send("next");
    EXPECT_EQ(receive().fate, Worker::Fate::unbegun);
}

TEST_F(WorkerTest, aDocumentWaitsWhileAnotherOneIsRead) {
    const std::string first = "document";
    const std::string second = "next";
    send(first);
    send(second);
    answer(0, asked(0), "text\n");
    answer(1, asked(1), "next text\n");
    EXPECT_EQ(receive().extraction.text, "text\n");
    EXPECT_EQ(receive().extraction.text, "next text\n");
}

TEST_F(WorkerTest, oneThatEndsBeforeItHasReadTheDocumentHasNotBegun) {
    end();
    send("document");
    EXPECT_EQ(receive().fate, Worker::Fate::unbegun);
}

TEST_F(WorkerTest, oneThatEndsAfterItHasReadTheDocumentHasCrashed) {
    send("document");
    static_cast<void>(asked(0));
    end();
    const Worker::Outcome outcome = receive();
    EXPECT_EQ(outcome.fate, Worker::Fate::ended);
    EXPECT_EQ(outcome.extraction.reason, Reason::crashed);
}

TEST_F(WorkerTest, oneThatEndsWhileADocumentWaitsHasCrashedByTheOneItRead) {
    const std::string first = "document";
    const std::string second = "next";
    send(first);
    send(second);
    static_cast<void>(asked(0));
    end();
    const Worker::Outcome outcome = receive();
    EXPECT_EQ(outcome.fate, Worker::Fate::ended);
    EXPECT_EQ(outcome.extraction.reason, Reason::crashed);
}

TEST_F(WorkerTest, oneThatEndsBetweenTwoDocumentsHasNotBegunTheSecond) {
    const std::string first = "document";
    const std::string second = "next";
    send(first);
    send(second);
    answer(0, asked(0), "text\n");
    end();
    EXPECT_EQ(receive().fate, Worker::Fate::usable);
    EXPECT_EQ(receive().fate, Worker::Fate::unbegun);
}

} // namespace
} // namespace quillow::worker
