// Port: the windows of the tabular exporter. They show the exporter's properties and lists, and run its actions.
#pragma once

#include "base/ActionSender.h"

#include <QString>

#include <functional>
#include <memory>

namespace quillow {

class AccessoryView;
class ArrayController;
class KVObject;
class SheetPanel;

struct ExporterActions {
    using Action = std::function<void(Sender sender)>;
    Action addSelectedToRight;
    Action addAllToRight;
    Action removeSelectedFromRight;
    Action removeAllFromRight;
    Action moveUp;
    Action moveDown;
    Action setCustomFields; ///< the sender's tag is the preset, 1 to 4
    Action DoExportSetting;
    Action CancelExportSetting;
    Action adjustFileType;
};

/// The exporter as its windows see it. It outlives them.
struct ExporterOwner {
    /// Texts: start_of_file, end_of_file, start_of_record, end_of_record, field_open_tag, field_close_tag,
    /// field_separator. Booleans: use_end_of_record_in_last_record, useFieldNamesAsFirstRow. A number:
    /// fileFormatToSave, 0 to 4.
    KVObject& properties;
    /// Dictionaries, shown by their entry "publicKey".
    ArrayController& leftKeyArrayController;
    ArrayController& rightKeyArrayController;
    ExporterActions actions;
};

class ExporterInterface {
public:
    virtual ~ExporterInterface() = default;
    [[nodiscard]] virtual SheetPanel& exportSettingsPanel() = 0;
    /// The format chooser.
    [[nodiscard]] virtual AccessoryView& exportPanelAccessoryView() = 0;
};

class InterfaceLoader {
public:
    virtual ~InterfaceLoader() = default;
    /// The interface with that name; null if there is none.
    [[nodiscard]] virtual std::unique_ptr<ExporterInterface> loadExporterInterface(const QString& name,
                                                                                   const ExporterOwner& owner) = 0;
};

} // namespace quillow
