#include "util/exporter/ExportText.h"

#include "base/KeyPath.h"
#include "util/exporter/Utf8Builder.h"
#include "util/exporter/ValueText.h"

#include <optional>
#include <vector>

namespace quillow {
namespace {

struct Field {
    QString name;
    std::optional<KeyPath> valuePath;
};

std::vector<Field> fieldsOf(const Boxed::Array& descriptions) {
    std::vector<Field> fields;
    for (const Boxed& description : descriptions) {
        const Boxed::Dictionary entries = description.dictionary().value_or(Boxed::Dictionary());
        const auto innerKey = entries.value(QString::fromUtf16(kInnerKey)).string();
        fields.push_back({textOfValue(entries.value(QString::fromUtf16(kPublicKey))),
                          innerKey ? std::optional(KeyPath(*innerKey)) : std::nullopt});
    }
    return fields;
}

class TextWriter {
public:
    TextWriter(const ExportLayout& layout, const std::vector<Field>& fields)
        : layout_(layout)
        , fields_(fields) {}

    /// Writes the start of a record and its fields, each with the text that `textOf` returns for it.
    template <class TextOf>
    void writeFields(TextOf textOf) {
        file_.append(layout_.startOfRecord);
        bool isFirst = true;
        for (const Field& field : fields_) {
            if (!isFirst) file_.append(layout_.fieldSeparator);
            isFirst = false;
            file_.append(layout_.fieldOpen);
            file_.append(textOf(field));
            file_.append(layout_.fieldClose);
        }
    }
    void write(const QString& text) { file_.append(text); }
    [[nodiscard]] QByteArray take() { return file_.take(); }

private:
    const ExportLayout& layout_;
    const std::vector<Field>& fields_;
    Utf8Builder file_;
};

} // namespace

QByteArray exportText(const Boxed::Array& records, const Boxed::Array& fields, const ExportLayout& layout,
                      HeaderRow headerRow) {
    const std::vector<Field> exported = fieldsOf(fields);
    TextWriter file(layout, exported);
    // The start of the file.
    file.write(layout.startOfFile);
    // The header row. Without records it is the last one, so it is ended only if the last record is.
    if (headerRow == HeaderRow::yes) {
        file.writeFields([](const Field& field) { return field.name; });
        if (layout.endsLastRecord || !records.isEmpty()) file.write(layout.endOfRecord);
    }
    // The records.
    for (qsizetype i = 0; i < records.size(); ++i) {
        file.writeFields([&](const Field& field) {
            const Boxed value = field.valuePath ? field.valuePath->valueIn(records[i]) : Boxed();
            return cleanedValue(textOfValue(value), layout.cleaning);
        });
        if (layout.endsLastRecord || i < records.size() - 1) file.write(layout.endOfRecord);
    }
    // The end of the file.
    file.write(layout.endOfFile);
    return file.take();
}

} // namespace quillow
