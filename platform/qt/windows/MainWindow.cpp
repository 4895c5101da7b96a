#include "platform/qt/windows/MainWindow.h"

#include "platform/qt/controls/DiscloseButton.h"
#include "platform/qt/controls/ElidedLabel.h"
#include "platform/qt/controls/FittingRow.h"
#include "platform/qt/controls/FlowRows.h"
#include "platform/qt/controls/Spinner.h"
#include "platform/qt/controls/TitleDirection.h"
#include "platform/qt/dragdrop/DropArea.h"
#include "platform/qt/windows/DisclosedContent.h"
#include "platform/qt/windows/LatestEntry.h"
#include "platform/qt/windows/MainMenu.h"
#include "platform/qt/windows/QtLogView.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTextBlock>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

#include <chrono>
#include <utility>

namespace quillow {
namespace {

constexpr int kMargin = 14;
constexpr int kGap = 8;
constexpr int kComfortablePath = 20; ///< characters
constexpr int kWholeCaption = 100;   ///< characters, more than a caption has
constexpr int kLeastDropHeight = 80; ///< the glyph with space around it
/// A window appears within a fraction of this time. If it does not, something keeps it off the screen.
constexpr std::chrono::seconds kLongestWayUp{3};

/// A label beside a value.
ElidedLabel* makeCaption(const QString& text) {
    auto* label = new ElidedLabel(Qt::ElideRight);
    label->setWholeText(text);
    label->setQuiet(true);
    return label;
}

QFont bold(QFont font) {
    font.setBold(true);
    return font;
}

} // namespace

MainWindow::MainWindow(Alerts& alerts, const Workspace& workspace)
    : documentChooser_(workspace)
    , dropArea_(new DropArea(&wayOfCurrentDrag))
    , destination_(new ElidedLabel)
    , convertedCount_(new QLabel)
    , spinner_(new Spinner)
    , logView_(new QtLogView)
    , discloseButton_(
          new DiscloseButton(QStringLiteral("&Message log"), QStringLiteral("Show or hide the message log")))
    , latestEntry_(new LatestEntry) {
    setWindowTitle(QStringLiteral("Quillow"));
    menu_ = std::make_unique<MainMenu>(*this, *logView_, alerts);

    content_ = new DisclosedContent(makeUpperPart(), makeLowerPart(), kSmallHeight, kBigHeight);
    setCentralWidget(content_);

    setMinimumWidth(kMinimumWidth);
    resize(kMinimumWidth, kSmallHeight);
    dropArea_->setFocus();
    setHasFolder(false);
    setConvertedCount(0);
    setBig(false);
    setHasInput(false);
    setHasOutput(false);

    connect(dropArea_, &QAbstractButton::clicked, this, &MainWindow::chooseDocuments);
    discloseButton_->setAction([this] { run(&MainWindowCommands::switchWindows); });
    latestEntry_->setAction([this] { discloseButton_->click(); });
    connect(logView_, &QPlainTextEdit::textChanged, this, [this] { showLatestEntry(); });
}

MainWindow::~MainWindow() = default;

QWidget* MainWindow::makeUpperPart() {
    auto* part = new QWidget;
    auto* layout = new QVBoxLayout(part);
    // Each line has its own margins, so that the triangle inside the disclosure button aligns with the controls. A
    // negative margin would not do: a layout treats it as 0.
    layout->setContentsMargins(0, kGap, 0, kGap);
    layout->setSpacing(kGap);
    // The drop area takes the height that the lines leave.
    dropArea_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    dropArea_->setMinimumHeight(kLeastDropHeight);
    auto* dropLine = new QHBoxLayout;
    dropLine->setContentsMargins(kMargin, 0, kMargin, 0);
    dropLine->addWidget(dropArea_);
    layout->addLayout(dropLine, 1);
    layout->addLayout(makeDestinationLine());
    layout->addLayout(makeLogTitle());
    return part;
}

QWidget* MainWindow::makeLowerPart() {
    auto* part = new QWidget;
    logLayout_ = new QVBoxLayout(part);
    logLayout_->setContentsMargins(kMargin, 0, kMargin, kMargin - 2);
    logLayout_->setSpacing(kGap);
    logLayout_->addWidget(logView_, 1);
    logLayout_->addLayout(makeLogCommands());
    return part;
}

QLayout* MainWindow::makeLogTitle() {
    latestEntry_->setObjectName(QStringLiteral("latestEntry"));
    auto* line = new FittingRow(kMargin);
    line->setContentsMargins(kMargin - DiscloseButton::kInset, 0, kMargin, 0);
    line->addFixed(discloseButton_);
    line->addElided(latestEntry_, 0, 0);
    return line;
}

QLayout* MainWindow::makeDestinationLine() {
    ElidedLabel* caption = makeCaption(QStringLiteral("Destination"));
    destination_->setObjectName(QStringLiteral("destination"));
    destination_->setAccessibleName(QStringLiteral("Destination"));
    QPushButton* change =
        makeButton(QStringLiteral("Chan&ge\u2026"), QStringLiteral("Choose the folder that converted text goes to"),
                   &MainWindowCommands::changeDestination);
    ElidedLabel* converted = makeCaption(QStringLiteral("Converted"));
    convertedCount_->setFont(bold(convertedCount_->font()));
    QPushButton* reset =
        makeButton(QStringLiteral("&Reset"), QStringLiteral("Set the counter of converted documents to 0"),
                   &MainWindowCommands::resetCounter);

    // The path gives way first, because its middle says least. Of the captions, the one beside a path is needed less
    // than the one beside a bare number.
    auto* line = new FittingRow(kGap);
    line->setContentsMargins(kMargin, 0, kMargin, 0);
    line->addWholeOrNot(caption, 0);
    line->addElided(destination_, 0, kComfortablePath);
    line->addFixed(change);
    line->beginFarEnd();
    line->addFixed(spinner_);
    line->addElided(converted, 1, kWholeCaption);
    line->addFixed(convertedCount_);
    line->addFixed(reset);
    return line;
}

QLayout* MainWindow::makeLogCommands() {
    showOutput_ = makeButton(QStringLiteral("&Show Output"), QStringLiteral("Show the latest text in the file manager"),
                             &MainWindowCommands::showOutput);
    openOutput_ = makeButton(QStringLiteral("&Open Output"), QStringLiteral("Open the latest text"),
                             &MainWindowCommands::openOutput);
    showFolder_ = makeButton(QStringLiteral("Show Fol&der"), QStringLiteral("Show the destination in the file manager"),
                             &MainWindowCommands::showFolder);
    QPushButton* clear = makeButton(QStringLiteral("&Clear Log\u2026"), QStringLiteral("Clear the message log"),
                                    &MainWindowCommands::clearLog);

    auto* line = new FlowRows(kGap);
    for (QPushButton* button : {showOutput_, openOutput_, showFolder_, clear})
        line->addWidget(button);
    line->setLastIsAtFarEnd();
    return line;
}

QPushButton* MainWindow::makeButton(const QString& title, const QString& description,
                                    std::function<void()> MainWindowCommands::*command) {
    auto* button = new QPushButton(directed(title));
    button->setToolTip(description);
    button->setAccessibleDescription(description);
    connect(button, &QPushButton::clicked, this, [this, command] { run(command); });
    return button;
}

void MainWindow::run(std::function<void()> MainWindowCommands::*command) const {
    if (commands_.*command) (commands_.*command)();
}

void MainWindow::paintEvent(QPaintEvent* event) {
    QMainWindow::paintEvent(event);
    tellThatItIsUp();
}

void MainWindow::callWhenUp(std::function<void()> handler) {
    whenUp_.push_back(std::move(handler));
    if (isVisible() && windowHandle() && windowHandle()->isExposed())
        tellThatItIsUp();
    else
        QTimer::singleShot(kLongestWayUp, this, &MainWindow::tellThatItIsUp);
}

void MainWindow::tellThatItIsUp() {
    for (const auto& handler : std::exchange(whenUp_, {}))
        handler();
}

void MainWindow::setCommands(const MainWindowCommands& commands) {
    commands_ = commands;
    menu_->setCommands(commands);
}

void MainWindow::setDestination(const std::optional<QString>& folder) {
    destination_->setWholeText(folder.value_or(QStringLiteral("not chosen yet")));
    destination_->setAccessibleName(QStringLiteral("Destination: ") + destination_->wholeText());
}

void MainWindow::setHasFolder(bool hasFolder) {
    showFolder_->setEnabled(hasFolder);
    menu_->setHasFolder(hasFolder);
}

void MainWindow::setConvertedCount(qint64 count) {
    convertedCount_->setText(QLocale::c().toString(count));
    convertedCount_->setAccessibleName(QStringLiteral("Converted: ") + convertedCount_->text());
}

void MainWindow::showOutcome(const Outcome& outcome) {
    latestEntry_->setRemark(outcome.remark(), outcome.hasFailures());
    dropArea_->showMark(outcome.hasFailures() ? OutcomeMark::attention : OutcomeMark::done);
}

void MainWindow::showEnding() {
    dropArea_->showEnding();
    if (isVisible()) dropArea_->repaint();
}

void MainWindow::setBig(bool isBig) {
    isBig_ = isBig;
    content_->setDisclosed(isBig);
    discloseButton_->setState(isBig ? ButtonState::on : ButtonState::off);
    menu_->setBig(isBig);
    showLatestEntry();
}

void MainWindow::openLog() {
    if (!isBig_) run(&MainWindowCommands::switchWindows);
}

FindBar& MainWindow::findBar() {
    if (findBar_) return *findBar_;
    findBar_ = new FindBar(*logView_);
    findBar_->hide();
    logLayout_->insertWidget(logLayout_->indexOf(logView_) + 1, findBar_);
    findBar_->takePlaceInTabOrder();
    return *findBar_;
}

void MainWindow::openFindBar() {
    openLog();
    findBar().open();
}

void MainWindow::findAgain(FindStep step) {
    openLog();
    findBar().find(step);
}

void MainWindow::showLatestEntry() {
    const QString line = logView_->document()->lastBlock().text();
    const qsizetype stampEnd = line.indexOf(QLatin1String("} "));
    if (line.isEmpty()) latestEntry_->setRemark(QString(), false);
    latestEntry_->setEntry(stampEnd < 0 ? line : line.mid(stampEnd + 2));
    latestEntry_->setVisible(!isBig_ && !line.isEmpty());
}

void MainWindow::setHasInput(bool hasInput) {
    menu_->setHasInput(hasInput);
}

void MainWindow::setHasOutput(bool hasOutput) {
    showOutput_->setEnabled(hasOutput);
    openOutput_->setEnabled(hasOutput);
    menu_->setHasOutput(hasOutput);
}

void MainWindow::setUndoAction(const std::optional<QString>& actionName) {
    menu_->setUndoAction(actionName);
}

void MainWindow::setRedoAction(const std::optional<QString>& actionName) {
    menu_->setRedoAction(actionName);
}

QMenu& MainWindow::applicationMenu() {
    return menu_->applicationMenu();
}

QMenu& MainWindow::helpMenu() {
    return menu_->helpMenu();
}

void MainWindow::setStatement(const QString& statement) {
    menu_->setStatement(statement);
}

void MainWindow::setIsolation(std::function<QString()> isolation) {
    menu_->setIsolation(std::move(isolation));
}

void MainWindow::chooseDocuments() {
    documentChooser_.open(this, [this](const QStringList& paths) {
        if (commands_.convert) commands_.convert(paths);
    });
}

} // namespace quillow
