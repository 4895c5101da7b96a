// Port: takes what becomes of documents, for everything that shows it beside the message log. Called on the main
// thread.
#pragma once

#include <QString>

namespace quillow {

class ConversionWatcher {
public:
    virtual ~ConversionWatcher() = default;

    enum class Result { converted, notConverted };

    /// The document is about to be read.
    virtual void documentBegins(const QString& path) = 0;
    /// The log gets its entry later, in the main queue. `text` is the path of the text, empty if there is none.
    virtual void documentEnds(const QString& path, Result result, const QString& text) = 0;
    /// The text of a document that counts as converted could not be written. Called before the document's entry is
    /// in the log.
    virtual void textNotWritten(const QString& path, const QString& text, const QString& cause) = 0;
};

} // namespace quillow
