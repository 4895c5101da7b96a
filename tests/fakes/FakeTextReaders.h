// Text readers that return the text that the test sets for a document's bytes. Other bytes are returned unchanged.
#pragma once

#include "platform/TextReaders.h"
#include "tests/fakes/Journal.h"

#include <QHash>

#include <functional>
#include <utility>
#include <vector>

namespace quillow {

/// The common part of the three readers.
class FakeReading {
public:
    /// Sets the text of exactly these bytes; std::nullopt means a document without text.
    void script(const QByteArray& bytes, const std::optional<QByteArray>& text) { scripted_.insert(bytes, text); }
    /// Sets the text of absent bytes, which is std::nullopt by default.
    void scriptAbsent(const QByteArray& text) { scriptedAbsent_ = text; }
    /// Sets a function that every read calls before it returns.
    void onRead(std::function<void()> handler) { handler_ = std::move(handler); }
    /// The bytes that were read, in order; std::nullopt means absent bytes.
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
