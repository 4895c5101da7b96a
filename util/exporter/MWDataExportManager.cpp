#include "util/exporter/MWDataExportManager.h"

#include "base/Format.h"
#include "base/PathStrings.h"
#include "platform/DocumentContainer.h"
#include "platform/ExporterInterface.h"
#include "platform/FileSystem.h"
#include "platform/MainQueue.h"
#include "platform/SavePanel.h"
#include "platform/SheetPanel.h"
#include "util/exporter/ExportLayout.h"
#include "util/exporter/ExportText.h"

#include <numeric>

namespace quillow {
namespace {

constexpr char16_t kInterfaceName[] = u"Exporter";
constexpr int kSheetEnded = 0;

/// Moves the elements at these indexes from one list to the end of the other.
void moveObjects(ArrayController& from, const QList<qsizetype>& indexes, ArrayController& to) {
    if (indexes.isEmpty()) return;
    const Boxed::Array content = from.arrangedObjects();
    Boxed::Array moved;
    for (const qsizetype index : indexes)
        moved.append(content[index]);
    to.addObjects(moved);
    from.removeObjectsAtArrangedObjectIndexes(indexes);
}

QList<qsizetype> allIndexes(const ArrayController& controller) {
    QList<qsizetype> indexes(controller.arrangedObjects().size());
    std::iota(indexes.begin(), indexes.end(), 0);
    return indexes;
}

/// A preset is the layout of a format as a user would type it. A tag without a preset clears all delimiters.
ExportLayout presetOfTag(int tag) {
    const bool isPreset =
        tag >= static_cast<int>(ExportFormat::tabSeparated) && tag <= static_cast<int>(ExportFormat::htmlPage);
    if (isPreset) return escapedLayout(layoutOfFormat(tag));
    ExportLayout empty;
    empty.endsLastRecord = true;
    return empty;
}

} // namespace

MWDataExportManager::MWDataExportManager(const Boxed::Array& dataArray, const Boxed::Array& keyArray,
                                         DocumentContainer* container, const Ports& ports)
    : ports_(ports)
    , myDoc_(container)
    , allKeyArray_(keyArray)
    , dataArray_(*this, u"dataArray", dataArray)
    , leftKeyArray_(*this, u"leftKeyArray", keyArray)
    , interface_(ports_.interfaceLoader.loadExporterInterface(QString::fromUtf16(kInterfaceName), asOwner())) {}

MWDataExportManager::~MWDataExportManager() = default;

ExporterOwner MWDataExportManager::asOwner() {
    const auto running = [this](void (MWDataExportManager::*action)(Sender)) {
        return [this, action](Sender sender) { (this->*action)(sender); };
    };
    ExporterActions actions;
    actions.addSelectedToRight = running(&MWDataExportManager::addSelectedToRight);
    actions.addAllToRight = running(&MWDataExportManager::addAllToRight);
    actions.removeSelectedFromRight = running(&MWDataExportManager::removeSelectedFromRight);
    actions.removeAllFromRight = running(&MWDataExportManager::removeAllFromRight);
    actions.moveUp = running(&MWDataExportManager::moveUp);
    actions.moveDown = running(&MWDataExportManager::moveDown);
    actions.setCustomFields = running(&MWDataExportManager::setCustomFields);
    actions.DoExportSetting = running(&MWDataExportManager::DoExportSetting);
    actions.CancelExportSetting = running(&MWDataExportManager::CancelExportSetting);
    actions.adjustFileType = running(&MWDataExportManager::adjustFileType);
    return {*this, leftKeyArrayController_, rightKeyArrayController_, actions};
}

Window* MWDataExportManager::windowForSheet() const {
    return myDoc_ ? myDoc_->windowForSheet() : nullptr;
}

// The settings sheet.

void MWDataExportManager::run(DocumentContainer* document) {
    myDoc_ = document;
    ExportSettings();
}

void MWDataExportManager::ExportSettings(Sender /*sender*/) {
    preExportSettings();
    if (!interface_) return;
    SheetPanel& panel = interface_->exportSettingsPanel();
    panel.beginSheetModalForWindow(
        windowForSheet(), [this, &panel](int returnCode) { ExportSettingsDidEnd(&panel, returnCode, nullptr); });
}

void MWDataExportManager::ExportSettingsDidEnd(SheetPanel* sheet, int /*returnCode*/, void* /*contextInfo*/) {
    if (sheet) sheet->orderOut();
}

void MWDataExportManager::DoExportSetting(Sender /*sender*/) {
    willExport();
    // After the current event, so that the settings sheet has closed before the save sheet opens.
    ports_.mainQueue.addOperation([this, isAlive = std::weak_ptr(isAlive_)] {
        if (!isAlive.expired()) exportToTextFile();
    });
    if (interface_) interface_->exportSettingsPanel().endSheet(kSheetEnded);
}

void MWDataExportManager::CancelExportSetting(Sender /*sender*/) {
    if (interface_) interface_->exportSettingsPanel().endSheet(kSheetEnded);
}

// The field chooser.

void MWDataExportManager::addSelectedToRight(Sender /*sender*/) {
    moveObjects(leftKeyArrayController_, leftKeyArrayController_.selectionIndexes(), rightKeyArrayController_);
}

void MWDataExportManager::addAllToRight(Sender /*sender*/) {
    moveObjects(leftKeyArrayController_, allIndexes(leftKeyArrayController_), rightKeyArrayController_);
}

void MWDataExportManager::removeSelectedFromRight(Sender /*sender*/) {
    moveObjects(rightKeyArrayController_, rightKeyArrayController_.selectionIndexes(), leftKeyArrayController_);
}

void MWDataExportManager::removeAllFromRight(Sender /*sender*/) {
    moveObjects(rightKeyArrayController_, allIndexes(rightKeyArrayController_), leftKeyArrayController_);
}

void MWDataExportManager::moveUp(Sender /*sender*/) {
    moveLastSelectedBy(-1);
}

void MWDataExportManager::moveDown(Sender /*sender*/) {
    moveLastSelectedBy(1);
}

void MWDataExportManager::moveLastSelectedBy(qsizetype places) {
    if (rightKeyArrayController_.selectionIndexes().isEmpty()) return;
    const qsizetype index = rightKeyArrayController_.selectionIndexes().constLast();
    const Boxed::Array fields = rightKeyArrayController_.arrangedObjects();
    const qsizetype target = index + places;
    if (target < 0 || target >= fields.size()) return;
    rightKeyArrayController_.removeObjectsAtArrangedObjectIndexes({index});
    rightKeyArrayController_.insertObject(fields[index], target);
}

// The custom layout.

void MWDataExportManager::setCustomFields(Sender sender) {
    setCustomLayout(presetOfTag(sender ? sender->tag : 0));
}

void MWDataExportManager::setCustomLayout(const ExportLayout& layout) {
    start_of_file_.set(layout.startOfFile);
    end_of_file_.set(layout.endOfFile);
    start_of_record_.set(layout.startOfRecord);
    end_of_record_.set(layout.endOfRecord);
    field_open_tag_.set(layout.fieldOpen);
    field_close_tag_.set(layout.fieldClose);
    field_separator_.set(layout.fieldSeparator);
    use_end_of_record_in_last_record_.set(layout.endsLastRecord ? QStringLiteral("YES") : QStringLiteral("NO"));
}

// The save sheet.

QString MWDataExportManager::nameWithExtension(const std::optional<QString>& name) const {
    return stringWithFormat(QStringLiteral("%@.%@"), {name, extensionOfFormat(fileFormatToSave().intValue())});
}

void MWDataExportManager::exportToTextFile(Sender /*sender*/) {
    savePanel_ = ports_.savePanels.makeSavePanel();
    if (interface_) savePanel_->setAccessoryView(&interface_->exportPanelAccessoryView());
    savePanel_->setNameFieldStringValue(nameWithExtension(suggestedFileName()));
    savePanel_->beginSheetModalForWindow(windowForSheet(), [this](int result) {
        if (result == kSavePanelConfirmed) write();
    });
}

void MWDataExportManager::adjustFileType(Sender /*sender*/) {
    if (!savePanel_) return;
    const QString name = stringByDeletingPathExtension(savePanel_->nameFieldStringValue());
    savePanel_->setNameFieldStringValue(nameWithExtension(name));
}

ExportLayout MWDataExportManager::layoutToWrite() const {
    const int format = fileFormatToSave().intValue();
    if (format != static_cast<int>(ExportFormat::custom)) return layoutOfFormat(format);
    ExportLayout typed;
    typed.startOfFile = start_of_file().value_or(QString());
    typed.endOfFile = end_of_file().value_or(QString());
    typed.startOfRecord = start_of_record().value_or(QString());
    typed.endOfRecord = end_of_record().value_or(QString());
    typed.fieldOpen = field_open_tag().value_or(QString());
    typed.fieldClose = field_close_tag().value_or(QString());
    typed.fieldSeparator = field_separator().value_or(QString());
    typed.endsLastRecord = use_end_of_record_in_last_record().boolValue();
    return unescapedLayout(typed);
}

void MWDataExportManager::write() {
    // The delimiters of the layout.
    const ExportLayout layout = layoutToWrite();
    // The header row, and the location of the file.
    const HeaderRow headerRow = useFieldNamesAsFirstRow().boolValue() ? HeaderRow::yes : HeaderRow::no;
    const auto url = savePanel_->URL();
    if (!url) return;
    // The text, from start of file to end of file, and the attempt to write it.
    ports_.fileSystem.writeToFileAtomically(exportText(dataArray(), rightKeyArray(), layout, headerRow),
                                            pathOfURL(*url));
    didExport();
}

} // namespace quillow
