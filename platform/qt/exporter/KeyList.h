// A list of the exporter's fields. It synchronises its selection with the exporter's.
#pragma once

#include "base/ArrayController.h"

#include <QListWidget>

#include <functional>

namespace quillow {

class KeyList final : public QListWidget {
public:
    explicit KeyList(ArrayController& controller);
    ~KeyList() override;
    /// After this call the list no longer accesses the controller.
    void unbind();

    /// Called after every change of the fields or of the selection.
    void setChangeHandler(std::function<void()> handler) { changeHandler_ = std::move(handler); }

    [[nodiscard]] QSize sizeHint() const override;

private:
    void showArray();
    void storeSelection();

    ArrayController* controller_;
    Boxed::Array shown_;
    std::function<void()> changeHandler_;
    bool isShowing_ = false; ///< true while code, not the user, changes the list
};

} // namespace quillow
