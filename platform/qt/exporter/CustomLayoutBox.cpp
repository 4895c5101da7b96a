#include "platform/qt/exporter/CustomLayoutBox.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

namespace quillow {
namespace {

constexpr int kGap = 8;
constexpr int kColumnGap = 16;
constexpr float kQuiet = 0.7F;
constexpr int kCharactersShown = 22;
constexpr int kColumns = 5;

QLabel* makeLabel(const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QFrame* makeLine() {
    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

} // namespace

CustomLayoutBox::CustomLayoutBox(const ExporterOwner& owner)
    : owner_(owner) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap - 2);
    grid->addWidget(makeLine(), 0, 0, 1, kColumns);
    grid->addLayout(makeHeading(), 1, 0, 1, kColumns);
    addText(*grid, 2, 0, QStringLiteral("&Start of file"), QStringLiteral("start_of_file"));
    addText(*grid, 2, 3, QStringLiteral("End of &file"), QStringLiteral("end_of_file"));
    addText(*grid, 3, 0, QStringLiteral("S&tart of record"), QStringLiteral("start_of_record"));
    addText(*grid, 3, 3, QStringLiteral("End of re&cord"), QStringLiteral("end_of_record"));
    addText(*grid, 4, 0, QStringLiteral("&Before a field"), QStringLiteral("field_open_tag"));
    addText(*grid, 4, 3, QStringLiteral("After a f&ield"), QStringLiteral("field_close_tag"));
    addText(*grid, 5, 0, QStringLiteral("Betwee&n fields"), QStringLiteral("field_separator"));
    grid->addWidget(makeLastRecordSwitch(), 5, 3, 1, 2);
    grid->setColumnMinimumWidth(2, kColumnGap - kGap);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(4, 1);
}

QLayout* CustomLayoutBox::makeHeading() {
    auto* title = makeLabel(QStringLiteral("Custom layout"));
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    auto* hint = makeLabel(QStringLiteral("\\n stands for a line feed, \\t for a tab"));
    QPalette colours = hint->palette();
    QColor quiet = colours.color(QPalette::WindowText);
    quiet.setAlphaF(kQuiet);
    colours.setColor(QPalette::WindowText, quiet);
    hint->setPalette(colours);
    auto* heading = new QHBoxLayout;
    heading->setSpacing(kColumnGap);
    heading->addWidget(title);
    heading->addWidget(hint);
    heading->addStretch(1);
    heading->addWidget(makePresets());
    return heading;
}

void CustomLayoutBox::unbind() {
    bindings_.clear();
}

void CustomLayoutBox::addText(QGridLayout& grid, int row, int column, const QString& title, const QString& key) {
    auto* field = new QLineEdit;
    field->setObjectName(key);
    field->setAccessibleName(QString(title).remove(u'&'));
    field->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    field->setMinimumWidth(field->fontMetrics().averageCharWidth() * kCharactersShown);
    auto* label = new QLabel(title);
    label->setBuddy(field);
    grid.addWidget(label, row, column);
    grid.addWidget(field, row, column + 1);
    bindings_.bindText(field, owner_.properties, key);
}

QWidget* CustomLayoutBox::makePresets() {
    auto* button = new QPushButton(QStringLiteral("&Presets"));
    button->setAccessibleDescription(QStringLiteral("Fill the custom layout with that of another format"));
    button->setToolTip(button->accessibleDescription());
    button->setAutoDefault(false);
    auto* menu = new QMenu(button);
    int tag = 0;
    for (const QString& title : {QStringLiteral("&Tab-separated"), QStringLiteral("&Comma-separated"),
                                 QStringLiteral("&HTML table"), QStringLiteral("HTML &page")}) {
        ++tag;
        bindings_.bindAction(menu->addAction(title), [this, tag] {
            const ActionSender sender{tag};
            owner_.actions.setCustomFields(&sender);
        });
    }
    button->setMenu(menu);
    return button;
}

QWidget* CustomLayoutBox::makeLastRecordSwitch() {
    auto* box = new QCheckBox(QStringLiteral("End the last rec&ord, too"));
    box->setObjectName(QStringLiteral("use_end_of_record_in_last_record"));
    bindings_.bindSwitch(box, owner_.properties, box->objectName());
    return box;
}

} // namespace quillow
