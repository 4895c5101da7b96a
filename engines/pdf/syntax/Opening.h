// Opens a document: by its cross-references, or by a repair (ISO 32000-2, 7.5, annex I).
#pragma once

#include "engines/pdf/syntax/DocumentState.h"

#include <unordered_set>

namespace quillow::pdf {

/// Catalogs and page trees in which a repair looks for a page.
inline constexpr std::size_t kMaximumRootsTried = 100;

class Opening {
public:
    Opening(std::string_view bytes, std::string_view password);

    [[nodiscard]] Result<std::unique_ptr<Document>> open();

private:
    enum class Outcome : std::uint8_t { opened, locked, unusable };

    [[nodiscard]] Outcome openByTables(std::size_t base);
    [[nodiscard]] Outcome openByRepair();
    void begin(CrossReferences objects);
    void renewState();
    /// False if the password does not open the document.
    [[nodiscard]] bool unlock();
    [[nodiscard]] bool isRootInPlace() const;
    [[nodiscard]] Document::State& state() { return *document_->state_; }

    // Repair.
    struct Found {
        Reference id;
        ScannedKind kind;
    };
    void addObjectStreams();
    void addObjectsOf(const ScannedObject& stream);
    [[nodiscard]] bool findRoot();
    [[nodiscard]] bool useRoot(const Object& root);
    [[nodiscard]] bool usePageTree(Reference pages);
    [[nodiscard]] bool isNewRoot(Reference id);
    [[nodiscard]] bool isRootWithPage(const Object& root);
    [[nodiscard]] std::vector<Found> findByKind();

    std::shared_ptr<DocumentFile> file_;
    std::string_view password_;
    std::unique_ptr<Document> document_;
    std::unordered_set<std::uint32_t> roots_; ///< the numbers of those that were tried
    std::size_t rootsTried_ = 0;
};

} // namespace quillow::pdf
