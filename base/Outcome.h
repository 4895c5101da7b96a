// What became of the documents of one drop or batch.
#pragma once

#include <QString>

namespace quillow {

struct Outcome {
    int documents = 0;
    int notConverted = 0; ///< without a text
    int notWritten = 0;   ///< the text could not be written; the log counts them as converted

    [[nodiscard]] bool hasFailures() const { return notConverted > 0 || notWritten > 0; }
    /// What the log's last message leaves out, such as "1 not converted"; empty if that is nothing.
    [[nodiscard]] QString remark() const;
    friend bool operator==(const Outcome&, const Outcome&) = default;
};

} // namespace quillow
