// A workspace that uses the fake file system and records the items and URLs to show and open.
#pragma once

#include "base/PathStrings.h"
#include "platform/Workspace.h"
#include "tests/fakes/FakeFileSystem.h"
#include "tests/fakes/Journal.h"

namespace quillow {

class FakeWorkspace final : public Workspace {
public:
    FakeWorkspace(const FakeFileSystem& fileSystem, Journal& journal)
        : fileSystem_(fileSystem)
        , journal_(journal) {}

    [[nodiscard]] bool isFilePackageAtPath(const QString& path) const override {
        bool isDirectory = false;
        return fileSystem_.fileExistsAtPath(path, &isDirectory) && isDirectory && !fileSystem_.isEmptyFolder(path) &&
               lowercaseString(pathExtension(path)) == u"rtfd";
    }
    void selectFile(const QString& path, const QString& inFileViewerRootedAtPath) override {
        journal_.add(QStringLiteral("select '") + path + QStringLiteral("' in '") + inFileViewerRootedAtPath + u'\'');
    }
    void openFile(const QString& path) override { journal_.add(QStringLiteral("open ") + path); }

    void openURL(const QUrl& url) override {
        openedUrls_.append(QString::fromLatin1(url.toEncoded()));
        journal_.add(QStringLiteral("open URL ") + openedUrls_.back());
    }

    /// The opened URLs, encoded; an invalid URL is an empty string.
    [[nodiscard]] const QStringList& openedUrls() const { return openedUrls_; }

private:
    const FakeFileSystem& fileSystem_;
    Journal& journal_;
    QStringList openedUrls_;
};

} // namespace quillow
