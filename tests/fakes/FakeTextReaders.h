// Text readers that answer what the test scripted for a document's bytes; other bytes are their own text.
#pragma once

#include "platform/TextReaders.h"
#include "tests/fakes/Journal.h"

#include <QHash>

#include <functional>
#include <utility>
#include <vector>

namespace quillow {

/// What the three readers share.
class FakeReading {
public:
    /// The answer for exactly these bytes; nothing stands for a document without text.
    void script(const QByteArray& bytes, const std::optional<QByteArray>& text) { scripted_.insert(bytes, text); }
    /// The answer for absent bytes, which is nothing unless the test says otherwise.
    void scriptAbsent(const QByteArray& text) { scriptedAbsent_ = text; }
    /// Called at every reading, before it answers.
    void onRead(std::function<void()> handler) { handler_ = std::move(handler); }
    /// What was asked for, in order; nothing stands for absent bytes.
    [[nodiscard]] const std::vector<std::optional<QByteArray>>& read() const { return read_; }

protected:
    explicit FakeReading(Journal& journal)
        : journal_(journal) {}
    ~FakeReading() = default;

    std::optional<QByteArray> answer(const std::optional<QByteArray>& bytes, const QString& entry) {
        journal_.add(entry);
        read_.push_back(bytes);
        if (handler_) handler_();
        if (!bytes) return scriptedAbsent_;
        return scripted_.value(*bytes, bytes);
    }

private:
    Journal& journal_;
    QHash<QByteArray, std::optional<QByteArray>> scripted_;
    std::optional<QByteArray> scriptedAbsent_;
    std::function<void()> handler_;
    std::vector<std::optional<QByteArray>> read_;
};

class FakeRtfTextReader final : public RtfTextReader, public FakeReading {
public:
    explicit FakeRtfTextReader(Journal& journal)
        : FakeReading(journal) {}
    [[nodiscard]] std::optional<AttributedString> initWithRTF(const std::optional<QByteArray>& bytes) override {
        const auto text = answer(bytes, QStringLiteral("readRTF"));
        return text ? std::optional(AttributedString{*text}) : std::nullopt;
    }
};

class FakeHtmlTextReader final : public HtmlTextReader, public FakeReading {
public:
    explicit FakeHtmlTextReader(Journal& journal)
        : FakeReading(journal) {}
    [[nodiscard]] std::optional<AttributedString> initWithHTML(const QByteArray& bytes) override {
        const auto text = answer(bytes, QStringLiteral("readHTML"));
        return text ? std::optional(AttributedString{*text}) : std::nullopt;
    }
};

class FakePdfTextReader final : public PdfTextReader, public FakeReading {
public:
    explicit FakePdfTextReader(Journal& journal)
        : FakeReading(journal) {}
    [[nodiscard]] std::optional<QByteArray> stringOfPDF(const QByteArray& bytes) override {
        return answer(bytes, QStringLiteral("readPDF"));
    }
};

} // namespace quillow
