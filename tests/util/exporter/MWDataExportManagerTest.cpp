// The exporter from its settings sheet to the written file, with fake windows, disk and main queue that the test
// controls.
#include "util/exporter/MWDataExportManager.h"

#include "platform/DocumentContainer.h"
#include "tests/fakes/FakeExporterInterface.h"
#include "tests/fakes/FakeFileSystem.h"
#include "tests/fakes/FakeMainQueue.h"
#include "tests/fakes/FakeSavePanels.h"
#include "tests/fakes/FakeWindow.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;
using Texts = std::vector<std::optional<QString>>;

Boxed field(const QString& name) {
    return Boxed::Dictionary{{u"publicKey"_s, name}, {u"innerKey"_s, name.toLower()}};
}

Boxed person(const QString& name, const QString& city) {
    return Boxed::Dictionary{{u"name"_s, name}, {u"city"_s, city}};
}

class FakeDocument final : public DocumentContainer {
public:
    Window* windowForSheet() override { return &window; }
    FakeWindow window;
};

/// Records the calls of its hooks.
class JournalledExporter final : public MWDataExportManager {
public:
    JournalledExporter(const Boxed::Array& records, const Boxed::Array& keys, DocumentContainer* container,
                       const Ports& ports, Journal& journal)
        : MWDataExportManager(records, keys, container, ports)
        , journal_(journal) {}
    void preExportSettings() override { journal_.add(u"preExportSettings"_s); }
    void willExport() override {
        journal_.add(u"willExport"_s);
        if (inWillExport) inWillExport();
    }
    void didExport() override { journal_.add(u"didExport"_s); }

    std::function<void()> inWillExport;

private:
    Journal& journal_;
};

class MWDataExportManagerTest : public testing::Test {
protected:
    MWDataExportManagerTest() { files_.addFolder(u"/home"_s); }

    QStringList names(const Boxed::Array& fields) const {
        QStringList names;
        for (const Boxed& described : fields)
            names.append(described.dictionary()->value(u"publicKey"_s).string().value());
        return names;
    }
    QStringList left() const { return names(exporter_->leftKeyArray()); }
    QStringList right() const { return names(exporter_->rightKeyArray()); }
    Texts customTexts() const {
        return {exporter_->start_of_file(),  exporter_->end_of_file(),    exporter_->start_of_record(),
                exporter_->end_of_record(),  exporter_->field_open_tag(), exporter_->field_close_tag(),
                exporter_->field_separator()};
    }
    void setPreset(int tag) {
        const ActionSender sender{tag};
        loader_.actions().setCustomFields(&sender);
    }
    /// From the settings sheet to the save sheet.
    void exportNow() {
        loader_.actions().DoExportSetting(nullptr);
        queue_.runAll();
    }
    QByteArray written(const QString& path = u"/home/Export.tsv"_s) const {
        return files_.contentsOfFile(path).value_or("nothing was written");
    }

    Journal journal_;
    FakeFileSystem files_{journal_};
    FakeInterfaceLoader loader_{journal_};
    FakeMainQueue queue_;
    FakeSavePanels savePanels_;
    FakeDocument document_;
    MWDataExportManager::Ports ports_{files_, loader_, queue_, savePanels_};
    Boxed::Array people_{person(u"Ann"_s, u"Rome"_s), person(u"Bob"_s, u"Oslo"_s)};
    Boxed::Array keys_{field(u"Name"_s), field(u"City"_s), field(u"Age"_s), field(u"Zip"_s)};
    std::unique_ptr<JournalledExporter> exporter_ =
        std::make_unique<JournalledExporter>(people_, keys_, &document_, ports_, journal_);
};

// The initial state.

TEST_F(MWDataExportManagerTest, startsWithEveryFieldOnTheLeft) {
    EXPECT_EQ(exporter_->dataArray(), people_);
    EXPECT_EQ(exporter_->allKeyArray(), keys_);
    EXPECT_EQ(exporter_->leftKeyArray(), keys_);
    EXPECT_EQ(exporter_->rightKeyArray(), Boxed::Array());
    EXPECT_EQ(exporter_->suggestedFileName(), u"Export"_s);
    EXPECT_EQ(exporter_->fileFormatToSave(), Boxed(1));
    EXPECT_EQ(customTexts(), Texts(7, u""_s));
    for (const auto& text : customTexts())
        EXPECT_FALSE(text->isNull());
    EXPECT_TRUE(exporter_->use_end_of_record_in_last_record().isNil());
    EXPECT_TRUE(exporter_->useFieldNamesAsFirstRow().isNil());
    EXPECT_EQ(exporter_->myDoc(), &document_);
    EXPECT_EQ(journal_.entries(), QStringList{u"load Exporter"_s});
}

