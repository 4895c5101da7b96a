// A drop from the window system's event to the texts on the disk and the lines of the log: the delegate with the
// product's adapters, without a screen. The tests answer the dialogs themselves.
#include "app/QuillowAppDelegate.h"
#include "frame/MWOutlinedDragDropView.h"
#include "platform/engine/EngineTextReaders.h"
#include "platform/engine/IsolatedEngine.h"
#include "platform/qt/controls/QtWindow.h"
#include "platform/qt/controls/Spinner.h"
#include "platform/qt/dialogs/AlertBox.h"
#include "platform/qt/dialogs/FileDialog.h"
#include "platform/qt/dialogs/QtAlerts.h"
#include "platform/qt/dialogs/QtPanels.h"
#include "platform/qt/dragdrop/DropArea.h"
#include "platform/qt/files/GroupedFileSystem.h"
#include "platform/qt/life/BackgroundTextReaders.h"
#include "platform/qt/windows/QtLogView.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/platform/FileWorlds.h"
#include "tests/platform/SmallFilesOnly.h"
#include "tests/platform/VisibleDialogs.h"
#include "tests/platform/Waiting.h"

#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <new>
#include <system_error>

namespace quillow {
namespace {

constexpr int kMany = 500;

/// A reader that calls a function in the middle of its first document.
class InterruptedReader final : public RtfTextReader {
public:
    InterruptedReader(RtfTextReader& reader, const std::function<void()>& happening)
        : reader_(reader)
        , happening_(happening) {}
    std::optional<AttributedString> initWithRTF(const std::optional<QByteArray>& bytes) override {
        if (happening_) std::exchange(happening_, nullptr)();
        return reader_.initWithRTF(bytes);
    }

private:
    RtfTextReader& reader_;
    std::function<void()> happening_;
};

worker::Limits fewSeconds() {
    worker::Limits limits;
    limits.time = std::chrono::seconds(3);
    return limits;
}

class DropRoad : public testing::Test {
protected:
    void SetUp() override {
        view_.awakeFromNib();
        delegate_.setWindow(&window_);
        delegate_.setMainWindow(&window_);
        delegate_.setPrefWindow(&preferences_);
        delegate_.setProgressIndicator(&spinner_);
        delegate_.setTextLog(&log_);
        delegate_.setDragDropArea(&view_);
        world_.addFolder(texts());
    }
    /// The fake main queue runs nothing by itself, so the log stays empty until the drop has been processed.
    Platform platform() {
        fakes_.updateCheck = UpdateCheck::leftOut;
        return {alerts_,           fakes_.archive,    world_.bookmarkStore,
                fakes_.bundle,     fakes_.clock,      fakes_.conversions,
                fakes_.dates,      fakes_.defaults,   fakes_.documents,
                fileSystem_,       fakes_.html,       fakes_.mainQueue,
                fakes_.menus,      panels_,           fakes_.pdf,
                backgroundReader_, fakes_.systemInfo, fakes_.termination,
                fakes_.timers,     world_.workspace,  UpdateCheck::leftOut};
    }
    void launch() {
        delegate_.applicationWillFinishLaunching({});
        delegate_.applicationDidFinishLaunching({});
        runEvents();
    }
    void launchWithFixedFolder(const QString& folder) {
        fakes_.defaults.setObject(1, QStringLiteral("destinationType"));
        fakes_.defaults.setObject(MWBookmark(world_.bookmarkStore).bookmarkForURL_RW(fileUrlFromPath(folder)).value(),
                                  QStringLiteral("destBookmark"));
        launch();
    }

    // Documents and their drags.

