#include "program/CommandLine.h"

#include <QCommandLineParser>

#include <cstdlib>
#include <memory>

namespace quillow {
namespace {

/// Empty if the folder no longer exists.
QByteArray workingFolder() {
    const std::unique_ptr<char, decltype(&std::free)> folder(::realpath(".", nullptr), &std::free);
    return folder ? QByteArray(folder.get()) : QByteArray();
}

} // namespace

Handover handoverOf(const QCoreApplication& application, int argc, char** argv, const LauncherTraces& traces) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Converts RTF, RTFD, HTM, HTML and PDF documents to plain text."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Documents to convert."),
                                 QStringLiteral("[FILE...]"));
    parser.process(application);

    // No option has a value, so all other arguments are file names. The parser returns them as QStrings, which cannot
    // hold every name.
    Handover handover{traces.startupId, traces.activationToken, workingFolder(), {}};
    bool areOptionsOver = false;
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument = argv[i];
        const bool isOption = !areOptionsOver && argument.size() > 1 && argument.startsWith('-');
        areOptionsOver = areOptionsOver || argument == "--";
        if (!isOption) handover.names.append(argument);
    }
    return handover;
}

} // namespace quillow
