// Records what became of documents, one line for each call.
#pragma once

#include "platform/ConversionWatcher.h"

#include <QStringList>

namespace quillow {

class FakeConversionWatcher final : public ConversionWatcher {
public:
    void documentBegins(const QString& path) override { lines.append(QStringLiteral("begins ") + path); }
    void documentEnds(const QString& path, Result result, const QString& text) override {
        lines.append((result == Result::converted ? QStringLiteral("converted ") : QStringLiteral("not converted ")) +
                     path + (text.isEmpty() ? QString() : QStringLiteral(" to ") + text));
    }
    void textNotWritten(const QString& path, const QString& text, const QString& cause) override {
        lines.append(QStringLiteral("not written ") + path + QStringLiteral(" to ") + text + QStringLiteral(": ") +
                     cause);
    }

    QStringList lines;
};

} // namespace quillow
