// The small adapters: menus, documents, timers, the system, resources, addresses and pictures.
#include "base/PathBytes.h"
#include "platform/qt/files/QtBundle.h"
#include "platform/qt/files/QtDocuments.h"
#include "platform/qt/files/QtWorkspace.h"
#include "platform/qt/services/QtImageCodec.h"
#include "platform/qt/services/QtSystemInfo.h"
#include "platform/qt/services/QtTimers.h"
#include "platform/qt/windows/QtMenus.h"
#include "tests/fakes/FakeWindow.h"
#include "tests/platform/Waiting.h"

#include <QBuffer>
#include <QColor>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quillow {
namespace {

TEST(QtMenus, anItemIsInsertedBeforeTheOneAtItsIndex) {
    QMenu menu;
    menu.addAction(QStringLiteral("About"));
    menu.addAction(QStringLiteral("Quit"));
    int ran = 0;
    QtMenus menus(menu);
    menus.insertIntoApplicationMenu({QStringLiteral("Software Update…"), QString(),
                                     [&ran](Sender sender) {
                                         EXPECT_NE(sender, nullptr);
                                         ++ran;
                                     }},
                                    1);
    ASSERT_EQ(menu.actions().size(), 3);
    EXPECT_EQ(menu.actions()[1]->text(), QStringLiteral("Software Update…"));
    EXPECT_TRUE(menu.actions()[1]->shortcut().isEmpty());
    menu.actions()[1]->trigger();
    EXPECT_EQ(ran, 1);
}

TEST(QtDocuments, openingIsConvertingAndThenComplete) {
    FakeWindow window;
    QtDocuments documents(window);
    QStringList order;
    documents.setRoads({[&order] { order.append(QStringLiteral("chooser")); },
                        [&order](const QStringList& paths) { order += paths; }});
    documents.openDocumentWithContentsOfURL(fileUrlFromPath(pathFromBytes("/a/b caf\xE9.rtf")), Display::yes,
                                            [&order] { order.append(QStringLiteral("complete")); });
    documents.openDocument();
    EXPECT_EQ(order,
              QStringList({pathFromBytes("/a/b caf\xE9.rtf"), QStringLiteral("complete"), QStringLiteral("chooser")}));
    EXPECT_EQ(window.raised(), 2);
    documents.newDocument();
    EXPECT_EQ(window.raised(), 3);
    EXPECT_EQ(documents.count(), 0);
}

TEST(QtTimers, aCallbackRunsOnceAndNotAtOnce) {
    QtTimers timers;
    int ran = 0;
    timers.scheduleOnce(0.01, [&ran] { ++ran; });
    EXPECT_EQ(ran, 0);
    ASSERT_TRUE(waitUntil([&ran] { return ran > 0; }));
    runEvents();
    EXPECT_EQ(ran, 1);
}

TEST(QtTimers, callbacksAreDroppedWithTheTimers) {
    int ran = 0;
    {
        QtTimers timers;
        timers.scheduleOnce(0, [&ran] { ++ran; });
    }
    runEvents();
    EXPECT_EQ(ran, 0);
}

TEST(QtSystemInfo, theHomeFolderIsAbsoluteWhateverTheEnvironmentSays) {
    const QByteArray home = qgetenv("HOME");
    for (const char* value : {"~", "relative/home", "/home/user/"}) {
        qputenv("HOME", value);
        const QString path = QtSystemInfo().homeDirectory();
        EXPECT_TRUE(path.startsWith(u'/')) << path.toStdString();
        EXPECT_TRUE(path == u"/" || !path.endsWith(u'/')) << path.toStdString();
    }
    EXPECT_EQ(QtSystemInfo().homeDirectory(), QStringLiteral("/home/user"));
    qputenv("HOME", "/home/andr\xE9");
    EXPECT_EQ(pathToBytes(QtSystemInfo().homeDirectory()), QByteArray("/home/andr\xE9"));
    qputenv("HOME", home);
}

TEST(QtSystemInfo, namesTheSystemAndTheHomeFolder) {
    const QtSystemInfo info;
    EXPECT_FALSE(info.operatingSystemVersionString().isEmpty());
    EXPECT_TRUE(info.homeDirectory().startsWith(u'/'));
}

TEST(QtBundle, findsAResourceByNameAndType) {
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("Quillow User Guide.pdf")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QtBundle bundle(folder.path());
    const auto path = bundle.pathForResource(QStringLiteral("Quillow User Guide"), QStringLiteral("pdf"));
    EXPECT_EQ(path, std::optional(file.fileName()));
    EXPECT_FALSE(bundle.pathForResource(QStringLiteral("Quillow User Guide"), QStringLiteral("txt")));
    EXPECT_FALSE(bundle.pathForResource(QStringLiteral("../x"), QStringLiteral("pdf")));
}

TEST(QtWorkspace, opensAddressesOfTheWebAndOfMailOnly) {
    QStringList opened;
    QtWorkspace workspace([] { return QDBusConnection(QStringLiteral("none")); },
                          [&opened](const QUrl& url) {
                              opened.append(url.toString(QUrl::FullyEncoded));
                              return true;
                          });
    const QStringList accepted{QStringLiteral("https://example.org/a?b=c%20d"), QStringLiteral("http://example.org/"),
                               QStringLiteral("mailto:support@example.org?subject=Support%20Request")};
    for (const QString& url : accepted)
        workspace.openURL(QUrl(url, QUrl::StrictMode));
    for (const char16_t* url : {u"file:///etc/passwd", u"ftp://example.org/", u"javascript:alert(1)", u"", u"/a/b",
                                u"smb://host/share", u"https://exa mple.org/"})
        workspace.openURL(QUrl(QString::fromUtf16(url), QUrl::StrictMode));
    EXPECT_EQ(opened, accepted);
}

TEST(QtImageCodec, aPictureComesBackFromItsTiff) {
    const Image image{2, 1, QByteArray("\x01\x02\x03\x04\xFF\xFE\xFD\x00", 8)};
    const QtImageCodec codec;
    const auto tiff = codec.TIFFRepresentation(image);
    ASSERT_TRUE(tiff.has_value());
    EXPECT_TRUE(tiff->startsWith(QByteArray("II*\0", 4)));
    EXPECT_EQ(codec.imageWithData(*tiff), std::optional(image));
}

TEST(QtImageCodec, readsAPng) {
    QImage image(1, 1, QImage::Format_RGBA8888);
    image.fill(QColor(10, 20, 30, 40));
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(image.save(&buffer, "PNG"));
    EXPECT_EQ(QtImageCodec().imageWithData(png),
              (std::optional<Image>(Image{1, 1, QByteArray("\x0A\x14\x1E\x28", 4)})));
}

TEST(QtImageCodec, whatIsNoPictureGivesNone) {
    const QtImageCodec codec;
    EXPECT_FALSE(codec.imageWithData({}));
    EXPECT_FALSE(codec.imageWithData("no picture"));
    EXPECT_FALSE(codec.TIFFRepresentation(Image()));
    EXPECT_FALSE(codec.TIFFRepresentation(Image{2, 2, QByteArray("abc")}));
    const auto tiff = codec.TIFFRepresentation(Image{1, 1, QByteArray("abcd")});
    ASSERT_TRUE(tiff.has_value());
    for (qsizetype length = 0; length < tiff->size(); ++length)
        EXPECT_FALSE(codec.imageWithData(tiff->left(length))) << length;
}

} // namespace
} // namespace quillow
