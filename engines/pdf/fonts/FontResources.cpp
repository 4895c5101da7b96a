#include "engines/pdf/fonts/FontResources.h"

namespace quillow::pdf {

const CMap* FontResources::cmapOf(const Object& object) {
    const StreamContent* const stream = document_.resolve(object).stream();
    if (stream == nullptr) return nullptr;
    const auto known = cmaps_.find(stream);
    if (known != cmaps_.end()) return &known->second;
    CMap map = CMap::parse(document_.decode(*stream, buffer_).bytes);
    return &cmaps_.emplace(stream, std::move(map)).first->second;
}

EmbeddedFont* FontResources::programOf(const Object& object) {
    const StreamContent* const stream = document_.resolve(object).stream();
    if (stream == nullptr) return nullptr;
    const auto [entry, isNew] = programs_.try_emplace(stream);
    Program& program = entry->second;
    if (isNew) program.font = openEmbeddedFont(document_.decode(*stream, program.bytes).bytes);
    return program.font.get();
}

} // namespace quillow::pdf
