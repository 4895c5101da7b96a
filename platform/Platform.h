// The ports of the delegate chain in one struct. Every other class takes only the ports that it uses.
#pragma once

namespace quillow {

class Alerts;
class Archive;
class BookmarkStore;
class Bundle;
class Clock;
class ConversionWatcher;
class DateFormatting;
class Defaults;
class Documents;
class FileSystem;
class HtmlTextReader;
class MainQueue;
class Menus;
class Panels;
class PdfTextReader;
class RtfTextReader;
class SystemInfo;
class Termination;
class Timers;
class Workspace;

/// Whether this build looks for newer releases. Builds for distributions leave this out.
enum class UpdateCheck { leftOut, wired };

struct Platform {
    Alerts& alerts;
    Archive& archive;
    BookmarkStore& bookmarkStore;
    Bundle& bundle;
    Clock& clock;
    ConversionWatcher& conversionWatcher;
    DateFormatting& dateFormatting;
    Defaults& defaults;
    Documents& documents;
    FileSystem& fileSystem;
    HtmlTextReader& htmlTextReader;
    MainQueue& mainQueue;
    Menus& menus;
    Panels& panels;
    PdfTextReader& pdfTextReader;
    RtfTextReader& rtfTextReader;
    const SystemInfo& systemInfo;
    const Termination& termination;
    Timers& timers;
    Workspace& workspace;
    UpdateCheck updateCheck = UpdateCheck::wired;
};

} // namespace quillow
