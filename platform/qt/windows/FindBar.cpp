#include "platform/qt/windows/FindBar.h"

#include "platform/qt/controls/QuietText.h"
#include "platform/qt/windows/QtLogView.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>

namespace quillow {
namespace {

constexpr int kGap = 6;
constexpr int kLeastField = 16; ///< average characters

/// The start of a place of the text, -1 if there is none. The search wraps.
qsizetype placeIn(const QString& log, const QString& text, qsizetype from, FindStep step) {
    if (step != FindStep::previous) {
        const qsizetype place = log.indexOf(text, from, Qt::CaseInsensitive);
        return place >= 0 ? place : log.indexOf(text, 0, Qt::CaseInsensitive);
    }
    // A negative start would count from the end.
    const qsizetype place = from > 0 ? log.lastIndexOf(text, from - 1, Qt::CaseInsensitive) : -1;
    return place >= 0 ? place : log.lastIndexOf(text, -1, Qt::CaseInsensitive);
}

} // namespace

FindBar::FindBar(QtLogView& logView)
    : logView_(logView)
    , line_(new QHBoxLayout)
    , rows_(new QVBoxLayout(this))
    , field_(new QLineEdit)
    , note_(new NoteLabel(QString())) {
    setObjectName(QStringLiteral("findBar"));
    field_->setAccessibleName(QStringLiteral("Find in the message log"));
    field_->setPlaceholderText(QStringLiteral("Find in the log"));
    field_->setClearButtonEnabled(true);
    note_->setObjectName(QStringLiteral("findNote"));
    note_->setWordWrap(false);
    note_->hide();

    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setSpacing(kGap);
    rows_->addLayout(line_);
    line_->setSpacing(kGap);
    line_->addWidget(field_, 1);
    line_->addWidget(note_);
    addButton(QStringLiteral("Previous"), QStringLiteral("Find the previous place (Shift+F3)"), &FindBar::findPrevious);
    addButton(QStringLiteral("Next"), QStringLiteral("Find the next place (F3)"), &FindBar::findNext);
    addButton(QStringLiteral("Close"), QStringLiteral("Close the find bar (Esc)"), &FindBar::closeBar);
    connect(field_, &QLineEdit::textEdited, this, &FindBar::findTyped);
    // The clear button.
    connect(field_, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text.isEmpty()) say(QString());
    });
}

void FindBar::addButton(const QString& title, const QString& description, void (FindBar::*action)()) {
    auto* button = new QToolButton;
    button->setText(title);
    button->setToolTip(description);
    button->setAccessibleDescription(description);
    connect(button, &QToolButton::clicked, this, action);
    line_->addWidget(button);
}

void FindBar::takePlaceInTabOrder() {
    QWidget* before = &logView_;
    for (int i = 0; i < line_->count(); ++i) {
        QWidget* control = line_->itemAt(i)->widget();
        if (control->focusPolicy() == Qt::NoFocus) continue;
        setTabOrder(before, control);
        before = control;
    }
}

void FindBar::open() {
    isFocusDue_ = true;
    show();
    if (isVisible()) takeFocus();
}

void FindBar::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (isFocusDue_) takeFocus();
}

void FindBar::takeFocus() {
    isFocusDue_ = false;
    field_->setFocus(Qt::ShortcutFocusReason);
    field_->selectAll();
}

void FindBar::find(FindStep step) {
    if (field_->text().isEmpty()) {
        open();
        return;
    }
    const bool isFound = select(field_->text(), step);
    if (!isFound) show();
    say(isFound ? QString() : QStringLiteral("Not found"));
}

void FindBar::findTyped() {
    if (!field_->text().isEmpty()) find(FindStep::here);
}

bool FindBar::select(const QString& text, FindStep step) {
    QTextCursor cursor = logView_.textCursor();
    const int from = step == FindStep::next ? cursor.selectionEnd() : cursor.selectionStart();
    const qsizetype place = placeIn(logView_.string(), text, from, step);
    const int start = place < 0 ? cursor.selectionStart() : static_cast<int>(place);
    const int length = place < 0 ? 0 : static_cast<int>(text.size());
    // The cursor is at the start of the selection, so that the Return key opens a path that was found.
    cursor.setPosition(start + length);
    cursor.setPosition(start, QTextCursor::KeepAnchor);
    logView_.setTextCursor(cursor);
    if (place >= 0) logView_.ensureCursorVisible();
    return place >= 0;
}

void FindBar::say(const QString& note) {
    note_->setText(note);
    note_->setVisible(!note.isEmpty());
    field_->setAccessibleDescription(note);
    placeNote();
}

void FindBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    placeNote();
}

void FindBar::placeNote() {
    int rest = width() - note_->sizeHint().width();
    for (const auto* button : findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly))
        rest -= button->sizeHint().width() + kGap;
    const bool isBeside = rest - kGap >= fontMetrics().averageCharWidth() * kLeastField;
    QBoxLayout* place = isBeside ? line_ : rows_;
    if (place->indexOf(note_) >= 0) return;
    (isBeside ? rows_ : line_)->removeWidget(note_);
    place->insertWidget(1, note_);
}

void FindBar::closeBar() {
    logView_.setFocus(Qt::OtherFocusReason);
    hide();
}

void FindBar::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape)
        closeBar();
    else if (isReturn && field_->hasFocus())
        find(event->modifiers().testFlag(Qt::ShiftModifier) ? FindStep::previous : FindStep::next);
    else
        QWidget::keyPressEvent(event);
}

} // namespace quillow
