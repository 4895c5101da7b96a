// The exporter's sheets, used as a user does: through their lists, buttons, fields and keys.
#include "platform/qt/exporter/ExportSettingsDialog.h"
#include "platform/qt/exporter/SaveDialog.h"
#include "tests/platform/ExporterWindow.h"
#include "tests/platform/Waiting.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

class ExporterSheetsTest : public testing::Test {
protected:
    ExporterSheetsTest() {
        application_->widget().show();
        runEvents();
    }
    void openSettings() {
        application_->exporter().run(application_.get());
        runEvents();
        ASSERT_NE(settings(), nullptr);
    }
    /// The sheets of a window, including those that are closing.
    template <class Dialog>
    static QList<Dialog*> sheets(const QWidget& window) {
        QList<Dialog*> found;
        for (auto* dialog : window.findChildren<QDialog*>())
            if (auto* sheet = dynamic_cast<Dialog*>(dialog)) found.append(sheet);
        return found;
    }
    template <class Dialog>
    Dialog* sheet() const {
        for (auto* dialog : sheets<Dialog>(application_->widget()))
            if (dialog->isVisible()) return dialog;
        return nullptr;
    }
    ExportSettingsDialog* settings() const { return sheet<ExportSettingsDialog>(); }
    SaveDialog* save() const { return sheet<SaveDialog>(); }
    template <class Control>
    static Control* named(QWidget* parent, const QString& name) {
        return parent->findChild<Control*>(name);
    }
    static QPushButton* button(QWidget* parent, const QString& name) {
        for (auto* candidate : parent->findChildren<QPushButton*>())
            if (candidate->accessibleName() == name || candidate->text().remove(u'&') == name) return candidate;
        return nullptr;
    }
    static void click(QWidget* parent, const QString& name) {
        ASSERT_NE(button(parent, name), nullptr) << name.toStdString();
        QTest::mouseClick(button(parent, name), Qt::LeftButton);
        runEvents();
    }
    static void clickItem(QListWidget* list, int row, Qt::KeyboardModifiers modifiers = {}) {
        const QRect place = list->visualItemRect(list->item(row));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, modifiers, place.center());
    }
    static QStringList titles(const QListWidget* list) {
        QStringList titles;
        for (int row = 0; row < list->count(); ++row)
            titles.append(list->item(row)->text());
        return titles;
    }
    QListWidget* left() const { return named<QListWidget>(settings(), u"leftTable"_s); }
    QListWidget* right() const { return named<QListWidget>(settings(), u"rightTable"_s); }
    QLineEdit* text(const QString& key) const { return named<QLineEdit>(settings(), key); }
    QComboBox* format() const { return named<QComboBox>(save(), u"fileFormatToSave"_s); }
    /// Chooses an item with the keyboard.
    void chooseFormat(const QString& title) const {
        ASSERT_GE(format()->findText(title), 0) << title.toStdString();
        while (format()->currentText() != title && format()->currentIndex() > 0)
            QTest::keyClick(format(), Qt::Key_Up);
        while (format()->currentText() != title && format()->currentIndex() < format()->count() - 1)
            QTest::keyClick(format(), Qt::Key_Down);
        ASSERT_EQ(format()->currentText(), title);
    }
    void openSave() {
        click(settings(), u"Export\u2026"_s);
        EXPECT_EQ(settings(), nullptr);
        ASSERT_NE(save(), nullptr);
    }
    void saveIn(const QTemporaryDir& folder) {
        save()->setDirectory(folder.path());
        click(save(), u"Save"_s);
        EXPECT_EQ(save(), nullptr);
    }
    static QByteArray contents(const QTemporaryDir& folder, const QString& name) {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
    }

    std::unique_ptr<ExporterWindow> application_ = std::make_unique<ExporterWindow>();
    QTemporaryDir folder_;
};