    QString papers() const { return world_.root() + QStringLiteral("/Papers"); }
    QString texts() const { return world_.root() + QStringLiteral("/Texts"); }
    QStringList documents(int count, const QString& extension = QStringLiteral("rtf")) {
        QStringList paths;
        for (int i = 0; i < count; ++i) {
            paths.append(QStringLiteral("%1/%2.%3").arg(papers()).arg(i).arg(extension));
            world_.addFile(paths.back(), "{\\rtf1 text " + QByteArray::number(i) + "}");
        }
        return paths;
    }
    void drop(const QStringList& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& path : paths)
            urls.append(fileUrlFromPath(path));
        data.setUrls(urls);
        const Qt::DropActions actions = Qt::CopyAction | Qt::LinkAction;
        QDragEnterEvent enter({10, 10}, actions, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&area_, &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent event({10, 10}, actions, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&area_, &event);
    }
    /// Queues a drop, which the event loop delivers during a conversion.
    void dropLater(const QStringList& paths) {
        QMetaObject::invokeMethod(
            &area_, [this, paths] { drop(paths); }, Qt::QueuedConnection);
    }

    // Dialogs.

    template <class Dialog>
    QList<Dialog*> visible() const {
        return visibleDialogs<Dialog>(widget_);
    }
    int dialogs() const { return static_cast<int>(widget_.findChildren<QDialog*>().size()); }
    void chooseFolder(const QString& folder) {
        ASSERT_EQ(visible<FileDialog>().size(), 1);
        auto* dialog = visible<FileDialog>().constFirst();
        // Acts as if the user pressed Select. The dialog itself allows only folders.
        dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(folder);
        for (auto* candidate : dialog->findChildren<QPushButton*>())
            if (candidate->text().remove(u'&') == QStringLiteral("Select")) candidate->click();
        runEvents();
    }
    void cancelPanel() {
        ASSERT_EQ(visible<FileDialog>().size(), 1);
        visible<FileDialog>().constFirst()->reject();
        runEvents();
    }
    void press(const char16_t* title) {
        ASSERT_EQ(visible<AlertBox>().size(), 1);
        for (QAbstractButton* button : visible<AlertBox>().constFirst()->buttons())
            if (button->text().remove(u'&') == QString::fromUtf16(title)) button->click();
        runEvents();
    }

    // Results.

