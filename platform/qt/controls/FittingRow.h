// A row of controls, for a window whose size is fixed and whose font is not. If there is little room, texts that can be
// elided give way in a given order.
#pragma once

#include "platform/qt/controls/RowFitting.h"

#include <QLayout>

#include <memory>
#include <optional>
#include <vector>

namespace quillow {

class FittingRow final : public QLayout {
public:
    explicit FittingRow(int gap);
    ~FittingRow() override;

    /// Adds a control that always has its whole width.
    void addFixed(QWidget* widget);
    /// Adds a text that can be elided down to its least width. See RowPart for the others.
    void addElided(QWidget* widget, int order, int comfortableCharacters);
    /// Adds a text that is shown whole or not at all.
    void addWholeOrNot(QWidget* widget, int order);
    /// The controls added from now on are at the other end of the row.
    void beginFarEnd() { farEnd_ = parts_.size(); }

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override { return static_cast<int>(parts_.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& place) override;

private:
    struct Part {
        std::unique_ptr<QLayoutItem> item;
        int order = 0;
        std::optional<int> comfortableCharacters; ///< of a part that can be elided
        bool mayVanish = false;
    };
    [[nodiscard]] std::vector<RowPart> rowParts() const;
    [[nodiscard]] int height() const;
    [[nodiscard]] QRect inner(const QRect& place) const { return place.marginsRemoved(contentsMargins()); }

    int gap_;
    std::vector<Part> parts_;
    std::size_t farEnd_ = static_cast<std::size_t>(-1);
};

} // namespace quillow
