// Opening a document whose cross-references are wrong: by the objects that a scan of the file finds.
#include "engines/pdf/syntax/Opening.h"
#include "engines/pdf/syntax/PageTree.h"

#include <algorithm>
#include <array>

namespace quillow::pdf {
namespace {

using Kind = CrossReference::Kind;

ScannedKind kindOf(const Object& object) {
    const std::string_view type = object.dictionary().find("Type").name();
    if (type == "Catalog") return ScannedKind::catalog;
    if (type == "Pages") return ScannedKind::pageTree;
    return type == "Page" ? ScannedKind::page : ScannedKind::other;
}

} // namespace

Opening::Outcome Opening::openByRepair() {
    const FileScan& scan = file_->scan();
    CrossReferences objects = scan.latest;
    objects.trailer = mergedTrailer(scan.trailers, file_->arena);
    begin(std::move(objects));
    file_->isRepaired = true;
    if (!unlock()) return Outcome::locked;
    addObjectStreams();
    renewState(); // objects may be others now than those that were read so far
    return findRoot() ? Outcome::opened : Outcome::unusable;
}

/// A later object of a number replaces an earlier one, in a stream or not.
void Opening::addObjectStreams() {
    for (const ScannedObject& object : file_->scan().objects) {
        const bool isLatest = file_->scan().latest.find(object.header.id.number).position == object.header.begin;
        if (object.kind == ScannedKind::objectStream && isLatest) addObjectsOf(object);
    }
}

void Opening::addObjectsOf(const ScannedObject& stream) {
    const std::uint32_t container = stream.header.id.number;
    const ObjectStream* const objects = state().objectStream(container);
    if (objects == nullptr) return;
    std::uint16_t index = 0;
    for (const ObjectStream::Item& item : objects->items()) {
        const CrossReference known = file_->objects.find(item.number);
        const bool isLater = known.kind != Kind::inFile || known.position < stream.header.begin;
        if (item.number != 0 && item.number != container && isLater) {
            file_->objects.set(item.number, {container, index, Kind::inObjectStream});
        }
        if (index < 0xFFFF) ++index;
    }
}

bool Opening::findRoot() {
    for (const Dictionary& trailer : file_->scan().trailers)
        if (useRoot(trailer.find("Root"))) return true;
    const std::vector<Found> found = findByKind();
    for (auto object = found.rbegin(); object != found.rend(); ++object)
        if (object->kind == ScannedKind::catalog && useRoot(Object::ofReference(object->id))) return true;
    for (auto object = found.rbegin(); object != found.rend(); ++object)
        if (object->kind == ScannedKind::pageTree && usePageTree(object->id)) return true;
    for (const Found& object : found)
        if (object.kind == ScannedKind::page) file_->loosePages.push_back(object.id);
    return !file_->loosePages.empty();
}

/// The objects of the file that matter here, in its order, those of object streams after all others.
std::vector<Opening::Found> Opening::findByKind() {
    std::vector<Found> found;
    for (const ScannedObject& object : file_->scan().objects)
        if (file_->objects.find(object.header.id.number).position == object.header.begin)
            found.push_back({object.header.id, object.kind});
    for (std::uint32_t number = 0; number < file_->objects.size(); ++number) {
        if (file_->objects.find(number).kind != Kind::inObjectStream) continue;
        const Reference id{number, 0};
        if (const ScannedKind kind = kindOf(document_->load(id)); kind != ScannedKind::other)
            found.push_back({id, kind});
    }
    return found;
}

/// Whether there is a page below a catalog. It is that of the document then.
bool Opening::useRoot(const Object& root) {
    return !document_->resolve(root).dictionary().empty() && isNewRoot(root.reference()) && isRootWithPage(root);
}

/// The same for a page tree without a catalog. Only its root is of use.
bool Opening::usePageTree(Reference pages) {
    const Dictionary node = document_->load(pages).dictionary();
    if (!document_->get(node, "Parent").dictionary().empty() || !isNewRoot(pages)) return false;
    const std::array<DictionaryEntry, 2> entries = {DictionaryEntry{"Type", Object::ofName("Catalog")},
                                                    DictionaryEntry{"Pages", Object::ofReference(pages)}};
    return isRootWithPage(Object::ofDictionary(file_->arena.keep(std::span<const DictionaryEntry>(entries))));
}

/// False if it was tried before, or too many were.
bool Opening::isNewRoot(Reference id) {
    if (rootsTried_ == kMaximumRootsTried) return false;
    if (id.number != 0 && !roots_.insert(id.number).second) return false;
    ++rootsTried_;
    return true;
}

bool Opening::isRootWithPage(const Object& root) {
    const Dictionary old = file_->objects.trailer;
    const std::array<DictionaryEntry, 1> entry = {DictionaryEntry{"Root", root}};
    file_->objects.trailer = mergedTrailer({Dictionary(entry), old}, file_->arena);
    if (hasPage(*document_)) return true;
    file_->objects.trailer = old;
    return false;
}

} // namespace quillow::pdf