    QStringList written() const {
        // The log comes after the texts. Most tests look at the texts before they look at the log.
        static_cast<void>(fileSystem_.contentsOfDirectory(texts()));
        return QDir(texts()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    QStringList logLines() {
        fakes_.mainQueue.runAll();
        QStringList lines;
        for (const QString& line : log_.string().split(u'\n').mid(1))
            lines.append(line.section(QStringLiteral("} "), 1));
        return lines;
    }
    QString converted(const QString& path) const {
        return QStringLiteral("Converted %1  >>  %2/%3.txt").arg(path, texts(), QFileInfo(path).completeBaseName());
    }
    QStringList converted(const QStringList& paths) const {
        QStringList lines;
        for (const QString& path : paths)
            lines.append(converted(path));
        return lines;
    }

    DiskFileWorld world_;
    FakePlatform fakes_;
    GroupedFileSystem fileSystem_{world_.fileSystem, fakes_.mainQueue};
    QWidget widget_;
    QWidget preferencesWidget_;
    QtWindow window_{widget_};
    QtWindow preferences_{preferencesWidget_};
    DropArea area_{[] { return DragWay::direct; }};
    Spinner spinner_;
    QtLogView log_;
    MWOutlinedDragDropView view_{area_};
    Sheets sheets_;
    QtMainQueue mainQueue_;
    QtAlerts alerts_{sheets_, mainQueue_};
    QtPanels panels_{sheets_, world_.workspace};
    std::function<void()> happening_;
    IsolatedEngine engine_{QUILLOW_BINARY_DIR "/bin/attack_worker", fewSeconds()}; // reads harmless ones as the product
    EngineRtfTextReader engineReader_{DocumentExtractor(
        {}, [this](std::span<const std::byte> bytes, DocumentKind kind) { return engine_.extract(bytes, kind); })};
    InterruptedReader interruptedReader_{engineReader_, [this] {
                                             if (happening_) happening_();
                                         }};
    int threadsThatCannotStart_ = 0;
    BackgroundWork work_{&spinner_, [this](const std::function<void()>& run) {
                             if (threadsThatCannotStart_-- > 0)
                                 throw std::system_error(
                                     std::make_error_code(std::errc::resource_unavailable_try_again));
                             return std::jthread(run);
                         }};
    BackgroundRtfTextReader backgroundReader_{interruptedReader_, work_};
    QuillowAppDelegate delegate_{platform(), fakes_.supportUtility, fakes_.valueTransformers, fakes_.undoManager};
};

// Asking when saving.

TEST_F(DropRoad, manyDocumentsAskOnceAndOneOkConvertsThemAll) {
    launch();
    const QStringList paths = documents(kMany);
    drop(paths);
    EXPECT_EQ(dialogs(), 1);
    EXPECT_EQ(delegate_.fileToProcessPathArray(), paths);
    EXPECT_TRUE(written().isEmpty()) << "asked first";
    chooseFolder(texts());
    EXPECT_EQ(dialogs(), 0);
    EXPECT_EQ(written().size(), kMany);
    EXPECT_EQ(logLines(), converted(paths));
    EXPECT_EQ(delegate_.numberProcessed(), Boxed(kMany));
    EXPECT_TRUE(delegate_.fileToProcessPathArray().isEmpty());
}

TEST_F(DropRoad, aHostileDocumentCostsItsOwnEntryOnly) {
    launch();
    const QStringList paths = documents(6);
    world_.addFile(paths[1], "attack:crash");
    world_.addFile(paths[2], "attack:loop");
    world_.addFile(paths[3], "attack:fork");
    world_.addFile(paths[4], "");
    std::filesystem::resize_file(DiskFileWorld::native(paths[4]), QtFileSystem::kMaximumFileSize + 1);
    drop(paths);
    chooseFolder(texts());
    QStringList expected;
    for (const QString& path : paths)
        expected.append(QStringLiteral("Not able to extract any text from ") + path);
    expected.front() = converted(paths.front());
    expected.back() = converted(paths.back());
    EXPECT_EQ(logLines(), expected);
    EXPECT_EQ(written(), (QStringList{QStringLiteral("0.txt"), QStringLiteral("5.txt")}));
}

TEST_F(DropRoad, cancelConvertsNoneOfManyAndALaterDropStartsAfresh) {
    launch();
    drop(documents(kMany));
    cancelPanel();
    EXPECT_EQ(dialogs(), 0);
    EXPECT_TRUE(delegate_.fileToProcessPathArray().isEmpty());
    EXPECT_TRUE(logLines().isEmpty());
    const QStringList two = documents(2);
    drop(two);
    EXPECT_EQ(dialogs(), 1);
    chooseFolder(texts());
    EXPECT_EQ(logLines(), converted(two));
}

TEST_F(DropRoad, aSecondDropUnderThePanelJoinsTheFirst) {
    launch();
    const QStringList paths = documents(3);
    drop({paths[2]});
    drop({paths[0], paths[1]});
    EXPECT_EQ(dialogs(), 1);
    chooseFolder(texts());
    EXPECT_EQ(dialogs(), 0);
    EXPECT_EQ(logLines(), converted(QStringList{paths[2], paths[0], paths[1]}));
}

TEST_F(DropRoad, aDropInMidConversionIsAskedForAfterwardsAndLosesNothing) {
    launch();
    const QStringList paths = documents(3);
    world_.addFile(papers() + QStringLiteral("/late.rtf"), "{\\rtf1 late}");
    const QString late = papers() + QStringLiteral("/late.rtf");
    happening_ = [this, late] { dropLater({late}); };
    drop(paths);
    chooseFolder(texts());
    EXPECT_EQ(logLines(), converted(paths));
    EXPECT_EQ(delegate_.fileToProcessPathArray(), QStringList{late});
    chooseFolder(texts());
    EXPECT_EQ(logLines(), converted(paths + QStringList{late}));
    EXPECT_EQ(dialogs(), 0);
}

TEST_F(DropRoad, theNextPanelStartsInTheLatestFolder) {
    launch();
    drop(documents(1));
    chooseFolder(texts());
    drop(documents(1));
    EXPECT_EQ(visible<FileDialog>().constFirst()->directory().path(), texts());
    cancelPanel();
}

TEST_F(DropRoad, theNextPanelStartsAtHomeWhereTheLatestFolderIsNoUrl) {
    launch();
    for (const char16_t* name : {u"my texts", u"T\u00E9xte", u"100%"}) {
        const QString folder = world_.root() + u'/' + QString::fromUtf16(name);
        world_.addFolder(folder);
        drop(documents(1));
        chooseFolder(folder);
        EXPECT_EQ(delegate_.latestAskDestinationPath(), folder);
        drop(documents(1));
        EXPECT_EQ(visible<FileDialog>().constFirst()->directory().path(), QDir::homePath());
        cancelPanel();
    }
}

// The fixed folder.

TEST_F(DropRoad, manyDocumentsGoIntoTheFixedFolderUnasked) {
    launchWithFixedFolder(texts());
    const QStringList paths = documents(kMany);
    drop(paths);
    EXPECT_EQ(dialogs(), 0);
    EXPECT_EQ(written().size(), kMany);
    EXPECT_EQ(logLines(), converted(paths));
}

TEST_F(DropRoad, manyDocumentsWithoutAFixedFolderAreToldOnce) {
    fakes_.defaults.setObject(1, QStringLiteral("destinationType"));
    launch();
    drop(documents(kMany));
    EXPECT_EQ(dialogs(), 1);
    EXPECT_EQ(visible<AlertBox>().value(0)->text(), QStringLiteral("Destination folder not yet set"));
    press(u"Open Preferences");
    EXPECT_EQ(dialogs(), 0);
    EXPECT_FALSE(preferencesWidget_.isVisible()) << "opened from the main queue";
    EXPECT_EQ(fakes_.mainQueue.queuedCount(), 1U) << "once, not once for every document";
    fakes_.mainQueue.runAll();
    EXPECT_TRUE(preferencesWidget_.isVisible());
    EXPECT_TRUE(logLines().isEmpty());
}

TEST_F(DropRoad, manyDocumentsOfOtherTypesAreRefusedOnce) {
    launchWithFixedFolder(texts());
    const QStringList good = documents(1);
    drop(documents(kMany, QStringLiteral("txt")) + good);
    EXPECT_EQ(dialogs(), 1);
    EXPECT_EQ(visible<AlertBox>().value(0)->text(), QStringLiteral("Can't Accept This File Here"));
    press(u"OK");
    EXPECT_EQ(dialogs(), 0);
    EXPECT_EQ(logLines(), converted(good));
}

TEST_F(DropRoad, aMovedFixedFolderIsUsedWhereItIsNowAndItsBookmarkStays) {
    launchWithFixedFolder(texts());
    const Boxed bookmark = fakes_.defaults.objectForKey(QStringLiteral("destBookmark"));
    world_.move(texts(), world_.root() + QStringLiteral("/Moved"));
    drop(documents(1));
    EXPECT_EQ(dialogs(), 0);
    EXPECT_TRUE(fileSystem_.fileExistsAtPath(world_.root() + QStringLiteral("/Moved/0.txt"), nullptr));
    EXPECT_EQ(fakes_.defaults.objectForKey(QStringLiteral("destBookmark")), bookmark);
}

TEST_F(DropRoad, aDeletedFixedFolderIsTold) {
    launchWithFixedFolder(texts());
    world_.remove(texts());
    drop(documents(2));
    EXPECT_EQ(dialogs(), 1);
    EXPECT_EQ(visible<AlertBox>().value(0)->text(), QStringLiteral("Destination folder not yet set"));
    press(u"Cancel");
    EXPECT_TRUE(logLines().isEmpty());
    EXPECT_EQ(fakes_.mainQueue.queuedCount(), 0U);
}

TEST_F(DropRoad, aFixedFolderThatIsNowAFileIsTold) {
    launchWithFixedFolder(texts());
    world_.remove(texts());
    world_.addFile(texts(), "not a folder");
    drop(documents(1));
    EXPECT_EQ(dialogs(), 1);
    press(u"Cancel");
    EXPECT_EQ(fileSystem_.contentsOfFile(texts()), QByteArray("not a folder"));
    EXPECT_TRUE(logLines().isEmpty());
}

// Exhaustion.

TEST_F(DropRoad, aDocumentForWhichNoThreadStartsIsToldAndTheNextIsConverted) {
    launch();
    const QStringList paths = documents(2);
    threadsThatCannotStart_ = 1;
    testing::internal::CaptureStderr();
    drop(paths);
    chooseFolder(texts());
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_EQ(logLines(),
              QStringList({QStringLiteral("Not able to extract any text from ") + paths[0], converted(paths[1])}));
    EXPECT_EQ(written(), QStringList{QStringLiteral("1.txt")});
    const std::string line = "quillow: a document could not be read: ";
    EXPECT_NE(told.find(line), std::string::npos) << told;
    EXPECT_EQ(told.find(line), told.rfind(line)) << told;
}

TEST_F(DropRoad, aDocumentThatFindsNoMemoryIsToldAndTheNextIsConverted) {
    launch();
    const QStringList paths = documents(2);
    happening_ = [] { throw std::bad_alloc(); };
    drop(paths);
    chooseFolder(texts());
    EXPECT_EQ(logLines(),
              QStringList({QStringLiteral("Not able to extract any text from ") + paths[0], converted(paths[1])}));
}

// Names that are not UTF-8.

TEST_F(DropRoad, aFixedFolderAndDocumentsWhoseNamesAreNotUtf8KeepTheirBytes) {
    const QString folder = world_.root() + pathFromBytes("/d\xE9p\xF4t");
    const QString letter = papers() + pathFromBytes("/caf\xE9.rtf");
    const QString bundle = papers() + pathFromBytes("/no\xEBl.rtfd");
    world_.addFolder(folder);
    world_.addFile(letter, "{\\rtf1 letter}");
    world_.addFile(bundle + QStringLiteral("/TXT.rtf"), "{\\rtf1 bundle}");
    launchWithFixedFolder(folder);
    EXPECT_EQ(delegate_.destMessageString(), QStringLiteral("Valid Bookmark"));
    EXPECT_EQ(delegate_.displayDestinationPath(), folder);
    drop({letter, bundle});
    EXPECT_EQ(dialogs(), 0);
    EXPECT_EQ(fileSystem_.contentsOfFile(folder + pathFromBytes("/caf\xE9.txt")), QByteArray("letter\n"));
    EXPECT_EQ(fileSystem_.contentsOfFile(folder + pathFromBytes("/no\xEBl.txt")), QByteArray("bundle\n"));
    EXPECT_EQ(logLines(), QStringList({QStringLiteral("Converted ") + letter + QStringLiteral("  >>  ") + folder +
                                           pathFromBytes("/caf\xE9.txt"),
                                       QStringLiteral("Converted ") + bundle + QStringLiteral("  >>  ") + folder +
                                           pathFromBytes("/no\xEBl.txt")}));
}

TEST_F(DropRoad, aChosenFolderWhoseNameIsNotUtf8IsConvertedInto) {
    const QString folder = world_.root() + pathFromBytes("/d\xE9p\xF4t");
    world_.addFolder(folder);
    launch();
    drop(documents(1));
    chooseFolder(fileUrlFromPath(folder).toString(QUrl::FullyEncoded));
    EXPECT_EQ(delegate_.effectiveDestinationPath(), folder);
    EXPECT_EQ(fileSystem_.contentsOfFile(folder + QStringLiteral("/0.txt")), QByteArray("text 0\n"));
}

// deliberate: failed writes are not detected, so the log says "Converted". No half-written file is left.

TEST_F(DropRoad, onAFullDiskNoHalfWrittenTextIsLeft) {
    launchWithFixedFolder(texts());
    world_.addFile(texts() + QStringLiteral("/long.txt"), "the text of last time");
    world_.addFile(papers() + QStringLiteral("/long.rtf"), "{\\rtf1 " + QByteArray(5000, 'x') + "}");
    world_.addFile(papers() + QStringLiteral("/new.rtf"), "{\\rtf1 " + QByteArray(5000, 'y') + "}");
    const QStringList paths{papers() + QStringLiteral("/long.rtf"), papers() + QStringLiteral("/new.rtf")};
    {
        const SmallFilesOnly fullDisk;
        drop(paths);
    }
    EXPECT_EQ(dialogs(), 0);
    EXPECT_EQ(logLines(), converted(paths));
    EXPECT_EQ(written(), QStringList{QStringLiteral("long.txt")});
    EXPECT_EQ(fileSystem_.contentsOfFile(texts() + QStringLiteral("/long.txt")), QByteArray("the text of last time"));
}

TEST_F(DropRoad, aFolderThatTakesNoFilesIsNotTold) {
    // Not even the superuser can create a file here.
    const QString folder = QStringLiteral("/proc");
    launchWithFixedFolder(folder);
    EXPECT_EQ(delegate_.destMessageString(), QStringLiteral("Valid Bookmark"));
    const QStringList paths = documents(1);
    drop(paths);
    EXPECT_EQ(dialogs(), 0);
    EXPECT_EQ(logLines(), QStringList{QStringLiteral("Converted %1  >>  /proc/0.txt").arg(paths.constFirst())});
    EXPECT_FALSE(fileSystem_.fileExistsAtPath(QStringLiteral("/proc/0.txt"), nullptr));
}

TEST_F(DropRoad, beforeLaunchHasFinishedADropHasNoEffect) {
    delegate_.applicationWillFinishLaunching({});
    drop(documents(2));
    EXPECT_EQ(dialogs(), 0);
    EXPECT_FALSE(delegate_.fileToProcessPath());
    delegate_.applicationDidFinishLaunching({});
    runEvents();
    EXPECT_EQ(dialogs(), 0);
    EXPECT_TRUE(delegate_.fileToProcessPathArray().isEmpty());
}

TEST_F(DropRoad, onlyFoldersAndLinksToThemCanBeDestinations) {
    world_.addFile(world_.root() + QStringLiteral("/file"), "x");
    world_.addSymbolicLink(world_.root() + QStringLiteral("/toFolder"), texts());
    world_.addSymbolicLink(world_.root() + QStringLiteral("/toFile"), world_.root() + QStringLiteral("/file"));
    world_.addSymbolicLink(world_.root() + QStringLiteral("/toNothing"), world_.root() + QStringLiteral("/missing"));
    EXPECT_TRUE(delegate_.existFolderAtPath(texts()));
    EXPECT_TRUE(delegate_.existFolderAtPath(texts() + u'/'));
    EXPECT_TRUE(delegate_.existFolderAtPath(world_.root() + QStringLiteral("/toFolder")));
    for (const char16_t* name : {u"/file", u"/toFile", u"/toNothing", u"/missing"})
        EXPECT_FALSE(delegate_.existFolderAtPath(world_.root() + QString::fromUtf16(name)));
    EXPECT_FALSE(delegate_.existFolderAtPath(QString()));
}

} // namespace
} // namespace quillow