TEST_F(MWDataExportManagerTest, itsPropertiesAreReachedByKey) {
    exporter_->setValue(u"Report"_s, u"suggestedFileName"_s);
    EXPECT_EQ(exporter_->suggestedFileName(), u"Report"_s);
    for (const auto& key :
         {u"dataArray"_s, u"leftKeyArray"_s, u"rightKeyArray"_s, u"start_of_file"_s, u"end_of_file"_s,
          u"start_of_record"_s, u"end_of_record"_s, u"field_open_tag"_s, u"field_close_tag"_s, u"field_separator"_s,
          u"use_end_of_record_in_last_record"_s, u"useFieldNamesAsFirstRow"_s, u"fileFormatToSave"_s}) {
        exporter_->setValue(Boxed(), key);
        EXPECT_TRUE(exporter_->valueForKey(key).isNil() || exporter_->valueForKey(key) == Boxed(Boxed::Array()))
            << key.toStdString();
    }
}

// The field chooser.

TEST_F(MWDataExportManagerTest, selectedFieldsMoveToTheEndOfTheOtherList) {
    exporter_->leftKeyArrayController().setSelectionIndexes({2});
    loader_.actions().addSelectedToRight(nullptr);
    exporter_->leftKeyArrayController().setSelectionIndexes({2, 0});
    loader_.actions().addSelectedToRight(nullptr);
    EXPECT_EQ(right(), QStringList({u"Age"_s, u"Name"_s, u"Zip"_s}));
    EXPECT_EQ(left(), QStringList{u"City"_s});

    exporter_->rightKeyArrayController().setSelectionIndexes({1});
    loader_.actions().removeSelectedFromRight(nullptr);
    EXPECT_EQ(right(), QStringList({u"Age"_s, u"Zip"_s}));
    EXPECT_EQ(left(), QStringList({u"City"_s, u"Name"_s}));
}

TEST_F(MWDataExportManagerTest, allFieldsMoveToTheEndOfTheOtherList) {
    exporter_->leftKeyArrayController().setSelectionIndexes({3});
    exporter_->addSelectedToRight();
    loader_.actions().addAllToRight(nullptr);
    EXPECT_EQ(right(), QStringList({u"Zip"_s, u"Name"_s, u"City"_s, u"Age"_s}));
    EXPECT_EQ(left(), QStringList());
    loader_.actions().addAllToRight(nullptr);
    EXPECT_EQ(right().size(), 4);
    loader_.actions().removeAllFromRight(nullptr);
    EXPECT_EQ(left(), QStringList({u"Zip"_s, u"Name"_s, u"City"_s, u"Age"_s}));
    EXPECT_EQ(right(), QStringList());
}

TEST_F(MWDataExportManagerTest, withoutASelectionNothingMoves) {
    exporter_->addSelectedToRight();
    exporter_->removeSelectedFromRight();
    exporter_->moveUp();
    exporter_->moveDown();
    EXPECT_EQ(left().size(), 4);
    EXPECT_EQ(right(), QStringList());
}

TEST_F(MWDataExportManagerTest, aFieldMovesUpAndDownByOnePlaceAndStaysSelected) {
    exporter_->addAllToRight();
    exporter_->rightKeyArrayController().setSelectionIndexes({2});
    loader_.actions().moveUp(nullptr);
    EXPECT_EQ(right(), QStringList({u"Name"_s, u"Age"_s, u"City"_s, u"Zip"_s}));
    loader_.actions().moveUp(nullptr);
    loader_.actions().moveUp(nullptr); // already at the top
    EXPECT_EQ(right(), QStringList({u"Age"_s, u"Name"_s, u"City"_s, u"Zip"_s}));
    EXPECT_EQ(exporter_->rightKeyArrayController().selectionIndexes(), QList<qsizetype>{0});

    exporter_->rightKeyArrayController().setSelectionIndexes({2});
    loader_.actions().moveDown(nullptr);
    loader_.actions().moveDown(nullptr); // already at the bottom
    EXPECT_EQ(right(), QStringList({u"Age"_s, u"Name"_s, u"Zip"_s, u"City"_s}));
}

