// What is wrong with the geometry of a window's widgets: texts that are cut, controls outside of their window, controls
// that overlap, and English titles whose last sign is at their beginning.
#pragma once

#include "platform/qt/controls/ElidedLabel.h"
#include "platform/qt/dragdrop/DropArea.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QStringList>
#include <QStyle>
#include <QTextLayout>
#include <QWidget>

namespace quillow {

namespace detail {

inline QString nameOf(const QWidget& widget) {
    QString text = widget.accessibleName();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) text = button->text();
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) text = label->text();
    return QString::fromLatin1(widget.metaObject()->className()) + QStringLiteral(" '%1'").arg(text.left(60));
}

/// A widget that the user sees as one thing, and not as a frame around others.
inline bool isControl(const QWidget& widget) {
    return qobject_cast<const QLabel*>(&widget) || qobject_cast<const QAbstractButton*>(&widget) ||
           qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QPlainTextEdit*>(&widget) ||
           qobject_cast<const QLineEdit*>(&widget);
}

inline QString cutText(const QWidget& widget) {
    const auto fault = [&widget](const QSize& need) {
        return QStringLiteral("%1 is cut: %2x%3 of %4x%5")
            .arg(nameOf(widget))
            .arg(widget.width())
            .arg(widget.height())
            .arg(need.width())
            .arg(need.height());
    };
    if (const auto* elided = dynamic_cast<const ElidedLabel*>(&widget)) {
        // Eliding is no cut, but what is left must be inside.
        const int shown = elided->fontMetrics().horizontalAdvance(elided->shownText());
        const bool fits =
            shown <= elided->width() && (shown == 0 || elided->height() >= elided->fontMetrics().height());
        return fits ? QString() : fault({shown, elided->fontMetrics().height()});
    }
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        const QSize need =
            label->wordWrap() ? QSize(label->width(), label->heightForWidth(label->width())) : label->sizeHint();
        return label->width() < need.width() || label->height() < need.height() ? fault(need) : QString();
    }
    if (const auto* area = dynamic_cast<const DropArea*>(&widget)) {
        const DropContent content = area->content();
        QList<QRectF> places{content.title};
        for (const QRectF& line : content.hint)
            places.append(line);
        if (content.glyph) places.append(*content.glyph);
        for (qsizetype i = 0; i < places.size(); ++i) {
            if (!area->contentRoom().contains(places[i])) return QStringLiteral("the drop area's texts are cut");
            for (qsizetype j = 0; j < i; ++j)
                if (places[i].intersected(places[j]).height() > 0.01)
                    return QStringLiteral("the drop area's texts overlap");
        }
        return {};
    }
    if (qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QComboBox*>(&widget)) {
        const QSize need = widget.minimumSizeHint().expandedTo(QSize(0, 0));
        return widget.width() < need.width() || widget.height() < need.height() ? fault(need) : QString();
    }
    if (const auto* field = qobject_cast<const QLineEdit*>(&widget)) {
        constexpr int kFewWords = 14; // characters
        const int width = field->fontMetrics().averageCharWidth() * kFewWords;
        const QSize need = field->minimumSizeHint().expandedTo({width, 0});
        return field->width() < need.width() || field->height() < need.height() ? fault(need) : QString();
    }
    return {};
}

/// Whether the title, shown in this reading direction, has its last sign after its last letter.
inline bool endsAtItsEnd(QString title, Qt::LayoutDirection direction) {
    title.remove(u'&');
    qsizetype last = title.size() - 1;
    while (last > 0 && title[last].category() == QChar::Other_Format)
        --last;
    QTextLayout layout(title);
    QTextOption option;
    option.setTextDirection(direction);
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    return last < 1 || line.cursorToX(static_cast<int>(last)) > line.cursorToX(static_cast<int>(last) - 1);
}

} // namespace detail

/// The faults of all visible controls of the window, as readable lines.
[[nodiscard]] inline QStringList faultsOf(const QWidget& window) {
    QStringList faults;
    QList<const QWidget*> controls;
    for (const auto* widget : window.findChildren<const QWidget*>()) {
        const bool isInternal = widget->objectName().startsWith(QStringLiteral("qt_"));
        if (!widget->isVisibleTo(&window) || widget->size().isEmpty() || !detail::isControl(*widget) || isInternal)
            continue;
        // The insides of a control are its own business.
        bool isInside = false;
        for (const QWidget* outer = widget->parentWidget(); outer && outer != &window; outer = outer->parentWidget())
            isInside = isInside || detail::isControl(*outer);
        if (!isInside) controls.append(widget);
    }
    const auto placeOf = [&window](const QWidget* widget) {
        return QRect(widget->mapTo(&window, QPoint(0, 0)), widget->size());
    };
    for (const QWidget* control : controls) {
        const QString cut = detail::cutText(*control);
        if (!cut.isEmpty()) faults.append(cut);
        // What can be scrolled into view may be outside.
        const QScrollArea* scrolled = nullptr;
        for (const QWidget* outer = control->parentWidget(); outer; outer = outer->parentWidget())
            if (!scrolled) scrolled = qobject_cast<const QScrollArea*>(outer);
        QRect room = window.rect();
        if (scrolled) {
            const QWidget* contents = scrolled->widget();
            room = QRect(contents->mapTo(&window, QPoint(0, 0)), contents->size());
        }
        if (!room.contains(placeOf(control))) faults.append(detail::nameOf(*control) + QStringLiteral(" is outside"));
        for (const QWidget* other : controls) {
            if (other >= control || !placeOf(control).intersects(placeOf(other))) continue;
            faults.append(detail::nameOf(*control) + QStringLiteral(" overlaps ") + detail::nameOf(*other));
        }
    }
    QStringList titles;
    for (const auto* button : window.findChildren<const QAbstractButton*>())
        titles.append(button->text());
    for (const auto* item : window.findChildren<const QAction*>())
        titles.append(item->text());
    for (const QString& title : titles)
        if (!detail::endsAtItsEnd(title, window.layoutDirection()))
            faults.append(QStringLiteral("'%1' does not end at its end").arg(title));
    for (const auto* bar : window.findChildren<const QMenuBar*>()) {
        for (const QAction* menu : bar->actions()) {
            if (!menu->isVisible()) continue;
            const QRect place = bar->actionGeometry(const_cast<QAction*>(menu));
            if (place.isEmpty() || !bar->rect().contains(place))
                faults.append(QStringLiteral("the menu '%1' is cut").arg(menu->text()));
        }
    }
    return faults;
}

} // namespace quillow