TEST_F(ExporterSheetsTest, theSettingsAreASheetOfTheDocumentsWindow) {
    openSettings();
    EXPECT_EQ(settings()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(settings()->parentWidget(), &application_->widget());
    EXPECT_EQ(titles(left()), QStringList({u"Name"_s, u"City"_s, u"Age"_s, u"Telephone"_s}));
    EXPECT_EQ(right()->count(), 0);
    EXPECT_EQ(text(u"start_of_file"_s)->text(), QString());
    EXPECT_FALSE(named<QCheckBox>(settings(), u"useFieldNamesAsFirstRow"_s)->isChecked());
}

TEST_F(ExporterSheetsTest, fieldsAreMovedByTheButtons) {
    openSettings();
    clickItem(left(), 0);
    clickItem(left(), 2, Qt::ControlModifier);
    click(settings(), u"Add"_s);
    EXPECT_EQ(titles(left()), QStringList({u"City"_s, u"Telephone"_s}));
    EXPECT_EQ(titles(right()), QStringList({u"Name"_s, u"Age"_s}));

    click(settings(), u"Add All"_s);
    EXPECT_EQ(left()->count(), 0);
    clickItem(right(), 3);
    click(settings(), u"Up"_s);
    click(settings(), u"Up"_s);
    EXPECT_EQ(titles(right()), QStringList({u"Name"_s, u"Telephone"_s, u"Age"_s, u"City"_s}));
    click(settings(), u"Down"_s);
    EXPECT_EQ(titles(right()), QStringList({u"Name"_s, u"Age"_s, u"Telephone"_s, u"City"_s}));
    click(settings(), u"Remove"_s);
    EXPECT_EQ(titles(left()), QStringList{u"Telephone"_s});
    click(settings(), u"Remove All"_s);
    EXPECT_EQ(titles(left()), QStringList({u"Telephone"_s, u"Name"_s, u"Age"_s, u"City"_s}));
}

TEST_F(ExporterSheetsTest, aDoubleClickMovesOneField) {
    openSettings();
    const QPoint place = left()->visualItemRect(left()->item(1)).center();
    QTest::mouseClick(left()->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(left()->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(titles(right()), QStringList{u"City"_s});
}

TEST_F(ExporterSheetsTest, buttonsThatWouldDoNothingAreOff) {
    openSettings();
    const auto areOn = [this] {
        QStringList on;
        for (const auto& name : {u"Add"_s, u"Add All"_s, u"Remove"_s, u"Remove All"_s, u"Up"_s, u"Down"_s})
            if (button(settings(), name)->isEnabled()) on.append(name);
        return on.join(u'|');
    };
    EXPECT_EQ(areOn(), u"Add All"_s);
    clickItem(left(), 1);
    EXPECT_EQ(areOn(), u"Add|Add All"_s);
    click(settings(), u"Add"_s); // the next field is selected; the moved one is alone in its list
    EXPECT_EQ(areOn(), u"Add|Add All|Remove|Remove All"_s);
    click(settings(), u"Add All"_s);
    EXPECT_EQ(areOn(), u"Remove|Remove All|Up"_s);
    clickItem(right(), 0);
    EXPECT_EQ(areOn(), u"Remove|Remove All|Down"_s);
}

TEST_F(ExporterSheetsTest, theSelectionGrowsUpwardsByKeyboard) {
    openSettings();
    clickItem(left(), 3);
    QTest::keyClick(left(), Qt::Key_Up, Qt::ShiftModifier);
    QTest::keyClick(left(), Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(application_->exporter().leftKeyArrayController().selectionIndexes(), (QList<qsizetype>{1, 2, 3}));
    EXPECT_EQ(left()->selectedItems().size(), 3);
}

TEST_F(ExporterSheetsTest, presetsFillTheFieldsAndTypingStores) {
    openSettings();
    auto* menu = button(settings(), u"Presets"_s)->menu();
    ASSERT_EQ(menu->actions().size(), 4);
    menu->actions()[0]->trigger();
    EXPECT_EQ(text(u"end_of_record"_s)->text(), u"\\n"_s);
    EXPECT_EQ(text(u"field_separator"_s)->text(), u"\\t"_s);
    auto* lastRecord = named<QCheckBox>(settings(), u"use_end_of_record_in_last_record"_s);
    EXPECT_FALSE(lastRecord->isChecked());
    menu->actions()[2]->trigger();
    EXPECT_EQ(text(u"start_of_file"_s)->text(), u"<table>"_s);
    EXPECT_TRUE(lastRecord->isChecked()); // the preset has "YES"

    text(u"start_of_file"_s)->clear();
    QTest::keyClicks(text(u"start_of_file"_s), u"Begin\\n"_s);
    EXPECT_EQ(application_->exporter().start_of_file(), u"Begin\\n"_s);
    lastRecord->toggle();
    EXPECT_EQ(application_->exporter().use_end_of_record_in_last_record(), Boxed(false));
}

TEST_F(ExporterSheetsTest, typingInTheMiddleKeepsTheCursorThere) {
    openSettings();
    auto* field = text(u"start_of_file"_s);
    field->setText(u"abc"_s);
    field->setCursorPosition(1);
    QTest::keyClicks(field, u"xy"_s);
    EXPECT_EQ(field->text(), u"axybc"_s);
    EXPECT_EQ(field->cursorPosition(), 3);
}

TEST_F(ExporterSheetsTest, everyTextIsItsOwnProperty) {
    openSettings();
    const QStringList keys{u"start_of_file"_s,  u"end_of_file"_s,     u"start_of_record"_s, u"end_of_record"_s,
                           u"field_open_tag"_s, u"field_close_tag"_s, u"field_separator"_s};
    for (const QString& key : keys)
        text(key)->setText(key + u'!');
    for (const QString& key : keys)
        EXPECT_EQ(application_->exporter().valueForKey(key), Boxed(key + u'!'));
}

TEST_F(ExporterSheetsTest, fromFieldsToFile) {
    openSettings();
    clickItem(left(), 0);
    clickItem(left(), 1, Qt::ControlModifier);
    click(settings(), u"Add"_s);
    named<QCheckBox>(settings(), u"useFieldNamesAsFirstRow"_s)->click();
    openSave();
    EXPECT_EQ(save()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(save()->name(), u"Export.tsv"_s);
    saveIn(folder_);
    EXPECT_EQ(contents(folder_, u"Export.tsv"_s), QByteArray("Name\tCity\nAnn\tRome\nBob\tOslo"));
}

TEST_F(ExporterSheetsTest, theFormatIsChosenBesideTheName) {
    openSettings();
    click(settings(), u"Add All"_s);
    openSave();
    EXPECT_EQ(format()->currentText(), u"Tab-separated text (.tsv)"_s);
    chooseFormat(u"HTML table (.txt)"_s);
    EXPECT_EQ(save()->name(), u"Export.txt"_s);
    named<QLineEdit>(save(), u"fileNameEdit"_s)->setText(u"my.people.txt"_s);
    chooseFormat(u"HTML page (.html)"_s);
    EXPECT_EQ(save()->name(), u"my.people.html"_s);
    chooseFormat(u"Comma-separated values (.csv)"_s);
    saveIn(folder_);
    EXPECT_EQ(contents(folder_, u"my.people.csv"_s),
              QByteArray("\"Ann\",\"Rome\",\"41\",\"\"\n\"Bob\",\"Oslo\",\"29\",\"\""));
    EXPECT_EQ(application_->exporter().fileFormatToSave(), Boxed(2));
}

TEST_F(ExporterSheetsTest, theCustomLayoutIsAFormat) {
    openSettings();
    clickItem(left(), 0);
    click(settings(), u"Add"_s);
    QTest::keyClicks(text(u"start_of_record"_s), u"* "_s);
    QTest::keyClicks(text(u"end_of_record"_s), u"\\n"_s);
    openSave();
    chooseFormat(u"Custom layout (.txt)"_s);
    saveIn(folder_);
    EXPECT_EQ(contents(folder_, u"Export.txt"_s), QByteArray("* Ann\n* Bob"));
}

TEST_F(ExporterSheetsTest, aFormatOfTheApplicationsOwnIsShownAsNone) {
    application_->exporter().setFileFormatToSave(7);
    openSettings();
    click(settings(), u"Add All"_s);
    openSave();
    EXPECT_EQ(format()->currentIndex(), -1);
    saveIn(folder_);
    EXPECT_EQ(contents(folder_, u"Export.txt"_s), QByteArray("AnnRome41BobOslo29"));
}

TEST_F(ExporterSheetsTest, cancelEscapeAndTheCloseButtonOnlyEndTheSettings) {
    const std::function<void()> ways[] = {[this] { click(settings(), u"Cancel"_s); },
                                          [this] { QTest::keyClick(settings(), Qt::Key_Escape); },
                                          [this] { settings()->close(); }};
    for (const auto& cancel : ways) {
        openSettings();
        click(settings(), u"Add All"_s);
        cancel();
        runEvents();
        EXPECT_EQ(settings(), nullptr);
        EXPECT_EQ(save(), nullptr);
        EXPECT_EQ(application_->exporter().rightKeyArray().size(), 4);
    }
}

TEST_F(ExporterSheetsTest, cancellingTheSaveSheetWritesNothingAndTheSettingsComeBackAsTheyWere) {
    openSettings();
    click(settings(), u"Add All"_s);
    text(u"field_separator"_s)->setText(u";"_s);
    openSave();
    save()->setDirectory(folder_.path());
    chooseFormat(u"HTML page (.html)"_s);
    QTest::keyClick(save(), Qt::Key_Escape);
    runEvents();
    EXPECT_EQ(save(), nullptr);
    EXPECT_TRUE(QDir(folder_.path()).isEmpty());

    openSettings();
    EXPECT_EQ(right()->count(), 4);
    EXPECT_EQ(text(u"field_separator"_s)->text(), u";"_s);
    openSave();
    EXPECT_EQ(save()->name(), u"Export.html"_s);
}

TEST_F(ExporterSheetsTest, askingTwiceShowsOneSheet) {
    openSettings();
    application_->exporter().run(application_.get());
    runEvents();
    EXPECT_EQ(sheets<ExportSettingsDialog>(application_->widget()).size(), 1);
    click(settings(), u"Cancel"_s);
    EXPECT_EQ(settings(), nullptr);
}

TEST_F(ExporterSheetsTest, theSettingsWaitForAnotherSheetAndCanBeEndedMeanwhile) {
    QtSheetPanel other(application_->sheets(), [](QWidget* window) { return new QDialog(window); });
    QStringList ended;
    other.beginSheetModalForWindow(application_->windowForSheet(),
                                   [&](int code) { ended.append(QString::number(code)); });
    application_->exporter().run(application_.get());
    EXPECT_EQ(settings(), nullptr);
    application_->exporter().CancelExportSetting();
    other.endSheet(5);
    runEvents();
    EXPECT_EQ(ended, QStringList{u"5"_s});
    EXPECT_EQ(settings(), nullptr);
    openSettings(); // the window is free again
}

TEST_F(ExporterSheetsTest, theApplicationsOwnChangesShow) {
    openSettings();
    application_->exporter().setStart_of_file(u"header"_s);
    application_->exporter().setUseFieldNamesAsFirstRow(u"YES"_s);
    application_->exporter().setRightKeyArray({ExporterWindow::fields()[2]});
    EXPECT_EQ(text(u"start_of_file"_s)->text(), u"header"_s);
    EXPECT_TRUE(named<QCheckBox>(settings(), u"useFieldNamesAsFirstRow"_s)->isChecked());
    EXPECT_EQ(application_->exporter().useFieldNamesAsFirstRow(),
              Boxed(u"YES"_s)); // showing a value does not change it
    EXPECT_EQ(titles(right()), QStringList{u"Age"_s});
}

TEST_F(ExporterSheetsTest, anExporterThatGoesTakesItsSheetsAlong) {
    openSettings();
    QPointer<QLineEdit> field = text(u"start_of_file"_s);
    QPointer<QListWidget> list = left();
    application_->closeExporter();
    // The dialog may still exist, but its changes must not reach the exporter.
    if (field) field->setText(u"late"_s);
    if (list) list->selectAll();
    runEvents();
    EXPECT_EQ(settings(), nullptr);
    EXPECT_EQ(field, nullptr);
}

TEST_F(ExporterSheetsTest, anExporterThatGoesTakesItsSaveSheetAlong) {
    openSettings();
    openSave();
    QPointer<QComboBox> list = format();
    application_->closeExporter();
    if (list) list->setCurrentIndex(3);
    runEvents();
    EXPECT_EQ(save(), nullptr);
    EXPECT_EQ(list, nullptr);
}

TEST_F(ExporterSheetsTest, aWindowThatGoesTakesTheSheetAlongAndTheExporterStays) {
    auto other = std::make_unique<QMainWindow>();
    QtWindow window(*other);
    class Document final : public DocumentContainer {
    public:
        explicit Document(Window& window)
            : window_(window) {}
        Window* windowForSheet() override { return &window_; }

    private:
        Window& window_;
    } document(window);
    other->show();
    application_->exporter().run(&document);
    runEvents();
    ASSERT_EQ(sheets<ExportSettingsDialog>(*other).size(), 1);
    other.reset();
    application_->exporter().addAllToRight();
    application_->exporter().setStart_of_file(u"x"_s);
    openSettings();
    EXPECT_EQ(right()->count(), 4);
}

// Use without a mouse or without seeing the screen.

/// The mnemonic letters of the controls and labels of a dialog.
QString mnemonics(QWidget* dialog) {
    QString letters;
    const auto add = [&letters](const QString& text) {
        const qsizetype at = text.indexOf(u'&');
        if (at >= 0 && at + 1 < text.size()) letters += text[at + 1].toLower();
    };
    for (const auto* button : dialog->findChildren<QAbstractButton*>())
        add(button->text());
    for (const auto* label : dialog->findChildren<QLabel*>())
        if (label->buddy()) add(label->text());
    return letters;
}

TEST_F(ExporterSheetsTest, noTwoControlsOfTheSettingsShareALetter) {
    openSettings();
    const QString letters = mnemonics(settings());
    EXPECT_EQ(QSet<QChar>(letters.begin(), letters.end()).size(), letters.size()) << letters.toStdString();
    EXPECT_GE(letters.size(), 19);
}

TEST_F(ExporterSheetsTest, everyControlHasAName) {
    openSettings();
    for (const QWidget* control : settings()->findChildren<QWidget*>()) {
        const bool isControl = (control->focusPolicy() & Qt::TabFocus) != 0;
        if (!isControl) continue;
        const auto* button = qobject_cast<const QAbstractButton*>(control);
        EXPECT_FALSE(control->accessibleName().isEmpty() && (!button || button->text().isEmpty()))
            << control->metaObject()->className() << control->objectName().toStdString();
    }
}

TEST_F(ExporterSheetsTest, theKeyboardReachesEveryControlInOrder) {
    openSettings();
    QStringList order;
    const QWidget* first = settings()->focusWidget();
    ASSERT_NE(first, nullptr);
    clickItem(left(), 0);
    for (int i = 0; i < 40; ++i) {
        const QWidget* focused = settings()->focusWidget();
        if (i > 0 && focused == first) break;
        order.append(focused->objectName().isEmpty() ? focused->accessibleName() : focused->objectName());
        QTest::keyClick(const_cast<QWidget*>(focused), Qt::Key_Tab);
    }
    // Disabled buttons are skipped. The last three have no accessible name, only a title.
    EXPECT_EQ(order.join(u' '),
              u"leftTable Add Add All rightTable useFieldNamesAsFirstRow  start_of_file end_of_file start_of_record "
              "end_of_record field_open_tag field_close_tag field_separator use_end_of_record_in_last_record  "_s);
}

TEST_F(ExporterSheetsTest, returnExportsFromAnyField) {
    openSettings();
    QTest::keyClick(text(u"field_separator"_s), Qt::Key_Return);
    runEvents();
    EXPECT_NE(save(), nullptr);
}

TEST_F(ExporterSheetsTest, theNameIsSelectedButForItsExtension) {
    openSettings();
    openSave();
    EXPECT_EQ(named<QLineEdit>(save(), u"fileNameEdit"_s)->selectedText(), u"Export"_s);
}

TEST(QtInterfaceLoader, knowsOneInterface) {
    class Owner final : public KVObject {
    public:
        KVProperty<Boxed::Array> list{*this, u"list"};
    } owner;
    ArrayController controller(owner, u"list"_s);
    Sheets sheets;
    QtInterfaceLoader loader(sheets);
    const ExporterOwner exporter{owner, controller, controller, {}};
    EXPECT_NE(loader.loadExporterInterface(u"Exporter"_s, exporter), nullptr);
    EXPECT_EQ(loader.loadExporterInterface(u"Other"_s, exporter), nullptr);
}

} // namespace
} // namespace quillow
