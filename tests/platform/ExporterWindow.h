// A small application that exports records. It uses the exporter as any application would; the sheets are tested with
// it.
#pragma once

#include "platform/DocumentContainer.h"
#include "platform/qt/controls/QtWindow.h"
#include "platform/qt/exporter/QtExporterInterface.h"
#include "platform/qt/exporter/QtSavePanels.h"
#include "platform/qt/files/AccessRegistry.h"
#include "platform/qt/files/QtFileSystem.h"
#include "platform/qt/services/QtMainQueue.h"
#include "util/exporter/MWDataExportManager.h"

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>

#include <memory>

namespace quillow {

class ExporterWindow final : public DocumentContainer {
public:
    ExporterWindow() {
        widget_.setWindowTitle(QStringLiteral("People"));
        widget_.setCentralWidget(new QLabel(QStringLiteral("Two people, four fields")));
        auto* exporting = widget_.menuBar()->addMenu(QStringLiteral("&File"))->addAction(QStringLiteral("&Export…"));
        exporting->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));
        QObject::connect(exporting, &QAction::triggered, &widget_, [this] { exporter_->run(this); });
        widget_.resize(760, 620);
    }
    [[nodiscard]] Window* windowForSheet() override { return &window_; }

    [[nodiscard]] QMainWindow& widget() { return widget_; }
    [[nodiscard]] Sheets& sheets() { return sheets_; }
    [[nodiscard]] MWDataExportManager& exporter() { return *exporter_; }
    void closeExporter() { exporter_.reset(); }

    [[nodiscard]] static Boxed::Array people() { return {person(u"Ann", u"Rome", 41), person(u"Bob", u"Oslo", 29)}; }
    [[nodiscard]] static Boxed::Array fields() {
        return {field(u"Name", u"name"), field(u"City", u"address.city"), field(u"Age", u"age"),
                field(u"Telephone", u"telephone")};
    }

private:
    [[nodiscard]] static Boxed person(const char16_t* name, const char16_t* city, int age) {
        const Boxed::Dictionary address{{QStringLiteral("city"), QString::fromUtf16(city)}};
        return Boxed::Dictionary{{QStringLiteral("name"), QString::fromUtf16(name)},
                                 {QStringLiteral("address"), address},
                                 {QStringLiteral("age"), age}};
    }
    [[nodiscard]] static Boxed field(const char16_t* publicKey, const char16_t* innerKey) {
        return Boxed::Dictionary{{QStringLiteral("publicKey"), QString::fromUtf16(publicKey)},
                                 {QStringLiteral("innerKey"), QString::fromUtf16(innerKey)}};
    }

    Sheets sheets_;
    QMainWindow widget_;
    QtWindow window_{widget_};
    AccessRegistry access_;
    QtFileSystem fileSystem_{access_};
    QtMainQueue mainQueue_;
    QtInterfaceLoader interfaceLoader_{sheets_};
    QtSavePanels savePanels_{sheets_};
    std::unique_ptr<MWDataExportManager> exporter_ = std::make_unique<MWDataExportManager>(
        people(), fields(), this, MWDataExportManager::Ports{fileSystem_, interfaceLoader_, mainQueue_, savePanels_});
};

} // namespace quillow
