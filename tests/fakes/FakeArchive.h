// Archives in the fake file system. A file contains only a name; the root object of that name is stored here.
#pragma once

#include "platform/Archive.h"
#include "tests/fakes/FakeFileSystem.h"

#include <QMap>

namespace quillow {

class FakeArchive final : public Archive {
public:
    explicit FakeArchive(FakeFileSystem& files)
        : files_(files) {}

    bool archiveRootObject(const Boxed& root, const QString& toFile) override {
        if (root.image()) return false;
        const QByteArray name = "archive " + QByteArray::number(roots_.size());
        if (!files_.writeToFileAtomically(name, toFile)) return false;
        roots_.insert(name, root);
        return true;
    }
    [[nodiscard]] Boxed unarchiveObjectWithFile(const QString& path) override {
        const auto bytes = files_.contentsOfFile(path);
        return bytes ? roots_.value(*bytes) : Boxed();
    }
    void putAside(const QString& path) override {
        QString place = path + QStringLiteral(".damaged");
        for (int number = 2; files_.fileExistsAtPath(place, nullptr); ++number)
            place = path + QStringLiteral(".damaged-%1").arg(number);
        files_.move(path, place);
    }

private:
    FakeFileSystem& files_;
    QMap<QByteArray, Boxed> roots_;
};

} // namespace quillow
