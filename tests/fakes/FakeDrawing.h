// A drawing context that records each call as one line.
#pragma once

#include "platform/Drawing.h"

#include <QString>
#include <QStringList>

namespace quillow {

class FakeDrawing final : public Drawing {
public:
    void setColor(DrawingColor color) override { color_ = color; }
    void fillRect(const Rect& rect) override { drawn_.append(QStringLiteral("fill %1 %2").arg(text(rect), color())); }
    void strokeRect(const Rect& rect, const Stroke& stroke) override {
        drawn_.append(QStringLiteral("stroke %1 %2 %3").arg(text(rect), color(), text(stroke)));
    }
    void strokeRoundedRect(const Rect& rect, double xRadius, double yRadius, const Stroke& stroke) override {
        drawn_.append(QStringLiteral("stroke %1 radii %2,%3 %4 %5")
                          .arg(text(rect), number(xRadius), number(yRadius), color(), text(stroke)));
    }

    /// The calls: the kind, the rectangle, the colour, then the line's width, its dashes and their phase.
    [[nodiscard]] const QStringList& drawn() const { return drawn_; }

private:
    static QString number(double value) { return QString::number(value); }
    static QString text(const Rect& rect) {
        return QStringList{number(rect.x), number(rect.y), number(rect.width), number(rect.height)}.join(u',');
    }
    static QString text(const Stroke& stroke) {
        QString text = QStringLiteral("width ") + number(stroke.lineWidth);
        if (stroke.dash.empty()) return text;
        QStringList lengths;
        for (const double length : stroke.dash)
            lengths.append(number(length));
        return text + QStringLiteral(" dash ") + lengths.join(u',') + QStringLiteral(" phase ") + number(stroke.phase);
    }
    [[nodiscard]] QString color() const {
        switch (color_) {
        case DrawingColor::black: return QStringLiteral("black");
        case DrawingColor::white: return QStringLiteral("white");
        case DrawingColor::gray: return QStringLiteral("gray");
        }
        return {};
    }

    QStringList drawn_;
    DrawingColor color_ = DrawingColor::black;
};

} // namespace quillow
