#include "platform/qt/exporter/KeyList.h"

#include <QScopedValueRollback>

namespace quillow {
namespace {

constexpr int kCharactersShown = 24;
constexpr int kRowsShown = 7;

QStringList titlesOf(const Boxed::Array& fields) {
    QStringList titles;
    for (const Boxed& field : fields) {
        const Boxed::Dictionary entries = field.dictionary().value_or(Boxed::Dictionary());
        titles.append(entries.value(QStringLiteral("publicKey")).string().value_or(QString()));
    }
    return titles;
}

} // namespace

KeyList::KeyList(ArrayController& controller)
    : controller_(&controller) {
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideRight);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QListWidget::itemSelectionChanged, this, &KeyList::storeSelection);
    controller.setChangeHandler([this] {
        // A selection that the user has just made in this list is shown already.
        if (!isShowing_) showArray();
        if (changeHandler_) changeHandler_();
    });
    showArray();
}

KeyList::~KeyList() {
    unbind();
}

void KeyList::unbind() {
    if (controller_) controller_->setChangeHandler({});
    controller_ = nullptr;
}

QSize KeyList::sizeHint() const {
    return {fontMetrics().averageCharWidth() * kCharactersShown, (fontMetrics().height() + 2) * kRowsShown};
}

void KeyList::showArray() {
    const QScopedValueRollback showing(isShowing_, true);
    const Boxed::Array fields = controller_->arrangedObjects();
    if (shown_ != fields) {
        clear();
        addItems(titlesOf(fields));
        shown_ = fields;
    }
    clearSelection();
    for (const qsizetype index : controller_->selectionIndexes())
        item(static_cast<int>(index))->setSelected(true);
    if (controller_->selectionIndexes().isEmpty()) return;
    // The arrow keys continue from this row.
    const int last = static_cast<int>(controller_->selectionIndexes().constLast());
    selectionModel()->setCurrentIndex(model()->index(last, 0), QItemSelectionModel::NoUpdate);
    scrollToItem(item(last));
}

void KeyList::storeSelection() {
    if (isShowing_ || !controller_) return;
    QList<qsizetype> selected;
    for (const QModelIndex& index : selectionModel()->selectedIndexes())
        selected.append(index.row());
    const QScopedValueRollback showing(isShowing_, true);
    controller_->setSelectionIndexes(selected);
}

} // namespace quillow