TEST_F(MWDataExportManagerTest, ofSeveralSelectedFieldsTheLastMoves) {
    exporter_->addAllToRight();
    exporter_->rightKeyArrayController().setSelectionIndexes({0, 2});
    exporter_->moveUp();
    EXPECT_EQ(right(), QStringList({u"Name"_s, u"Age"_s, u"City"_s, u"Zip"_s}));
    exporter_->rightKeyArrayController().setSelectionIndexes({0, 2});
    exporter_->moveDown();
    EXPECT_EQ(right(), QStringList({u"Name"_s, u"Age"_s, u"Zip"_s, u"City"_s}));
}

TEST_F(MWDataExportManagerTest, aMoveBeyondTheEndsKeepsTheWholeSelection) {
    exporter_->addAllToRight();
    exporter_->rightKeyArrayController().setSelectionIndexes({1, 3});
    exporter_->moveDown();
    EXPECT_EQ(exporter_->rightKeyArrayController().selectionIndexes(), (QList<qsizetype>{1, 3}));
    exporter_->rightKeyArrayController().setSelectionIndexes({0});
    int changes = 0;
    const Observation counted = exporter_->addObserver(
        u"rightKeyArray"_s, [&changes](const QString&, const KVObject&, const Change&) { ++changes; });
    exporter_->moveUp();
    EXPECT_EQ(changes, 0);
}

TEST_F(MWDataExportManagerTest, equalFieldsMoveOneByOne) {
    exporter_->setLeftKeyArray({field(u"Name"_s), field(u"Name"_s)});
    exporter_->leftKeyArrayController().setSelectionIndexes({1});
    exporter_->addSelectedToRight();
    EXPECT_EQ(left(), QStringList{u"Name"_s});
    EXPECT_EQ(right(), QStringList{u"Name"_s});
}

// Presets.

TEST_F(MWDataExportManagerTest, presetsFillTheCustomLayout) {
    setPreset(1);
    EXPECT_EQ(customTexts(), (Texts{u""_s, u""_s, u""_s, u"\\n"_s, u""_s, u""_s, u"\\t"_s}));
    EXPECT_EQ(exporter_->use_end_of_record_in_last_record(), Boxed(u"NO"_s));
    setPreset(2);
    EXPECT_EQ(customTexts(), (Texts{u""_s, u""_s, u""_s, u"\\n"_s, u"\""_s, u"\""_s, u","_s}));
    EXPECT_EQ(exporter_->use_end_of_record_in_last_record(), Boxed(u"NO"_s));
    setPreset(3);
    EXPECT_EQ(customTexts(), (Texts{u"<table>"_s, u"</table>"_s, u"<tr>"_s, u"</tr>"_s, u"<td>"_s, u"</td>"_s, u""_s}));
    EXPECT_EQ(exporter_->use_end_of_record_in_last_record(), Boxed(u"YES"_s));
    setPreset(4);
    EXPECT_EQ(customTexts(), (Texts{u"<!DOCTYPE html><html><body><table>"_s, u"</table></body></html>"_s, u"<tr>"_s,
                                    u"</tr>"_s, u"<td>"_s, u"</td>"_s, u""_s}));
    EXPECT_EQ(exporter_->use_end_of_record_in_last_record(), Boxed(u"YES"_s));
}

TEST_F(MWDataExportManagerTest, anyOtherTagEmptiesTheCustomLayout) {
    for (const int tag : {0, 5, -1, 100}) {
        setPreset(2);
        setPreset(tag);
        EXPECT_EQ(customTexts(), Texts(7, u""_s)) << tag;
        EXPECT_EQ(exporter_->use_end_of_record_in_last_record(), Boxed(u"YES"_s));
    }
    setPreset(2);
    exporter_->setCustomFields(nullptr);
    EXPECT_EQ(customTexts(), Texts(7, u""_s));
}

TEST_F(MWDataExportManagerTest, aPresetWritesWhatItsFormatWrites) {
    exporter_->addAllToRight();
    exporter_->setUseFieldNamesAsFirstRow(true);
    for (const int format : {1, 2, 3, 4}) {
        setPreset(format);
        exporter_->setFileFormatToSave(format);
        exportNow();
        savePanels_.confirm(u"/home/format"_s);
        exporter_->setFileFormatToSave(0);
        exportNow();
        savePanels_.confirm(u"/home/custom"_s);
        EXPECT_EQ(written(u"/home/custom"_s), written(u"/home/format"_s)) << format;
    }
}

