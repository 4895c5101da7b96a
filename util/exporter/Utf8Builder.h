// Builds UTF-8 from pieces of UTF-16, so that a long text is never in memory in both encodings.
#pragma once

#include <QByteArray>
#include <QStringView>

namespace quillow {

class Utf8Builder { // selector: none
public:
    /// A surrogate pair may be split between two pieces. A lone surrogate becomes U+FFFD.
    void append(QStringView piece);
    /// The bytes, without byte-order mark; the builder is empty afterwards.
    [[nodiscard]] QByteArray take();

private:
    QByteArray bytes_;
    char16_t pendingHigh_ = 0; ///< a high surrogate that waits for its low surrogate, or 0
};

} // namespace quillow
