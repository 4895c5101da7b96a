#include "engines/pdf/content/Annotations.h"

#include "engines/pdf/content/FittedText.h"

#include <algorithm>
#include <array>

namespace quillow::pdf {

namespace {

/// What the budget is charged, in operators.
constexpr std::size_t kCostOfAnnotation = 50;

/// Annotation flags (12.5.3).
constexpr std::int64_t kHidden = 1 << 1;
constexpr std::int64_t kNoView = 1 << 5;

/// Comments that open in windows of their own, links, and icons of what is not text.
constexpr std::array<std::string_view, 5> kOtherTypes{"Popup", "Text", "Link", "FileAttachment", "Sound"};

Rectangle boxAround(const Matrix& matrix, const Rectangle& r) {
    const std::array corners{matrix.apply(r.left, r.bottom), matrix.apply(r.right, r.bottom),
                             matrix.apply(r.left, r.top), matrix.apply(r.right, r.top)};
    Rectangle box{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
    for (const Vector& corner : corners) {
        box.left = std::min(box.left, corner.x);
        box.right = std::max(box.right, corner.x);
        box.bottom = std::min(box.bottom, corner.y);
        box.top = std::max(box.top, corner.y);
    }
    return box;
}

/// 12.5.5, algorithm "appearance streams": the matrix that moves the form's transformed box onto the annotation's
/// rectangle.
Matrix placingMatrix(const Rectangle& box, const Rectangle& place) {
    const double width = box.right - box.left;
    const double height = box.top - box.bottom;
    const double x = width > 0 ? (place.right - place.left) / width : 1;
    const double y = height > 0 ? (place.top - place.bottom) / height : 1;
    return {x, 0, 0, y, place.left - box.left * x, place.bottom - box.bottom * y};
}

Box boxOf(const Rectangle& r) {
    return {static_cast<float>(r.left), static_cast<float>(r.bottom), static_cast<float>(r.right),
            static_cast<float>(r.top)};
}

} // namespace

void Annotations::show(const PageNode& node, const Matrix& toPage, Page& page) {
    const Object list = document_.get(node.dictionary, "Annots");
    interpreter_.endRun();
    for (const Object& item : list.array()) {
        if (!interpreter_.spend(kCostOfAnnotation)) return;
        showAnnotation(document_.resolve(item).dictionary(), toPage, page);
    }
}

bool Annotations::isShown(const Dictionary& annotation) {
    const std::string_view type = document_.get(annotation, "Subtype").name();
    if (type.empty() || std::find(kOtherTypes.begin(), kOtherTypes.end(), type) != kOtherTypes.end()) return false;
    if ((document_.get(annotation, "F").integerOr(0) & (kHidden | kNoView)) != 0) return false;
    return interpreter_.optionalContent().isShown(annotation.find("OC"));
}

void Annotations::showAnnotation(const Dictionary& annotation, const Matrix& toPage, Page& page) {
    if (!isShown(annotation)) return;
    const Rectangle place = rectangleOf(document_, annotation.find("Rect"), {});
    if (place.right <= place.left || place.top <= place.bottom) return;
    const StreamContent* const appearance = appearanceOf(annotation);
    const std::size_t runs = page.runs.size();
    const Object type = document_.get(annotation, "Subtype");
    const bool isField = type.isName("Widget");
    if (appearance != nullptr) showAppearance(*appearance, place, toPage, isField ? Clipping::off : Clipping::on);
    if (isField) fitRuns(page, runs, boxOf(boxAround(toPage, place)));
    const bool isToMake = appearance == nullptr || (page.runs.size() == runs && fields_.replacesAppearances());
    if (isField && isToMake) fields_.write(annotation, place, toPage, page);
    if (type.isName("FreeText") && appearance == nullptr) fields_.writeFreeText(annotation, place, toPage, page);
}

/// The normal appearance: a form, or a form for each state; /AS names the current state.
const StreamContent* Annotations::appearanceOf(const Dictionary& annotation) {
    const Object normal = document_.get(document_.get(annotation, "AP").dictionary(), "N");
    if (normal.stream() != nullptr) return normal.stream();
    const std::string_view state = document_.get(annotation, "AS").name();
    return document_.get(normal.dictionary(), state).stream();
}

void Annotations::showAppearance(const StreamContent& appearance, const Rectangle& place, const Matrix& toPage,
                                 Clipping clipping) {
    Form& form = interpreter_.forms().formOf(appearance);
    const Rectangle box = boxAround(form.matrix, form.box.value_or(Rectangle{}));
    interpreter_.showForm(form, placingMatrix(box, place) * toPage, kFromAnnotation, clipping);
}

} // namespace quillow::pdf