// The sheets.

TEST_F(MWDataExportManagerTest, theSettingsSheetStandsOnTheDocumentsWindow) {
    exporter_->ExportSettings();
    EXPECT_TRUE(loader_.settings().isUp());
    EXPECT_EQ(loader_.settings().window(), &document_.window);
    EXPECT_EQ(journal_.entries(), QStringList({u"load Exporter"_s, u"preExportSettings"_s, u"settings begin"_s}));
}

TEST_F(MWDataExportManagerTest, runTakesItsDocument) {
    FakeDocument other;
    exporter_->run(&other);
    EXPECT_EQ(exporter_->myDoc(), &other);
    EXPECT_EQ(loader_.settings().window(), &other.window);
    exportNow();
    EXPECT_EQ(savePanels_.last().window, &other.window);
}

TEST_F(MWDataExportManagerTest, withoutADocumentTheSheetsStandAlone) {
    exporter_->run(nullptr);
    EXPECT_TRUE(loader_.settings().isUp());
    EXPECT_EQ(loader_.settings().window(), nullptr);
    exportNow();
    EXPECT_TRUE(savePanels_.last().isUp);
    EXPECT_EQ(savePanels_.last().window, nullptr);
}

TEST_F(MWDataExportManagerTest, theSaveSheetOpensAfterTheSettingsSheetHasGone) {
    exporter_->run(&document_);
    journal_.clear();
    loader_.actions().DoExportSetting(nullptr);
    EXPECT_EQ(journal_.entries(), QStringList({u"willExport"_s, u"settings end"_s, u"settings out"_s}));
    EXPECT_FALSE(loader_.settings().isUp());
    EXPECT_FALSE(loader_.settings().isOnScreen());
    EXPECT_EQ(savePanels_.made(), 0);
    EXPECT_EQ(queue_.queuedCount(), 1U);

    queue_.runAll();
    EXPECT_EQ(savePanels_.made(), 1);
    EXPECT_TRUE(savePanels_.last().isUp);
    EXPECT_EQ(savePanels_.last().accessoryView, &loader_.formatChooser());
    EXPECT_EQ(savePanels_.last().name, u"Export.tsv"_s);
    EXPECT_EQ(savePanels_.last().window, &document_.window);
}

TEST_F(MWDataExportManagerTest, whatWillExportQueuesComesBeforeTheSaveSheet) {
    int panelsAtThatTime = -1;
    exporter_->inWillExport = [&] { queue_.addOperation([&] { panelsAtThatTime = savePanels_.made(); }); };
    exportNow();
    EXPECT_EQ(panelsAtThatTime, 0);
    EXPECT_EQ(savePanels_.made(), 1);
}

TEST_F(MWDataExportManagerTest, theSaveSheetOpensWithItsName) {
    exporter_->exportToTextFile();
    EXPECT_EQ(savePanels_.last().nameAtOpening, u"Export.tsv"_s);
}

TEST_F(MWDataExportManagerTest, cancellingTheSettingsSheetOnlyEndsIt) {
    exporter_->run(&document_);
    exporter_->addAllToRight();
    exporter_->setFileFormatToSave(2);
    journal_.clear();
    loader_.actions().CancelExportSetting(nullptr);
    queue_.runAll();
    EXPECT_EQ(journal_.entries(), QStringList({u"settings end"_s, u"settings out"_s}));
    EXPECT_EQ(savePanels_.made(), 0);
    EXPECT_EQ(right().size(), 4);
    EXPECT_EQ(exporter_->fileFormatToSave(), Boxed(2));
}

TEST_F(MWDataExportManagerTest, cancellingTheSaveSheetWritesNothingAndKeepsTheState) {
    exporter_->run(&document_);
    exporter_->addAllToRight();
    exportNow();
    journal_.clear();
    savePanels_.cancel();
    EXPECT_EQ(journal_.entries(), QStringList());
    EXPECT_EQ(right().size(), 4);
    EXPECT_EQ(exporter_->fileFormatToSave(), Boxed(1));
}

