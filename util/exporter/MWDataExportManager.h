// Exports an array of records as a text file. In a settings sheet the user picks the fields and their order and
// may type a custom layout; in a save sheet the user names the file and chooses its format.
#pragma once

#include "base/ActionSender.h"
#include "base/ArrayController.h"
#include "base/KVObject.h"

#include <memory>
#include <optional>

namespace quillow {

class DocumentContainer;
class ExporterInterface;
class FileSystem;
class InterfaceLoader;
class MainQueue;
class SavePanel;
class SavePanels;
class SheetPanel;
struct ExporterOwner;
struct ExportLayout;

class MWDataExportManager : public KVObject {
public:
    struct Ports {
        FileSystem& fileSystem;
        InterfaceLoader& interfaceLoader;
        MainQueue& mainQueue;
        SavePanels& savePanels;
    };

    /// The records are dictionaries or objects that are read by key. The keys describe the fields that can be exported,
    /// each a dictionary of two strings: "publicKey", the name that the user sees, and "innerKey", the key path of the
    /// value in a record. The container may be null and must outlive this object. Loads the windows named "Exporter";
    /// if they are missing, no settings sheet is shown.
    MWDataExportManager(const Boxed::Array& dataArray, const Boxed::Array& keyArray, DocumentContainer* container,
                        const Ports& ports); // selector: initWithDataArray:keyArray:container:
    ~MWDataExportManager() override;

    /// Starts an export, with its sheets on the window of this document.
    void run(DocumentContainer* document);
    void ExportSettings(Sender sender = {});

    // The field chooser. Fields move to the end of the other list, in their order. moveUp() and moveDown() move
    // the last selected field by one place, if possible.
    void addSelectedToRight(Sender sender = {});
    void addAllToRight(Sender sender = {});
    void removeSelectedFromRight(Sender sender = {});
    void removeAllFromRight(Sender sender = {});
    void moveUp(Sender sender = {});
    void moveDown(Sender sender = {});

    /// Fills the custom layout with the preset of the sender's tag: 1 tab-separated, 2 comma-separated, 3 HTML
    /// table, 4 HTML page; any other tag clears it.
    void setCustomFields(Sender sender);

    /// Ends the settings sheet; the save sheet opens after it has closed.
    void DoExportSetting(Sender sender = {});
    void CancelExportSetting(Sender sender = {});
    void ExportSettingsDidEnd(SheetPanel* sheet, int returnCode, void* contextInfo);
    /// Shows the save sheet and writes the file once it is confirmed. No failure is reported.
    void exportToTextFile(Sender sender = {});
    /// Gives the name in the save sheet the extension of the current format.
    void adjustFileType(Sender sender = {});

    // Hooks.
    virtual void preExportSettings() {}
    virtual void willExport() {}
    /// Called after every attempt to write.
    virtual void didExport() {}

    [[nodiscard]] std::optional<QString> suggestedFileName() const { return suggestedFileName_.get(); }
    void setSuggestedFileName(const std::optional<QString>& name) { suggestedFileName_.set(name); }
    [[nodiscard]] Boxed::Array dataArray() const { return dataArray_.get(); }
    void setDataArray(const Boxed::Array& dataArray) { dataArray_.set(dataArray); }
    /// The fields that are not exported.
    [[nodiscard]] Boxed::Array leftKeyArray() const { return leftKeyArray_.get(); }
    void setLeftKeyArray(const Boxed::Array& keyArray) { leftKeyArray_.set(keyArray); }
    /// The fields that are exported, in this order.
    [[nodiscard]] Boxed::Array rightKeyArray() const { return rightKeyArray_.get(); }
    void setRightKeyArray(const Boxed::Array& keyArray) { rightKeyArray_.set(keyArray); }

