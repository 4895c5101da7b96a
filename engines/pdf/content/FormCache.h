// The form XObjects of a document (ISO 32000-2, 8.10), each read once.
#pragma once

#include "engines/pdf/content/ContentBuffer.h"
#include "engines/pdf/content/Matrix.h"
#include "engines/pdf/syntax/Document.h"
#include "engines/pdf/syntax/PageTree.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace quillow::pdf {

/// Bytes of decoded forms that are kept between their uses.
inline constexpr std::size_t kMaximumFormBytes = std::size_t{16} << 20;

struct Form {
    const StreamContent* stream = nullptr;
    Matrix matrix;
    std::optional<Rectangle> box;
    Dictionary resources;
    Object optionalContent; ///< /OC, not resolved
    bool hasResources = false;
    /// Whether its content can show text. Nothing else of a form is looked at: what forms without fonts draw is logos
    /// and charts, not the ruling of tables.
    bool canShowText = false;

    // Of the cache and the interpreter.
    ContentBuffer content;
    std::string_view bytes;
    bool isDecoded = false;
    bool isComplete = true;
    std::size_t uses = 0; ///< by content that is being interpreted: more than one would be a cycle
};

class FormCache {
public:
    explicit FormCache(Document& document)
        : document_(document) {}

    /// The form of a stream. Valid as long as the cache.
    [[nodiscard]] Form& formOf(const StreamContent& stream);
    /// Decodes the form's content, if it is not there yet, into `form.bytes`, which a guard follows. It stays while the
    /// form is in use.
    void load(Form& form);

    /// Bytes of the forms that were loaded since the last call, whether they were there already or not: so the cost of
    /// a page does not depend on the pages before it.
    [[nodiscard]] std::size_t takeCost();
    /// Bytes that would have been decoded again if no form had been kept.
    [[nodiscard]] std::size_t reused() const { return reused_; }

private:
    [[nodiscard]] bool canShowText(const Form& form);
    [[nodiscard]] bool hasForms(const Dictionary& resources);
    void forgetUnused();

    Document& document_;
    std::unordered_map<const StreamContent*, std::unique_ptr<Form>> forms_;
    std::vector<Form*> decoded_;
    std::size_t bytes_ = 0; ///< of the decoded forms
    std::size_t cost_ = 0;
    std::size_t reused_ = 0;
};

/// Six numbers of a file; the identity if they are not that.
[[nodiscard]] Matrix matrixOf(Document& document, const Object& object);

} // namespace quillow::pdf