TEST_F(MWDataExportManagerTest, theNameHasTheFormatsExtension) {
    const std::pair<Boxed, QString> expected[] = {
        {0, u"Export.txt"_s},  {1, u"Export.tsv"_s}, {2, u"Export.csv"_s},      {3, u"Export.txt"_s},
        {4, u"Export.html"_s}, {5, u"Export.txt"_s}, {u"2"_s, u"Export.csv"_s}, {Boxed(), u"Export.txt"_s}};
    for (const auto& [format, name] : expected) {
        exporter_->setFileFormatToSave(format);
        exporter_->exportToTextFile();
        EXPECT_EQ(savePanels_.last().name, name);
    }
    exporter_->setSuggestedFileName(u"100%1 %@.v2"_s);
    exporter_->exportToTextFile();
    EXPECT_EQ(savePanels_.last().name, u"100%1 %@.v2.txt"_s);
    exporter_->setSuggestedFileName(std::nullopt);
    exporter_->exportToTextFile();
    EXPECT_EQ(savePanels_.last().name, u"(null).txt"_s);
}

TEST_F(MWDataExportManagerTest, choosingAFormatChangesTheExtensionOfTheTypedName) {
    exporter_->exportToTextFile();
    savePanels_.type(u"my.people.tsv"_s);
    exporter_->setFileFormatToSave(4);
    loader_.actions().adjustFileType(nullptr);
    EXPECT_EQ(savePanels_.last().name, u"my.people.html"_s);
    exporter_->setFileFormatToSave(3);
    exporter_->adjustFileType();
    EXPECT_EQ(savePanels_.last().name, u"my.people.txt"_s);
    savePanels_.type(u"people"_s);
    exporter_->setFileFormatToSave(2);
    exporter_->adjustFileType();
    EXPECT_EQ(savePanels_.last().name, u"people.csv"_s);
}

TEST_F(MWDataExportManagerTest, choosingAFormatBeforeAnySaveSheetIsHarmless) {
    exporter_->adjustFileType();
    EXPECT_EQ(savePanels_.made(), 0);
}

TEST_F(MWDataExportManagerTest, everyExportHasASavePanelOfItsOwn) {
    exportNow();
    savePanels_.type(u"other.tsv"_s);
    savePanels_.cancel();
    exportNow();
    EXPECT_EQ(savePanels_.made(), 2);
    EXPECT_EQ(savePanels_.last().name, u"Export.tsv"_s);
}

// The file.

TEST_F(MWDataExportManagerTest, confirmingWritesTheChosenFields) {
    exporter_->run(&document_);
    exporter_->leftKeyArrayController().setSelectionIndexes({0, 1});
    exporter_->addSelectedToRight();
    exporter_->setUseFieldNamesAsFirstRow(u"YES"_s);
    exportNow();
    journal_.clear();
    savePanels_.confirm(u"/home/Export.tsv"_s);
    EXPECT_EQ(written(), QByteArray("Name\tCity\nAnn\tRome\nBob\tOslo"));
    EXPECT_EQ(journal_.entries(), QStringList({u"write /home/Export.tsv"_s, u"didExport"_s}));
}

TEST_F(MWDataExportManagerTest, theFormatIsTheOneOfTheMomentOfWriting) {
    exporter_->addAllToRight();
    exportNow();
    exporter_->setFileFormatToSave(2);
    exporter_->setUseFieldNamesAsFirstRow(u"NO"_s);
    exporter_->setDataArray({person(u"Eve"_s, u"\"Ur\""_s)});
    savePanels_.confirm(u"/home/Export.tsv"_s);
    EXPECT_EQ(written(), QByteArray("\"Eve\",\"\"Ur\"\",\"\",\"\""));
}

TEST_F(MWDataExportManagerTest, theCustomLayoutIsUnescaped) {
    exporter_->leftKeyArrayController().setSelectionIndexes({0, 1});
    exporter_->addSelectedToRight();
    exporter_->setFileFormatToSave(0);
    exporter_->setStart_of_file(u"start\\n"_s);
    exporter_->setEnd_of_file(u"\\tend"_s);
    exporter_->setStart_of_record(u"{"_s);
    exporter_->setEnd_of_record(u"}\\n"_s);
    exporter_->setField_open_tag(u"["_s);
    exporter_->setField_close_tag(u"]"_s);
    exporter_->setField_separator(u"\\t"_s);
    exportNow();
    savePanels_.confirm(u"/home/Export.tsv"_s);
    EXPECT_EQ(written(), QByteArray("start\n{[Ann]\t[Rome]}\n{[Bob]\t[Oslo]\tend"));

    exporter_->setUse_end_of_record_in_last_record(u"YES"_s);
    exporter_->setStart_of_file(std::nullopt);
    exportNow();
    savePanels_.confirm(u"/home/Export.tsv"_s);
    EXPECT_EQ(written(), QByteArray("{[Ann]\t[Rome]}\n{[Bob]\t[Oslo]}\n\tend"));
}