    // The custom layout as typed: backslash-n and backslash-t mean a line feed and a tab.
    [[nodiscard]] std::optional<QString> start_of_file() const { return start_of_file_.get(); }
    void setStart_of_file(const std::optional<QString>& text) { start_of_file_.set(text); }
    [[nodiscard]] std::optional<QString> end_of_file() const { return end_of_file_.get(); }
    void setEnd_of_file(const std::optional<QString>& text) { end_of_file_.set(text); }
    [[nodiscard]] std::optional<QString> start_of_record() const { return start_of_record_.get(); }
    void setStart_of_record(const std::optional<QString>& text) { start_of_record_.set(text); }
    [[nodiscard]] std::optional<QString> end_of_record() const { return end_of_record_.get(); }
    void setEnd_of_record(const std::optional<QString>& text) { end_of_record_.set(text); }
    [[nodiscard]] std::optional<QString> field_open_tag() const { return field_open_tag_.get(); }
    void setField_open_tag(const std::optional<QString>& text) { field_open_tag_.set(text); }
    [[nodiscard]] std::optional<QString> field_close_tag() const { return field_close_tag_.get(); }
    void setField_close_tag(const std::optional<QString>& text) { field_close_tag_.set(text); }
    [[nodiscard]] std::optional<QString> field_separator() const { return field_separator_.get(); }
    void setField_separator(const std::optional<QString>& text) { field_separator_.set(text); }
    /// Whether the last record gets the end-of-record text, too. Only its boolValue() counts; the presets set
    /// "YES" and "NO".
    [[nodiscard]] Boxed use_end_of_record_in_last_record() const { return use_end_of_record_in_last_record_.get(); }
    void setUse_end_of_record_in_last_record(const Boxed& use) { use_end_of_record_in_last_record_.set(use); }

    [[nodiscard]] Boxed useFieldNamesAsFirstRow() const { return useFieldNamesAsFirstRow_.get(); }
    void setUseFieldNamesAsFirstRow(const Boxed& use) { useFieldNamesAsFirstRow_.set(use); }
    /// 0 custom, 1 tab-separated, 2 comma-separated, 3 HTML table, 4 HTML page; any other writes values without
    /// delimiters.
    [[nodiscard]] Boxed fileFormatToSave() const { return fileFormatToSave_.get(); }
    void setFileFormatToSave(const Boxed& format) { fileFormatToSave_.set(format); }

    [[nodiscard]] DocumentContainer* myDoc() const { return myDoc_; }
    /// All fields that can be exported.
    [[nodiscard]] const Boxed::Array& allKeyArray() const { return allKeyArray_; }
    [[nodiscard]] ArrayController& leftKeyArrayController() { return leftKeyArrayController_; }
    [[nodiscard]] ArrayController& rightKeyArrayController() { return rightKeyArrayController_; }

private:
    [[nodiscard]] ExporterOwner asOwner();
    [[nodiscard]] class Window* windowForSheet() const;
    [[nodiscard]] QString nameWithExtension(const std::optional<QString>& name) const;
    [[nodiscard]] ExportLayout layoutToWrite() const;
    void setCustomLayout(const ExportLayout& layout);
    void moveLastSelectedBy(qsizetype places);
    void write();

    Ports ports_;
    DocumentContainer* myDoc_;
    Boxed::Array allKeyArray_;

    KVProperty<std::optional<QString>> suggestedFileName_{*this, u"suggestedFileName", QStringLiteral("Export")};
    KVProperty<Boxed::Array> dataArray_;
    KVProperty<Boxed::Array> leftKeyArray_;
    KVProperty<Boxed::Array> rightKeyArray_{*this, u"rightKeyArray"};
    KVProperty<std::optional<QString>> start_of_file_{*this, u"start_of_file", QStringLiteral("")};
    KVProperty<std::optional<QString>> end_of_file_{*this, u"end_of_file", QStringLiteral("")};
    KVProperty<std::optional<QString>> start_of_record_{*this, u"start_of_record", QStringLiteral("")};
    KVProperty<std::optional<QString>> end_of_record_{*this, u"end_of_record", QStringLiteral("")};
    KVProperty<std::optional<QString>> field_open_tag_{*this, u"field_open_tag", QStringLiteral("")};
    KVProperty<std::optional<QString>> field_close_tag_{*this, u"field_close_tag", QStringLiteral("")};
    KVProperty<std::optional<QString>> field_separator_{*this, u"field_separator", QStringLiteral("")};
    KVProperty<Boxed> use_end_of_record_in_last_record_{*this, u"use_end_of_record_in_last_record"};
    KVProperty<Boxed> useFieldNamesAsFirstRow_{*this, u"useFieldNamesAsFirstRow"};
    KVProperty<Boxed> fileFormatToSave_{*this, u"fileFormatToSave", 1};

    ArrayController leftKeyArrayController_{*this, QStringLiteral("leftKeyArray")};
    ArrayController rightKeyArrayController_{*this, QStringLiteral("rightKeyArray")};
    std::unique_ptr<ExporterInterface> interface_;
    std::unique_ptr<SavePanel> savePanel_;
    /// Operations on the main queue use it to check whether this object still exists.
    std::shared_ptr<const bool> isAlive_ = std::make_shared<const bool>(true);
};

} // namespace quillow
