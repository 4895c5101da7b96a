#include "engines/pdf/content/FormCache.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillow::pdf {

Matrix matrixOf(Document& document, const Object& object) {
    const Object resolved = document.resolve(object);
    const auto items = resolved.array();
    std::array<double, 6> n{};
    if (items.size() != n.size()) return {};
    for (std::size_t i = 0; i < n.size(); ++i)
        n[i] = document.resolve(items[i]).numberOr(0);
    return {n[0], n[1], n[2], n[3], n[4], n[5]};
}

Form& FormCache::formOf(const StreamContent& stream) {
    std::unique_ptr<Form>& slot = forms_[&stream];
    if (slot) return *slot;
    slot = std::make_unique<Form>();
    Form& form = *slot;
    form.stream = &stream;
    form.matrix = matrixOf(document_, stream.dictionary.find("Matrix"));
    const Object box = document_.get(stream.dictionary, "BBox");
    if (box.array().size() == 4) form.box = rectangleOf(document_, box, {});
    const Object resources = document_.get(stream.dictionary, "Resources");
    form.hasResources = resources.type() == Object::Type::dictionary;
    form.resources = resources.dictionary();
    form.optionalContent = stream.dictionary.find("OC");
    form.canShowText = canShowText(form);
    return form;
}

/// By its resources alone, because decoding costs more than all else. A form without resources uses those of its
/// page. A form that lists Text among its procedure sets (14.2) without having a font means a font of its page.
bool FormCache::canShowText(const Form& form) {
    if (!form.hasResources || form.resources.empty()) return true;
    if (!document_.get(form.resources, "Font").dictionary().empty()) return true;
    const Object procedures = document_.get(form.resources, "ProcSet");
    for (const Object& set : procedures.array())
        if (document_.resolve(set).isName("Text")) return true;
    return hasForms(form.resources);
}

bool FormCache::hasForms(const Dictionary& resources) {
    for (const DictionaryEntry& entry : document_.get(resources, "XObject").dictionary().entries()) {
        const Dictionary xObject = document_.resolve(entry.value).dictionary();
        if (!xObject.empty() && !document_.get(xObject, "Subtype").isName("Image")) return true;
    }
    return false;
}

void FormCache::load(Form& form) {
    if (form.isDecoded) {
        reused_ += form.bytes.size();
        cost_ += form.bytes.size();
        return;
    }
    if (bytes_ > kMaximumFormBytes) forgetUnused();
    const StreamBytes decoded = document_.decode(*form.stream, form.content.raw());
    form.content.adopt(decoded.bytes);
    form.bytes = form.content.guarded();
    form.isComplete = decoded.complete;
    form.isDecoded = true;
    decoded_.push_back(&form);
    bytes_ += form.content.capacity();
    cost_ += form.bytes.size();
}

void FormCache::forgetUnused() {
    std::erase_if(decoded_, [&](Form* form) {
        if (form->uses > 0) return false;
        bytes_ -= form->content.capacity();
        form->content.release();
        form->bytes = {};
        form->isDecoded = false;
        return true;
    });
}

std::size_t FormCache::takeCost() {
    return std::exchange(cost_, 0);
}

} // namespace quillow::pdf