TEST_F(MWDataExportManagerTest, customTextsTouchNoOtherLayout) {
    exporter_->addAllToRight();
    exporter_->setStart_of_file(u"start"_s);
    exporter_->setUse_end_of_record_in_last_record(true);
    exporter_->setFileFormatToSave(5);
    exportNow();
    savePanels_.confirm(u"/home/Export.tsv"_s);
    EXPECT_EQ(written(), QByteArray("AnnRomeBobOslo"));
}

TEST_F(MWDataExportManagerTest, withoutAURLNothingIsWritten) {
    exportNow();
    journal_.clear();
    savePanels_.confirmWithoutURL();
    EXPECT_EQ(journal_.entries(), QStringList());
}

TEST_F(MWDataExportManagerTest, aFailedWriteIsSilent) {
    files_.setDiskFull();
    exportNow();
    journal_.clear();
    savePanels_.confirm(u"/home/Export.tsv"_s);
    EXPECT_EQ(journal_.entries(), QStringList({u"write /home/Export.tsv"_s, u"didExport"_s}));
    EXPECT_EQ(written(), QByteArray("nothing was written"));
}

TEST_F(MWDataExportManagerTest, noFieldsWriteTheRecordsDelimiters) {
    exportNow();
    savePanels_.confirm(u"/home/Export.tsv"_s);
    EXPECT_EQ(written(), QByteArray("\n"));
}

// A destroyed exporter, missing windows.

TEST_F(MWDataExportManagerTest, anExporterThatIsGoneExportsNothing) {
    exporter_->run(&document_);
    exporter_->DoExportSetting();
    exporter_.reset();
    queue_.runAll();
    EXPECT_EQ(savePanels_.made(), 0);
}

TEST_F(MWDataExportManagerTest, anExporterThatIsGoneTakesItsSaveSheetAlong) {
    exportNow();
    exporter_.reset();
    EXPECT_FALSE(savePanels_.last().isUp);
    savePanels_.confirm(u"/home/Export.tsv"_s);
    EXPECT_EQ(written(), QByteArray("nothing was written"));
}

TEST_F(MWDataExportManagerTest, withoutItsWindowsItStillExports) {
    loader_.setMissing();
    exporter_ = std::make_unique<JournalledExporter>(people_, keys_, &document_, ports_, journal_);
    exporter_->run(&document_);
    exporter_->CancelExportSetting();
    exporter_->addAllToRight();
    exporter_->DoExportSetting();
    queue_.runAll();
    EXPECT_EQ(savePanels_.last().accessoryView, nullptr);
    savePanels_.confirm(u"/home/Export.tsv"_s);
    EXPECT_EQ(written(), QByteArray("Ann\tRome\t\t\nBob\tOslo\t\t"));
}

// Records that are no dictionaries.

struct Person final : KVObject {
    Person(const QString& name, const Boxed& home)
        : name_(*this, u"name", name)
        , home_(*this, u"home", home) {}

private:
    KVProperty<std::optional<QString>> name_;
    KVProperty<Boxed> home_;
};

TEST_F(MWDataExportManagerTest, recordsMayBeObjectsThatAreReadByKey) {
    const Boxed rome = Boxed::Dictionary{{u"city"_s, u"Rome"_s}};
    exporter_->setDataArray({Boxed(std::make_shared<const Person>(u"Ann"_s, rome)),
                             Boxed(std::make_shared<const Person>(u"Bob"_s, Boxed()))});
    exporter_->setRightKeyArray(
        {field(u"Name"_s), Boxed::Dictionary{{u"publicKey"_s, u"City"_s}, {u"innerKey"_s, u"home.city"_s}}});
    exportNow();
    savePanels_.confirm(u"/home/Export.tsv"_s);
    EXPECT_EQ(written(), "Ann\tRome\nBob\t");
}

} // namespace
} // namespace quillow
