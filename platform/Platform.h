// The ports of the delegate chain in one bundle. Every other class takes just the ports that it uses.
#pragma once

namespace quillow {

class Alerts;
class BookmarkStore;
class Bundle;
class Clock;
class DateFormatting;
class Defaults;
class FileSystem;
class HtmlTextReader;
class MainQueue;
class Panels;
class PdfTextReader;
class RtfTextReader;
class UndoManager;
class Workspace;

struct Platform {
    Alerts& alerts;
    BookmarkStore& bookmarkStore;
    Bundle& bundle;
    Clock& clock;
    DateFormatting& dateFormatting;
    Defaults& defaults;
    FileSystem& fileSystem;
    HtmlTextReader& htmlTextReader;
    MainQueue& mainQueue;
    Panels& panels;
    PdfTextReader& pdfTextReader;
    RtfTextReader& rtfTextReader;
    UndoManager& undoManager; ///< the application's, base/UndoManager.h
    Workspace& workspace;
};

} // namespace quillow
