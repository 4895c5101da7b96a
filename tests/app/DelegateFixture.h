// The delegate with fakes, the effective destination folder "/texts", and a log that tests can read.
#pragma once

#include "app/QuillowAppDelegate.h"
#include "frame/MWDragDropView.h"
#include "tests/fakes/FakeLogView.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/fakes/FakeProgressIndicator.h"
#include "tests/fakes/FakeViewArea.h"
#include "tests/fakes/FakeWindow.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace quillow {

using namespace Qt::StringLiterals;

struct DelegateFixture : testing::Test {
    FakePlatform fakes;
    FakeWindow window;
    FakeProgressIndicator progressIndicator{fakes.journal};
    FakeLogView log;
    FakeViewArea viewArea;
    MWDragDropView dropArea{viewArea};
    QuillowAppDelegate delegate{(fakes.updateCheck = UpdateCheck::leftOut, fakes.platform()), fakes.supportUtility,
                                fakes.valueTransformers, fakes.undoManager};

    DelegateFixture() {
        delegate.setWindow(&window);
        delegate.setMainWindow(&window);
        delegate.setProgressIndicator(&progressIndicator);
        delegate.setTextLog(&log);
        delegate.setDragDropArea(&dropArea);
        fakes.files.addFolder(u"/texts"_s);
    }

    QByteArray bookmarkOf(const QString& path) {
        return MWBookmark(fakes.bookmarks).bookmarkForURL_RW(QUrl::fromLocalFile(path)).value();
    }

    /// Makes a folder the effective destination, as a drop with a chosen folder does.
    void putInForce(const QString& folder) {
        delegate.setEffectiveDestinationBookmark(bookmarkOf(folder));
        delegate.setEffectiveDestinationPath(folder);
    }

    /// The texts of the log lines, without their time stamps.
    QStringList logLines() {
        fakes.mainQueue.runAll();
        QStringList lines;
        for (const QString& line : log.string().split(u'\n').mid(1))
            lines.append(line.section(u"} "_s, 1));
        return lines;
    }

    static QString noText(const QString& path) { return u"Not able to extract any text from "_s + path; }
    static QString converted(const QString& from, const QString& to) {
        return u"Converted "_s + from + u"  >>  "_s + to;
    }
    std::optional<QByteArray> output(const QString& path) const { return fakes.files.contentsOfFile(path); }
};

} // namespace quillow
