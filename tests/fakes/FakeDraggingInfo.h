// A drag with the content that the test sets.
#pragma once

#include "platform/Dragging.h"

#include <map>

namespace quillow {

class FakeDraggingInfo final : public DraggingInfo {
public:
    FakeDraggingInfo(DragOperationMask mask, std::map<QString, QStringList> pasteboard)
        : mask_(mask)
        , pasteboard_(std::move(pasteboard)) {}
    /// A drag of files with these paths.
    static FakeDraggingInfo files(DragOperationMask mask, const QStringList& paths) {
        return {mask, {{QString::fromUtf16(kFilenamesPboardType), paths}}};
    }
    /// Keeps the types, but removes their data.
    void loseContents() { isLost_ = true; }

    [[nodiscard]] DragOperationMask draggingSourceOperationMask() const override { return mask_; }
    [[nodiscard]] QStringList types() const override {
        QStringList types;
        for (const auto& [type, contents] : pasteboard_)
            types.append(type);
        return types;
    }
    [[nodiscard]] std::optional<QStringList> propertyListForType(const QString& type) const override {
        const auto found = pasteboard_.find(type);
        if (found == pasteboard_.end() || isLost_) return std::nullopt;
        return found->second;
    }

private:
    DragOperationMask mask_;
    std::map<QString, QStringList> pasteboard_;
    bool isLost_ = false;
};

} // namespace quillow
