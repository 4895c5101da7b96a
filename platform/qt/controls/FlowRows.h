// A row of buttons that becomes two rows or more where one is too narrow.
#pragma once

#include <QLayout>

#include <memory>
#include <vector>

namespace quillow {

class FlowRows final : public QLayout {
public:
    explicit FlowRows(int gap);
    ~FlowRows() override;

    /// The last control is at the far end of its row.
    void setLastIsAtFarEnd() { lastIsAtFarEnd_ = true; }

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override { return static_cast<int>(items_.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    void setGeometry(const QRect& place) override;

private:
    [[nodiscard]] std::vector<int> widths() const;
    [[nodiscard]] int rowHeight() const;
    [[nodiscard]] int heightOfRows(std::size_t rows) const;

    int gap_;
    bool lastIsAtFarEnd_ = false;
    std::vector<std::unique_ptr<QLayoutItem>> items_;
};

} // namespace quillow
