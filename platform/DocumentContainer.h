// Port: a document of the program, as those see it who show sheets on its window.
#pragma once

namespace quillow {

class Window;

class DocumentContainer {
public:
    virtual ~DocumentContainer() = default;
    /// The window that carries the document's sheets; null when it has none.
    [[nodiscard]] virtual Window* windowForSheet() = 0;
};

} // namespace quillow
