#include "platform/qt/services/FetchProcess.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

#include <utility>

namespace quillow {

FetchProcess::FetchProcess(QString program)
    : program_(std::move(program)) {
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] { stop(); });
}

QString FetchProcess::standardProgram() {
    const QString folder = QCoreApplication::applicationDirPath();
    const QString beside = folder + QStringLiteral("/quillow-fetch");
    if (QFileInfo(beside).isExecutable()) return beside;
    return QDir::cleanPath(folder + QLatin1Char('/') + QStringLiteral(QUILLOW_LIBEXEC_FROM_BIN) +
                           QStringLiteral("/quillow-fetch"));
}

std::optional<QByteArray> FetchProcess::operator()(const QUrl& url) const {
    if (isStopping()) return std::nullopt;
    QProcess process;
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, [&loop] { loop.quit(); });
    QObject::connect(&process, &QProcess::errorOccurred, &loop, [&loop] { loop.quit(); });
    process.setStandardInputFile(QProcess::nullDevice());
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program_, {url.toString(QUrl::FullyEncoded)}, QIODevice::ReadOnly);
    if (process.state() != QProcess::NotRunning) run(loop);
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
        return std::nullopt;
    }
    if (process.error() == QProcess::FailedToStart || process.exitStatus() != QProcess::NormalExit) return std::nullopt;
    return process.exitCode() == 0 ? std::optional(process.readAllStandardOutput()) : std::nullopt;
}

void FetchProcess::run(QEventLoop& loop) const {
    {
        const std::lock_guard lock(mutex_);
        if (isStopping_) return;
        running_.insert(&loop);
    }
    loop.exec();
    const std::lock_guard lock(mutex_);
    running_.erase(&loop);
}

bool FetchProcess::isStopping() const {
    const std::lock_guard lock(mutex_);
    return isStopping_;
}

void FetchProcess::stop() {
    const std::lock_guard lock(mutex_);
    isStopping_ = true;
    // Queued, so that it also ends a loop that has not begun yet.
    for (QEventLoop* loop : running_)
        QMetaObject::invokeMethod(loop, &QEventLoop::quit, Qt::QueuedConnection);
}

} // namespace quillow
