// Port: a document of the program, as seen by code that shows sheets on its window.
#pragma once

namespace quillow {

class Window;

class DocumentContainer {
public:
    virtual ~DocumentContainer() = default;
    /// The window for the document's sheets; null if it has none.
    [[nodiscard]] virtual Window* windowForSheet() = 0;
};

} // namespace quillow
